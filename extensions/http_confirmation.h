// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Web sites that ask whether a request is the user's own (XEP-0070).
#pragma once

#include "plugin/client_class.h"
#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

class HttpConfirmation {
public:
    HttpConfirmation(CClientClass& client, StreamOutput& output) : client_(client), output_(output) {}

    /// Asks the user, and answers an `iq` or a `message` in its own form. One without id or sender is dropped: nobody
    /// could be answered.
    void onHttpAuthConfirm(const Stanza& stanza) const;

private:
    bool userAllows(const xmlElement& confirm) const;

    CClientClass& client_;
    StreamOutput& output_;
};

}  // namespace protolink
