// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The login's step to a compressed stream (XEP-0138).
#pragma once

#include "plugin/client_class.h"
#include "router/routing.h"
#include "router/stanza.h"
#include "stream/connection.h"
#include "stream/stream_output.h"
#include "stream/zip_stream.h"

namespace protolink {

class StreamCompression {
public:
    StreamCompression(CClientClass& client, CZipStream& zip, StreamOutput& output, Connection& connection)
        : client_(client), zip_(zip), output_(output), connection_(connection) {}

    /// Asks for compression when the server offers it and the account wants it. False when the login goes on without.
    bool begin(const xmlElement& features);
    /// The server compresses from here on.
    Routing onCompressed(const Stanza& compressed);

private:
    CClientClass& client_;
    CZipStream& zip_;
    StreamOutput& output_;
    Connection& connection_;
};

}  // namespace protolink
