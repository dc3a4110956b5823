// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// News of mail that the server keeps for the user ("google:mail:notify").
#pragma once

#include <string>

#include "plugin/client_class.h"
#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

class MailNotifications {
public:
    MailNotifications(CClientClass& client, StreamOutput& output) : client_(client), output_(output) {}

    /// Asks for all mail that nobody has read. The answer comes through the router, as `onMailbox`.
    void requestMailbox() const;

    /// The server tells that there is new mail: confirmed, and asked for.
    void onNewMail(const Stanza& iq) const;

    /// The list of unread mail. The user hears of it when a subject can be shown.
    void onMailbox(const Stanza& iq) const;

private:
    void tellListeners() const;
    void showNotice(int threads, const std::u16string& lines, bool keep) const;

    CClientClass& client_;
    StreamOutput& output_;
};

}  // namespace protolink
