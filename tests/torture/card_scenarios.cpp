// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "tests/torture/card_scenarios.h"

#include "host/oku/avatar.h"
#include "host/oku/cards.h"
#include "tests/support/fake_platform.h"

namespace torture {
namespace {

constexpr std::uint32_t kNet = 1;

OKU_WORD askForOwn(Client& client, std::u16string_view service) {
    OKU_OWN_CARD_REQUEST request{sizeof request, 0, 7};
    return client.callService(kNet, service, reinterpret_cast<OKU_WORD>(&request), 0);
}

}  // namespace

void logInWithNodes(Client& client) {
    client.servers.at(kNet).abilities = "<feature var='http://jabber.org/protocol/pubsub'/>";
    harness::world().files["/profile/_avatar"] = "my face";
    client.logIn();
}

void announcedPictures(Client& client) {
    const std::string photo =
        "<presence from='contact0@example.org/r'><x xmlns='vcard-temp:x:update'><photo>a1b2</photo></x></presence>";
    const std::string hash =
        "<presence from='contact1@example.org/r'><x xmlns='jabber:x:avatar'><hash>c3d4</hash></x></presence>";
    const std::string published =
        "<message from='contact2@example.org'><event xmlns='http://jabber.org/protocol/pubsub#event'>"
        "<items node='urn:xmpp:avatar:metadata'><item id='published'><metadata xmlns='urn:xmpp:avatar:metadata'>"
        "<info id='published'/></metadata></item></items></event></message>";
    // They are asked for, and found the second time.
    for (int round = 0; round < 2; ++round) {
        client.say(kNet, photo + hash + published);
        client.pump();
    }
}

void cards(Client& client) {
    OKU_CONTACT_CARD_REQUEST request{};
    request.size = sizeof request;
    request.token = 5;
    request.jid = u"contact0@example.org";
    client.callService(kNet, u"PFGetContactVCard", reinterpret_cast<OKU_WORD>(&request), 0);
    client.pump();
    askForOwn(client, u"PFGetMyVCard");
    client.pump();
    askForOwn(client, u"PFSetMyVCard");
    client.pump();
}

void ownPicture(Client& client) {
    // A connection that is closing has closed first: a presence that is sent meanwhile would make its end a wished one.
    client.pump();
    OKU_AVATAR_CHANGED event{};
    event.size = sizeof event;
    event.hash = u"0123456789";
    event.action = OKU_AVATAR_SET;
    client.tellListeners(u"OKU/OnAvatarChanged", reinterpret_cast<OKU_WORD>(&event));
    askForOwn(client, u"PFSetMyAvatar");
    client.pump();
    askForOwn(client, u"PFGetMyAvatar");
    client.pump();
    client.say(kNet, "<iq type='get' from='eve@example.org/x' id='a1'><query xmlns='jabber:x:avatar'/></iq>");
    client.pump();
}

}  // namespace torture
