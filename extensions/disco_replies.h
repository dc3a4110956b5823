// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What this client tells of itself when it is asked (XEP-0030).
#pragma once

#include "plugin/client_class.h"
#include "plugin/own_presentation.h"
#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

class DiscoReplies {
public:
    DiscoReplies(CClientClass& client, StreamOutput& output, const OwnPresentation& own)
        : client_(client), output_(output), own_(own) {}

    /// Answers a request for this client's identity and features.
    void onDiscoInfo(const Stanza& iq) const;

private:
    CClientClass& client_;
    StreamOutput& output_;
    const OwnPresentation& own_;
};

}  // namespace protolink
