// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Messages and typing notices (RFC 6121, 5; XEP-0085) both ways.
#pragma once

#include <string>
#include <string_view>

#include "im/contact_entry.h"
#include "plugin/client_class.h"
#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

class Messages {
public:
    Messages(CClientClass& client, StreamOutput& output, Contacts& contacts)
        : client_(client), output_(output), contacts_(contacts) {}

    void onMessage(const Stanza& message);

    /// The host's service that sends a message. 0 when done, 1 when nothing was sent or a listener stopped it.
    OKU_WORD onSendMessage(OKU_WORD messageRecord, OKU_WORD flags);
    /// The host's service that sends a typing notice. Always 0.
    OKU_WORD onSendTyping(OKU_WORD contactRecord, OKU_WORD composing);

    /// 1 when not logged in, else 0.
    int sendChat(const std::u16string& jid, const std::u16string& body);
    int sendMessage(const std::u16string& jid, const std::u16string& body, const std::u16string& subject);

private:
    void deliver(const Stanza& message, const JID& sender, const std::u16string& body, const std::u16string& subject,
                 std::u16string_view stamp);
    void noticeTyping(const xmlElement& message, const JID& sender);
    std::u16string undelivered(const xmlElement& message) const;

    CClientClass& client_;
    StreamOutput& output_;
    Contacts& contacts_;
};

}  // namespace protolink
