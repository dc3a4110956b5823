// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a transcript cannot bring about: states that an orderly host does not lead to, and bytes that are no stream.
#include "stream/connection.h"

#include <gtest/gtest.h>

#include "plugin/module.h"
#include "stream/keepalive.h"
#include "stream/socket_events.h"
#include "tests/support/compression.h"
#include "tests/support/fake_platform.h"
#include "tests/support/player.h"
#include "tests/support/recording_host.h"
#include "tests/support/text.h"

using namespace protolink;

namespace {

using Texts = std::vector<std::string>;

struct Elements : StreamListener {
    void forgetSession() override {}
    void onStateReset() override {}
    void onSocketConnected() override {}
    void onSocketClosed() override {}
    void publishStatus(Status, const std::u16string&) override {}
    void routeElements(XmlSequence& batch) override {
        xmlElement element;
        while (batch.next(element)) seen.push_back(harness::toUtf8(element.GetXML(1)));
    }
    Texts seen;
};

OKU_WORD OKU_CALL ignore(OKU_WORD, OKU_WORD, OKU_WORD) { return 0; }

class ConnectionTest : public testing::Test {
protected:
    ConnectionTest() : client({u"r", u"c", u"XMPP"}, Host(host.table(), host.module)) {
        harness::world() = harness::FakeWorld();
        host.now = [] { return harness::world().now; };
        host.sockets["XMPP/Socket/1"] = {};
        host.protocols[1].flags = &client.flags;
        host.onEvent = [this](const harness::Event& event) {
            if (event.category == harness::Event::Category::Sent) sent.push_back(event.data);
        };
        output.attach(connection);
        client.netId = 1;
        client.socketName = u"XMPP/Socket/1";
        client.jid = parseJID(u"alice@example.org/home");
        client.status = Status::Online;
    }

    void raise(std::uint32_t kind, OKU_WORD data = 0) {
        NL_EVENT event{sizeof(NL_EVENT), kind};
        socketEvents.onSocketEvent(reinterpret_cast<OKU_WORD>(&event), data);
    }
    void receive(std::string bytes) {
        NL_RECEIVED piece{sizeof(NL_RECEIVED), static_cast<std::int32_t>(bytes.size()), bytes.data()};
        raise(NL_EVENT_RECEIVED, reinterpret_cast<OKU_WORD>(&piece));
    }
    void compress() {
        client.flags |= FLAG_COMPRESSED;
        zip.zStart();
    }

