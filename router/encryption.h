// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The login's step to TLS (RFC 6120, 5).
#pragma once

#include "plugin/client_class.h"
#include "router/routing.h"
#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

class Encryption {
public:
    Encryption(CClientClass& client, StreamOutput& output) : client_(client), output_(output) {}

    /// Asks for TLS when the server offers it and the account wants it. False when the login goes on without.
    bool begin(const xmlElement& features);
    /// The server is ready for TLS.
    void onProceed(const Stanza& proceed);

private:
    CClientClass& client_;
    StreamOutput& output_;
};

}  // namespace protolink
