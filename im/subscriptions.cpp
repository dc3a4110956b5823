#include "im/subscriptions.h"

#include "host/record.h"

namespace {

/// The values of the setting "XMPP/AuthType". With any other a request stays unanswered.
enum class AuthType : std::int32_t { Ask = 0, Refuse = 1, Accept = 2 };

}  // namespace

void Subscriptions::onSubscribe(std::u16string_view from) {
    const JID sender = parseJID(from);
    switch (static_cast<AuthType>(client_.settings.getInt(u"XMPP/AuthType", 0))) {
        case AuthType::Ask: {
            auto contact = makeRecord<OKU_CONTACT_RECORD>();
            contact.id = sender.bare.c_str();
            contact.pfClass = kProtocolClass;
            contact.netId = client_.netId;
            client_.host.askForAuthorization(contact);
            break;
        }
        case AuthType::Refuse:
            presence_.sendDirectedPresence(sender.bare, u"unsubscribed");
            break;
        case AuthType::Accept:
            presence_.sendDirectedPresence(sender.bare, u"subscribed");
            break;
    }
}

OKU_WORD Subscriptions::onContactAuth(OKU_WORD contactRecord, OKU_WORD answer) {
    if (!client_.loggedIn()) return 1;
    const auto* contact = readRecord<OKU_CONTACT_RECORD>(contactRecord);
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
