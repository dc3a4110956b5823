// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Messages and typing notices that the host sends.
#include "host/oku/message.h"
#include "host/record.h"
#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "im/messages.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"

namespace protolink {

OKU_WORD Messages::onSendMessage(OKU_WORD messageRecord, OKU_WORD flags) {
    const auto* message = readRecord<OKU_MESSAGE_SEND>(messageRecord);
    if (!message) return 1;
    if (!client_.hooks.before(HookKind::MessageOut, messageRecord, &message->contact)) return 1;
    if (!(flags & OKU_MESSAGE_SEND_FLAG)) return 1;
    const std::u16string jid = readText(message->contact.id);
    const std::u16string body = readText(message->body);
    const bool chat = flags & OKU_MESSAGE_CHAT_FLAG;
    const int failed = chat ? sendChat(jid, body) : sendMessage(jid, body, readText(message->subject));
    if (failed) return failed;
    client_.hooks.after(HookKind::MessageOut, messageRecord, &message->contact);
    return 0;
}

int Messages::sendChat(const std::u16string& jid, const std::u16string& body) {
    if (!client_.loggedIn()) return 1;
    std::u16string content = lutCPW(u"body", lutXMLEscapeW(body));
    std::u16string to = jid;
    const std::u16string lastResource = contacts_.entry(jid).lastResource;
    if (!lastResource.empty()) {
        if (contacts_.findResource(jid, lastResource)) content += lutCPW(u"active", {}, {{u"xmlns", ns::kChatStates}});
        to = formatText(u"%s/%s", jid, lastResource);
    }
    output_.sendText(lutCPW(u"message", content, {{u"to", to}, {u"id", generateId()}, {u"type", u"chat"}}));
    return 0;
}

int Messages::sendMessage(const std::u16string& jid, const std::u16string& body, const std::u16string& subject) {
    if (!client_.loggedIn()) return 1;
    const std::u16string content = lutCPW(u"body", lutXMLEscapeW(body)) + lutCPW(u"subject", lutXMLEscapeW(subject));
    output_.sendText(lutCPW(u"message", content, {{u"to", jid}, {u"id", generateId()}}));
    return 0;
}

OKU_WORD Messages::onSendTyping(OKU_WORD contactRecord, OKU_WORD composing) {
    const auto* contact = readRecord<OKU_CONTACT_RECORD>(contactRecord);
    if (!contact) return 0;
    const std::u16string jid = readText(contact->id);
    const std::u16string lastResource = contacts_.entry(jid).lastResource;
    if (lastResource.empty()) return 0;
    const ResourceEntry* resource = contacts_.findResource(jid, lastResource);
    if (!resource || !resource->resChatStates) return 0;
    // A chat goes to the full JID, its typing notice to the bare one.
    const std::u16string state = lutCPW(composing ? u"composing" : u"paused", {}, {{u"xmlns", ns::kChatStates}});
    output_.sendText(lutCPW(u"message", state, {{u"to", jid}, {u"id", generateId()}, {u"type", u"chat"}}));
    return 0;
}

}  // namespace protolink
