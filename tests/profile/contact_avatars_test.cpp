// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a presence that announces a picture does by itself, whatever row it came by.
#include "profile/contact_avatars.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/fake_platform.h"
#include "tests/support/recording_host.h"

using namespace protolink;

namespace {

class AvatarPresences : public testing::Test {
protected:
    AvatarPresences() : client({u"r", u"c", u"XMPP"}, Host(host.table(), host.module)) {
        harness::world() = harness::FakeWorld();
        host.sockets["XMPP/Socket/1"] = {};
        client.netId = 1;
        client.socketName = u"XMPP/Socket/1";
        client.jid = parseJID(u"alice@example.org/home");
        cache.open(u"/cache/");
        host.onEvent = [this](const harness::Event& event) { events.push_back(harness::render(event)); };
    }

    Routing receive(std::u16string_view type) {
        xmlElement update(u"x");
        update.SetAttribute(u"xmlns", u"vcard-temp:x:update");
        update.SetChild(xmlElement(u"photo", u"a1b2"));
        xmlElement presence(u"presence");
        presence.SetChild(update);
        return avatars.onPresenceAvatar({presence, u"bob@example.org/desk", type, u""});
    }

    harness::RecordingHost host;
    std::vector<std::string> events;
    CClientClass client;
    CZipStream zip;
    StreamOutput output{client, zip};
    CProtoEventDispatcher dispatcher;
    Requests requests{dispatcher, output};
    Contacts contacts;
    AvatarCache cache;
    std::uint32_t enabled = 1;
    ContactAvatars avatars{client, output, requests, contacts, cache, enabled};
};

TEST_F(AvatarPresences, OfAnErrorAnnounceNothing) {
    EXPECT_EQ(receive(u"error"), Routing::Next);
    EXPECT_TRUE(events.empty()) << events.front();
    EXPECT_TRUE(cache.avatarFetchesInFlight.empty());
}

TEST_F(AvatarPresences, OfAnyOtherTypeCount) {
    EXPECT_EQ(receive(u"unavailable"), Routing::Next);
    EXPECT_FALSE(events.empty());
    EXPECT_TRUE(cache.avatarFetchesInFlight.contains(u"a1b2"));
}

}  // namespace
