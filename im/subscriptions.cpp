// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "im/subscriptions.h"

#include "host/record.h"
#include "plugin/contact_record.h"

namespace protolink {

namespace {

/// The values of the setting "XMPP/AuthType". With any other a request stays unanswered.
enum class AuthType : std::int32_t { Ask = 0, Refuse = 1, Accept = 2 };

}  // namespace

void Subscriptions::onSubscribe(const Stanza& presence) {
    const JID sender = parseJID(presence.from);
    switch (static_cast<AuthType>(client_.settings.get(setting::kAuthType))) {
        case AuthType::Ask:
            client_.contactList.askForAuthorization(contactRecord(client_, sender.bare));
            break;
        case AuthType::Refuse:
            presence_.sendDirectedPresence(sender.bare, u"unsubscribed");
            break;
        case AuthType::Accept:
            presence_.sendDirectedPresence(sender.bare, u"subscribed");
            break;
    }
}

OKU_WORD Subscriptions::onContactAuth(OKU_WORD record, OKU_WORD answer) {
    if (!client_.loggedIn()) return 1;
    const auto* contact = readRecord<OKU_CONTACT_RECORD>(record);
    if (!contact) return 0;
    const std::u16string jid = readText(contact->id);
    if (answer & OKU_AUTH_ACCEPT) {
        presence_.sendDirectedPresence(jid, u"subscribed");
        if (answer & OKU_AUTH_ASK_IN_RETURN) {
            const ContactEntry& entry = contacts_.entry(jid);
            roster_.rosterUpdate(jid, entry.name, entry.group);
            presence_.sendDirectedPresence(jid, u"subscribe");
        }
    } else if (answer & OKU_AUTH_REFUSE) {
        presence_.sendDirectedPresence(jid, u"unsubscribed");
    }
    return 0;
}

}  // namespace protolink
