// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Answers to pings (XEP-0199).
#pragma once

#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

class PingReply {
public:
    explicit PingReply(StreamOutput& output) : output_(output) {}

    /// Answers a request that has an id and a sender.
    void onPingIq(const Stanza& iq) const;

private:
    StreamOutput& output_;
};

}  // namespace protolink
