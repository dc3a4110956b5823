// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Received messages and typing notices into the host.
#include <optional>

#include "host/oku/message.h"
#include "host/record.h"
#include "im/child_text.h"
#include "im/legacy_stamp.h"
#include "im/messages.h"
#include "im/stanza_errors.h"
#include "platform/platform.h"
#include "plugin/contact_record.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

std::u16string_view delayStamp(const xmlElement& message) {
    const auto stampOf = [](const xmlElement* delay) {
        return delay ? delay->GetAttribute(u"stamp") : std::u16string_view();
    };
    const std::u16string_view stamp = stampOf(message.GetChildPtr(u"delay", ns::kDelay));
    return stamp.empty() ? stampOf(message.GetChildPtr(u"x", ns::kLegacyDelay)) : stamp;
}

/// Whether the sender is typing, in either of the two protocols; nothing when the message says neither.
std::optional<bool> typingOf(const xmlElement& message) {
    const bool composing = message.GetChildPtr(u"composing", ns::kChatStates);
    if (composing || message.GetChildPtr(u"paused", ns::kChatStates)) return composing;
    if (const xmlElement* event = message.GetChildPtr(u"x", ns::kMessageEvent))
        return event->GetChildPtr(u"composing") != nullptr;
    return std::nullopt;
}

}  // namespace

void Messages::onMessage(const Stanza& message) {
    const std::u16string& body = childText(message.element, u"body");
    const std::u16string& subject = childText(message.element, u"subject");
    const JID sender = parseJID(message.from);
    // Replies go to the resource that the contact wrote from last.
    contacts_.entry(sender.bare).lastResource = sender.resource;
    if (body.empty()) {
        noticeTyping(message.element, sender);
    } else {
        deliver(message, sender, body, subject, delayStamp(message.element));
    }
}

void Messages::deliver(const Stanza& message, const JID& sender, const std::u16string& body,
                       const std::u16string& subject, std::u16string_view stamp) {
    std::u16string failure;
    auto resource = makeRecord<OKU_RESOURCE_INFO>();
    resource.resource = sender.resource.c_str();
    auto data = makeRecord<OKU_MESSAGE_DATA>();
    data.id = sender.bare.c_str();
    data.pfClass = kProtocolClass;
    data.netId = client_.netId;
    data.resource = &resource;
    data.senderResource = &resource;
    data.subject = subject.c_str();
    data.body = body.c_str();
    data.flags = OKU_MESSAGE_NORMAL;
    data.time = isLegacyStamp(stamp) ? legacyStampTime(stamp) : platform::now();
    if (message.type == u"error") {
        data.flags = OKU_MESSAGE_DELIVERY_FAILURE;
        failure = undelivered(message.element);
        data.body = failure.c_str();
    } else if (message.type == u"chat" || client_.settings.get(setting::kMessageAsChat)) {
        data.flags = OKU_MESSAGE_CHAT;
        if (message.element.GetChildPtr(u"active"))
            if (ResourceEntry* entry = contacts_.findResource(sender.bare, sender.resource)) entry->resChatStates = 1;
    }

    client_.hooks.raise(HookKind::MessageIn, toWord(&data));
}

std::u16string Messages::undelivered(const xmlElement& message) const {
    std::u16string text = u"Twoja wiadomość nie została dostarczona do adresata!";
    std::u16string reason;
    if (stanzaErrorText(reason, message.GetChildPtr(u"error"), true)) text += u"\r\n" + reason;
    return text;
}

void Messages::noticeTyping(const xmlElement& message, const JID& sender) {
    const std::optional<bool> composing = typingOf(message);
    if (!composing) return;
    const OKU_CONTACT_RECORD contact = contactRecord(client_, sender.bare);
    client_.contactList.setTyping(contact, *composing);
    client_.hooks.after(HookKind::TypingIn, *composing ? 1 : 0, &contact);
}

}  // namespace protolink
