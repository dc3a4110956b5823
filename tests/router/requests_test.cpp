// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Requests that wait for an answer.
#include "router/requests.h"

#include <gtest/gtest.h>

#include "tests/support/fake_platform.h"
#include "tests/support/recording_host.h"

using namespace protolink;

namespace {

class RequestsTest : public testing::Test {
protected:
    RequestsTest() : client({u"r", u"c", u"XMPP"}, Host(host.table(), host.module)) {
        harness::world() = harness::FakeWorld();
        host.sockets["XMPP/Socket/1"] = {};
        client.netId = 1;
        client.socketName = u"XMPP/Socket/1";
    }
    Routing answer(const std::u16string& id) {
        xmlElement reply(u"message");
        reply.SetAttribute(u"id", id);
        return requests.onStanza(Stanza::of(reply));
    }

    harness::RecordingHost host;
    CClientClass client;
    CZipStream zip;
    StreamOutput output{client, zip};
    CProtoEventDispatcher dispatcher;
    Requests requests{dispatcher, output};
};

TEST_F(RequestsTest, AreAwaitedBeforeTheyGoOut) {
    int answers = 0;
    std::u16string asked;
    host.onEvent = [&](const harness::Event& event) {
        if (event.category != harness::Event::Category::Sent) return;
        EXPECT_EQ(event.data, "<iq/>");
        EXPECT_EQ(answer(asked), Routing::Done) << "a server may answer at once";
    };
    const auto compose = [&](const std::u16string& id) {
        asked = id;
        return std::u16string(u"<iq/>");
    };
    requests.ask(compose, [&](xmlElement&) { ++answers; });
    EXPECT_EQ(answers, 1);
    EXPECT_EQ(answer(asked), Routing::Next) << "an answer comes once";
}

TEST_F(RequestsTest, MayBeAwaitedOnlyOnceTheyAreOut) {
    int answers = 0;
    std::u16string asked;
    const auto compose = [&](const std::u16string& id) {
        asked = id;
        return std::u16string(u"<iq/>");
    };
    host.onEvent = [&](const harness::Event& event) {
        if (event.category == harness::Event::Category::Sent) {
            EXPECT_EQ(answer(asked), Routing::Next) << "nobody waits yet";
        }
    };
    EXPECT_TRUE(requests.sendThenAwait(compose, [&](xmlElement&) { ++answers; }));
    EXPECT_EQ(answers, 0);
    EXPECT_EQ(answer(asked), Routing::Done);
    EXPECT_EQ(answers, 1);
}

TEST_F(RequestsTest, ThatTheSocketOrAListenerRefusesAreNotAwaited) {
    std::u16string asked;
    const auto compose = [&](const std::u16string& id) {
        asked = id;
        return std::u16string(u"<iq/>");
    };
    host.answersOnce["NetLib/Send"] = {-1};
    EXPECT_FALSE(requests.sendThenAwait(compose, [](xmlElement&) { FAIL(); }));
    EXPECT_EQ(answer(asked), Routing::Next);
    host.vetoes.insert(harness::hookKind("stream-out"));
    EXPECT_FALSE(requests.sendThenAwait(compose, [](xmlElement&) { FAIL(); }));
    EXPECT_EQ(answer(asked), Routing::Next);
}

TEST_F(RequestsTest, ThatGoOutLaterAreAwaitedAlready) {
    int answers = 0;
    const std::u16string first = requests.await([&](xmlElement&) { ++answers; });
    const std::u16string second = requests.await([&](xmlElement&) { answers += 10; });
    EXPECT_NE(first, second);
    EXPECT_EQ(answer(second), Routing::Done);
    EXPECT_EQ(answers, 10);
    EXPECT_EQ(answer(u"another"), Routing::Next);
}

TEST_F(RequestsTest, OfAnEndedConnectionAreForgotten) {
    int answers = 0;
    const std::u16string id = requests.await([&](xmlElement&) { ++answers; });
    requests.forgetAll();
    EXPECT_EQ(answer(id), Routing::Next);
    EXPECT_EQ(answers, 0);
}

}  // namespace