    harness::RecordingHost host;
    Elements elements;
    Texts sent;
    CClientClass client;
    CZipStream zip;
    StreamOutput output{client, zip};
    Reconnection reconnection{client, ignore};
    Connection connection{client, zip, output, reconnection, elements};
    SocketEvents socketEvents{client, connection, reconnection, elements};
    Keepalive keepalive{client, output, connection};
};

TEST_F(ConnectionTest, PingsOnlyWhileConnectedAndAuthorized) {
    for (const std::uint32_t flags : {0u, std::uint32_t{FLAG_CONNECTED}, std::uint32_t{FLAG_AUTHORIZED}}) {
        client.flags = flags;
        client.status = Status::Offline;
        keepalive.onTick();
        EXPECT_TRUE(sent.empty()) << flags;
    }
    client.flags = FLAG_CONNECTED | FLAG_AUTHORIZED;
    keepalive.onTick();
    EXPECT_EQ(sent.size(), 1u);
}

TEST_F(ConnectionTest, SilenceIsNoDeathForWhoWantsToBeOffline) {
    client.flags = FLAG_CONNECTED | FLAG_AUTHORIZED;
    client.status = Status::Offline;
    keepalive.onTick();
    EXPECT_TRUE(client.flags & FLAG_CONNECTED);
    client.status = Status::Away;
    keepalive.onTick();
    EXPECT_FALSE(client.flags & FLAG_CONNECTED);
    host.complaints.clear();  // the settings store is none in this connection
}

TEST_F(ConnectionTest, BytesThatWereNotInflatedGoWithTheirConnection) {
    for (const std::uint32_t end : {NL_EVENT_CLOSED, NL_EVENT_CLOSED_TOO, NL_EVENT_CONNECTED}) {
        elements.seen.clear();
        raise(NL_EVENT_CONNECTED);
        compress();
        receive("no stream");
        if (end != NL_EVENT_CONNECTED) raise(end);
        raise(NL_EVENT_CONNECTED);
        compress();
        receive(harness::Compression().deflate("<a/>"));
        EXPECT_EQ(elements.seen, Texts{"<a/>"}) << end;
    }
    host.complaints.clear();
}

TEST_F(ConnectionTest, PieceWithoutBytesIsNoInput) {
    raise(NL_EVENT_CONNECTED);
    NL_RECEIVED piece{sizeof(NL_RECEIVED), 5, nullptr};
    raise(NL_EVENT_RECEIVED, reinterpret_cast<OKU_WORD>(&piece));
    char bytes[] = "<a/>";
    piece = {sizeof(NL_RECEIVED), -1, bytes};
    raise(NL_EVENT_RECEIVED, reinterpret_cast<OKU_WORD>(&piece));
    EXPECT_TRUE(elements.seen.empty());
    EXPECT_EQ(connection.input().lastValidRecv(), 0);
    host.complaints.clear();  // the settings store is none in this connection
}

TEST_F(ConnectionTest, CompressionThatFailsEndsTheConnectionOnce) {
    Texts events;
    host.onEvent = [&](const harness::Event& event) { events.push_back(harness::render(event)); };
    const Texts fault{"log 0 XMSC \"ERROR: Compression fault!\"",
                      "call OKU/Timer/Destroy id=\"XMPP/1/Reconn\" shape=reference",
                      "log 0 XMSC \"ERROR: Compression fault!\"",  // of the closing tag
                      "call OKU/CTL/SetAllOffline",
                      "hook connection-ended notice",
                      "call NetLib/Close socket=\"XMPP/Socket/1\""};
    for (int round = 0; round < 2; ++round) {
        events.clear();
        client.flags = FLAG_CONNECTED | FLAG_COMPRESSED;  // and no compressor
        EXPECT_EQ(output.sendText(u"<a/>"), -1);
        std::erase_if(events, [](const std::string& event) { return event.starts_with("hook stream-out"); });
        EXPECT_EQ(events, fault);
        EXPECT_EQ(client.flags, 0u);
    }
}

TEST_F(ConnectionTest, CallsTellWhatBecameOfThem) {
    EXPECT_EQ(connection.disconnect(true), 0);
    client.flags = FLAG_CONNECTED;
    EXPECT_EQ(connection.disconnect(false), 1);
    client.flags = FLAG_CONNECTED;
    host.answersOnce["NetLib/Close"] = {7, 9};
    EXPECT_EQ(connection.disconnect(true), 7);
    client.flags = FLAG_CONNECTING;
    EXPECT_EQ(connection.disconnect(false), 9);
    EXPECT_EQ(connection.setStatus(Status::Offline, u"", 0), 1);
    host.answersOnce["NetLib/Send"] = {5};
    EXPECT_EQ(connection.sendStreamHeader(), 5);
}

TEST(Seeding, IsByTheTimeAtEachConnectionAndByTheTicksAtEachChallenge) {
    constexpr harness::PluginExports kExports{queryPlugInfo, pluginLoad, pluginUnload};
    const auto login = harness::FoldBook(PROTOLINK_FOLDS).readText("login", "log in as a@example.org/x by digest\n");
    const auto outcome = harness::play(kExports, login, {});
    EXPECT_TRUE(outcome.passed) << outcome.report;
    const harness::FakeWorld fresh;
    EXPECT_EQ(harness::world().seeds, (std::vector<std::uint32_t>{static_cast<std::uint32_t>(fresh.now), fresh.ticks}));
}

}  // namespace
