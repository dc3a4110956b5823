// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A host that delivers the server's answer from within the send: whoever waits for it has to wait by then.
#include <gtest/gtest.h>

#include "router/binding.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_host.h"

using namespace protolink;

namespace {

struct Quiet : StreamListener {
    void forgetSession() override {}
    void onStateReset() override {}
    void onSocketConnected() override {}
    void onSocketClosed() override {}
    void routeElements(XmlSequence&) override {}
    void publishStatus(Status, const std::u16string&) override {}
};

struct Answers : SessionListener {
    void onServerDiscoInfo(xmlElement&) override { ++features; }
    void rosterResult(xmlElement&) override { ++rosters; }
    int features = 0;
    int rosters = 0;
};

OKU_WORD OKU_CALL ignore(OKU_WORD, OKU_WORD, OKU_WORD) { return 0; }

class Session : public testing::Test {
protected:
    Session() : client({u"r", u"c", u"XMPP"}, Host(host.table(), host.module)) {
        harness::world() = harness::FakeWorld();
        host.sockets["XMPP/Socket/1"] = {};
        client.netId = 1;
        client.socketName = u"XMPP/Socket/1";
        client.jid = parseJID(u"alice@example.org/home");
        client.flags = FLAG_CONNECTED | FLAG_AUTHORIZED;
    }

    /// The id of the stanza in these bytes.
    static std::u16string idOf(const std::string& sent) {
        const auto start = sent.find("id=\"") + 4;
        const auto id = sent.substr(start, sent.find('"', start) - start);
        return {id.begin(), id.end()};
    }

    harness::RecordingHost host;
    CClientClass client;
    Quiet quiet;
    Answers answers;
    CZipStream zip;
    StreamOutput output{client, zip};
    CProtoEventDispatcher dispatcher;
    Reconnection reconnection{client, ignore};
    Connection connection{client, zip, output, reconnection, quiet};
    Requests requests{dispatcher, output};
    LoginProgress login;
    Binding binding{client, output, connection, requests, login, answers};
};

TEST_F(Session, EachAnswerMayComeWhileItsRequestGoesOut) {
    host.onEvent = [this](const harness::Event& event) {
        if (event.category != harness::Event::Category::Sent) return;
        xmlElement reply(u"iq");
        reply.SetAttribute(u"id", idOf(event.data));
        reply.SetAttribute(u"type", u"result");
        EXPECT_TRUE(dispatcher.dispatch(reply)) << event.data;
    };
    xmlElement bound(u"iq");
    EXPECT_EQ(binding.onBind(Stanza::of(bound)), Routing::Done);
    EXPECT_EQ(answers.features, 1);
    EXPECT_EQ(answers.rosters, 1);
}

}  // namespace
