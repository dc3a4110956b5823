// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// News of mail that the server keeps for the user ("google:mail:notify").
#pragma once

#include "plugin/client_class.h"
#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

class MailNotifications {
public:
    MailNotifications(CClientClass& client, StreamOutput& output) : client_(client), output_(output) {}

    /// The server tells that there is new mail: confirmed, and asked for.
    void onNewMail(const Stanza& iq) const;

private:
    CClientClass& client_;
    StreamOutput& output_;
};

}  // namespace protolink
