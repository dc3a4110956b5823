// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Requests that other parts of the plugin make of roster and privacy lists, with and without a login.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "im/privacy_lists.h"
#include "im/roster.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_host.h"

using namespace protolink;

namespace {

class Requests : public testing::Test {
protected:
    Requests() : client({u"r", u"c", u"XMPP"}, Host(host.table(), host.module)) {
        harness::world() = harness::FakeWorld();
        host.sockets["XMPP/Socket/1"] = {};
        host.onEvent = [this](const harness::Event& event) {
            if (event.category == harness::Event::Category::Sent) sent.push_back(event.data);
        };
        client.netId = 1;
        client.socketName = u"XMPP/Socket/1";
    }

    harness::RecordingHost host;
    CClientClass client;
    CZipStream zip;
    StreamOutput output{client, zip};
    Contacts contacts;
    Roster roster{client, output, contacts};
    PrivacyLists privacy{output};
    std::vector<std::string> sent;
};

TEST_F(Requests, OfTheRosterNeedALogin) {
    for (const std::uint32_t flags : {0, 1, 8, 5}) {
        client.flags = flags;
        EXPECT_EQ(roster.rosterRemove(u"bob@example.org"), 0) << flags;
        EXPECT_EQ(roster.rosterUpdate(u"bob@example.org", u"Bob", u"Friends"), 0) << flags;
    }
    EXPECT_TRUE(sent.empty());
}

TEST_F(Requests, OfTheRosterGiveTheResultOfTheSend) {
    client.flags = FLAG_CONNECTED | FLAG_AUTHORIZED;
    host.answersOnce["NetLib/Send"] = {7, 9};
    EXPECT_EQ(roster.rosterRemove(u"bob@example.org"), 7);
    EXPECT_EQ(roster.rosterUpdate(u"bob@example.org", u"Bob", u"Friends"), 9);
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_NE(sent[0].find("<item jid=\"bob@example.org\" subscription=\"remove\"/>"), std::string::npos) << sent[0];
    EXPECT_NE(sent[1].find("<item jid=\"bob@example.org\" name=\"Bob\"><group>Friends</group></item>"),
              std::string::npos)
        << sent[1];
}

TEST_F(Requests, OfTheHostThatNameNobodySendNothing) {
    client.flags = FLAG_CONNECTED | FLAG_AUTHORIZED;
    EXPECT_EQ(roster.onContactDelete(0), 0u);
    EXPECT_TRUE(sent.empty());
}

TEST_F(Requests, OfTheRosterAreOverWithAnyAnswer) {
    EXPECT_EQ(roster.rosterDownloaded, 0u);
    roster.rebuildFrom(xmlElement(u"iq"));
    EXPECT_EQ(roster.rosterDownloaded, 1u);
}

TEST_F(Requests, OfAPrivacyEntryMakeItOnlyOnDemand) {
    EXPECT_EQ(privacy.privacyEntry(u"eve@example.org", false), nullptr);
    const auto* made = privacy.privacyEntry(u"eve@example.org", true);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->jid, u"eve@example.org");
    EXPECT_FALSE(made->presenceOut || made->presenceIn || made->message || made->iq);
    EXPECT_EQ(privacy.privacyEntry(u"Eve@example.org", false), nullptr);
    EXPECT_EQ(privacy.privacyEntry(u"Eve@example.org", false), nullptr) << "asking made it";
    EXPECT_NE(privacy.privacyEntry(u"eve@example.org", false), nullptr);
    privacy.privacyEntry(u"eve@example.org", true)->iq = true;
    EXPECT_TRUE(privacy.privacyEntry(u"eve@example.org", true)->iq);
}

TEST_F(Requests, OfAnUploadLeaveOutWhoIsDeniedNothing) {
    privacy.privacyEntry(u"a@example.org", true)->message = true;
    privacy.privacyEntry(u"b@example.org", true);
    privacy.privacyEntry(u"c@example.org", true)->presenceIn = true;
    privacy.privacyUpdate(false);
    ASSERT_EQ(sent.size(), 2u);
    const std::string items = sent[1].substr(sent[1].find("<item"));
    EXPECT_EQ(items,
              "<item type=\"jid\" value=\"a@example.org\" action=\"deny\" order=\"1\"><message/></item>"
              "<item type=\"jid\" value=\"c@example.org\" action=\"deny\" order=\"3\"><presence-in/></item>"
              "<item action=\"allow\" order=\"4\"><presence-out/></item></list></query></iq>");
}

TEST_F(Requests, OfAnUploadOfNobodyAllowAll) {
    privacy.privacyUpdate(false);
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_EQ(
        sent[1].substr(sent[1].find("<list")),
        "<list name=\"okf-privacy\"><item action=\"allow\" order=\"1\"><presence-out/></item></list></query></iq>");
}

TEST_F(Requests, ThatWereNeverMadeHaveNoAnswer) {
    xmlElement reply(u"iq");
    EXPECT_EQ(privacy.onPrivacyReply(Stanza::of(reply)), Routing::Next);
    EXPECT_TRUE(sent.empty());
}

}  // namespace
