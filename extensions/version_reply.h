// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The software version that this client tells (XEP-0092).
#pragma once

#include "plugin/client_class.h"
#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

class VersionReply {
public:
    VersionReply(CClientClass& client, StreamOutput& output) : client_(client), output_(output) {}

    /// Answers a request; an iq of another type is dropped, and no error is ever sent.
    void onVersionIq(const Stanza& iq) const;

private:
    CClientClass& client_;
    StreamOutput& output_;
};

}  // namespace protolink
