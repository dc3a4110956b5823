// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What presence keeps and returns without the host or the wire seeing it.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "im/presence.h"
#include "im/subscriptions.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_host.h"

using namespace protolink;

namespace {

struct Quiet : CapabilityAsker {
    void requestResourceCaps(const xmlElement&, std::u16string_view, ResourceEntry&) override {}
};

OKU_WORD OKU_CALL ignore(OKU_WORD, OKU_WORD, OKU_WORD) { return 0; }

class PresenceCalls : public testing::Test {
protected:
    PresenceCalls() : client({u"r", u"c", u"XMPP"}, Host(host.table(), host.module)) {
        harness::world() = harness::FakeWorld();
        host.sockets["XMPP/Socket/1"] = {};
        client.netId = 1;
        client.socketName = u"XMPP/Socket/1";
        client.jid = parseJID(u"alice@example.org/home");
        contacts.entry(u"bob@example.org").jid = u"bob@example.org";
    }

    int receive(std::u16string_view type, const std::u16string& show, const std::u16string& status) {
        xmlElement element(u"presence");
        if (!show.empty()) element.SetChild(xmlElement(u"show", show));
        if (!status.empty()) element.SetChild(xmlElement(u"status", status));
        return presence.onPresence({element, u"bob@example.org/desk", type, u""});
    }
    const ResourceEntry* desk() { return contacts.findResource(u"bob@example.org", u"desk"); }

    harness::RecordingHost host;
    CClientClass client;
    Quiet quiet;
    CZipStream zip;
    StreamOutput output{client, zip};
    Reconnection reconnection{client, ignore};
    Contacts contacts;
    ServerFeatures features;
    PrivacyLists privacy{output};
    OwnPresentation own;
    Presence presence{client, output, reconnection, contacts, features, privacy, quiet, own};
};

TEST_F(PresenceCalls, KeepAResourceWithItsFirstPresence) {
    EXPECT_EQ(receive(u"", u"dnd", u"praca"), 0);
    ASSERT_NE(desk(), nullptr);
    EXPECT_EQ(desk()->status, Status::Dnd);
    EXPECT_EQ(desk()->description, u"praca");
    EXPECT_EQ(desk()->lastChange, harness::world().now);
}

TEST_F(PresenceCalls, AreOverAlsoWhenThereIsNothingToKeep) {
    xmlElement element(u"presence");
    EXPECT_EQ(presence.onPresence({element, u"bob@example.org", u"", u""}), 0);
    EXPECT_EQ(presence.onPresence({element, u"stranger@example.org/desk", u"", u""}), 0);
    EXPECT_EQ(receive(u"unavailable", u"", u""), 0);
    EXPECT_EQ(receive(u"", u"", u""), 0);
    EXPECT_EQ(receive(u"", u"", u""), 0);
}

TEST_F(PresenceCalls, TakeOverEachLaterPresence) {
    receive(u"", u"dnd", u"praca");
    harness::world().now += 60;
    receive(u"", u"away", u"obiad");
    ASSERT_NE(desk(), nullptr);
    EXPECT_EQ(desk()->status, Status::Away);
    EXPECT_EQ(desk()->description, u"obiad");
    EXPECT_EQ(desk()->lastChange, harness::world().now);
    receive(u"", u"", u"");
    EXPECT_EQ(desk()->status, Status::Online);
    EXPECT_EQ(desk()->description, u"");
}

TEST_F(PresenceCalls, KeepWhatTheClientCanDo) {
    receive(u"", u"", u"");
    contacts.findResource(u"bob@example.org", u"desk")->resFileTransfer = 1;
    receive(u"", u"away", u"");
    EXPECT_EQ(desk()->resFileTransfer, 1u);
}

TEST_F(PresenceCalls, ChangeNothingWhenAListenerStopsThem) {
    receive(u"", u"dnd", u"praca");
    host.answersOnce["OKU/CallProtolHooks"] = {1};
    EXPECT_EQ(receive(u"unavailable", u"", u""), 1);
    ASSERT_NE(desk(), nullptr);
    EXPECT_EQ(desk()->status, Status::Dnd);
}

TEST_F(PresenceCalls, ForgetAResourceThatLeaves) {
    receive(u"", u"", u"");
    EXPECT_EQ(receive(u"unavailable", u"", u""), 0);
    EXPECT_EQ(desk(), nullptr);
}

TEST_F(PresenceCalls, ToSendGiveTheResultOfTheSend) {
    EXPECT_EQ(presence.sendPresence(Status::Online, u""), 0);
    client.flags = FLAG_CONNECTED | FLAG_AUTHORIZED;
    host.answersOnce["NetLib/Send"] = {7};
    EXPECT_EQ(presence.sendPresence(Status::Online, u""), 7);
}

TEST_F(PresenceCalls, ToSendTellNoCapabilitiesThatAreNotKnown) {
    std::vector<std::string> sent;
    host.onEvent = [&sent](const harness::Event& event) {
        if (event.category == harness::Event::Category::Sent) sent.push_back(event.data);
    };
    client.flags = FLAG_CONNECTED | FLAG_AUTHORIZED;
    presence.sendPresence(Status::Online, u"");
    EXPECT_EQ(sent, std::vector<std::string>({"<presence/>"}));
}

TEST_F(PresenceCalls, ToAnswerNobodySendNothing) {
    Roster roster{client, output, contacts};
    Subscriptions subscriptions{client, contacts, roster, presence};
    client.flags = FLAG_CONNECTED | FLAG_AUTHORIZED;
    host.onEvent = [](const harness::Event& event) { ADD_FAILURE() << harness::render(event); };
    EXPECT_EQ(subscriptions.onContactAuth(0, 3), 0u);
}

}  // namespace
