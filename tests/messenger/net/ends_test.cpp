// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Contract 2: one end for each connection, with the word that decides about reconnection, in every way to end.
#include <gtest/gtest.h>

#include "tests/messenger/net/recorder.h"
#include "tests/messenger/net/server.h"
#include "tests/messenger/net/wait.h"

namespace oku::net::test {
namespace {

SocketSettings quick() {
    SocketSettings settings;
    settings.closeGrace = 50;
    return settings;
}

/** The system, as far as it tells of changes. */
struct Told {
    explicit Told(SocketSettings& settings) {
        settings.systemEvents = [this](std::function<void()> listener) {
            changed = std::move(listener);
            return std::make_unique<QObject>();
        };
    }

    std::function<void()> changed;
};

/** A connection that is open, with the server's side of it. */
struct Ends : testing::Test {
    Ends() { begin(quick()); }

    void begin(const SocketSettings& settings, bool busy = false) {
        const int clients = server.clientCount();
        bench = std::make_unique<Bench>(settings);
        bench->service.setPluginBusy(busy);
        id = bench->connect(server.serverPort());
        EXPECT_TRUE(bench->opened());
        EXPECT_TRUE(waitFor([&] { return server.clientCount() > clients; }));
    }

    /** The one end that came; also looks whether another one follows. */
    End end() {
        EXPECT_TRUE(bench->closed());
        settle();
        EXPECT_EQ(bench->events.ends.size(), 1U);
        EXPECT_TRUE(bench->service.isCurrent(id)) << "an end that waits in a queue must still count";
        return bench->events.ends.empty() ? End() : bench->events.ends.front();
    }

    Server server;
    std::unique_ptr<Bench> bench;
    ConnectionId id;
};

TEST_F(Ends, CutByTheServer) {
    server.client().disconnectFromHost();
    const End cut = end();
    EXPECT_FALSE(cut.askedFor);
    EXPECT_EQ(cut.text, "The server cut the connection.");
}

TEST_F(Ends, ResetByTheServer) {
    server.reset();
    const End reset = end();
    EXPECT_FALSE(reset.askedFor);
    EXPECT_EQ(reset.cause, EndCause::Reset);
}

TEST_F(Ends, ClosedByTheServerAfterItsClosingTag) {
    server.send(header + "<a/></stream:stream>");
    server.client().disconnectFromHost();
    const End closed = end();
    EXPECT_FALSE(closed.askedFor);
    EXPECT_EQ(closed.cause, EndCause::ClosedByServer);
    EXPECT_EQ(bench->events.pieces.back(), "</stream:stream>");
}

TEST_F(Ends, AServerThatEndsItsStreamAndKeepsTheLineIsClosed) {
    server.send(header + "</stream:stream>");
    EXPECT_FALSE(end().askedFor);
}

TEST_F(Ends, AfterOurClosingTagTheServerCloses) {
    QObject::connect(&server.client(), &QSslSocket::readyRead, &server, [&] { server.client().disconnectFromHost(); });
    bench->service.send("s", "</stream:stream>");
    const End closed = end();
    EXPECT_TRUE(closed.askedFor);
    EXPECT_FALSE(closed.answered) << "a server that crashes closes as well";
}

TEST_F(Ends, AServerThatAnswersOurClosingTagHasReadAll) {
    begin({});  // it is the answer that ends it, not the grace
    QObject::connect(&server.client(), &QSslSocket::readyRead, &server, [&] {
        server.send(header + "</stream:stream>");
        server.client().disconnectFromHost();
    });
    bench->service.send("s", "</stream:stream>");
    const End closed = end();
    EXPECT_TRUE(closed.askedFor);
    EXPECT_EQ(closed.cause, EndCause::ClosedByPlugin);
    EXPECT_TRUE(closed.answered);
}

TEST_F(Ends, AServerThatEndsItsStreamFirstHasNotAnsweredOurs) {
    bench->events.onEvent = [&](const QString& line) {
        if (line.endsWith("</stream:stream>")) bench->service.send("s", "</stream:stream>");
    };
    server.send(header + "</stream:stream>");
    const End closed = end();
    EXPECT_TRUE(closed.askedFor);
    EXPECT_FALSE(closed.answered);
}

TEST_F(Ends, AServerThatFailsAfterOurClosingTagHasNotAnsweredIt) {
    bench->service.send("s", "</stream:stream>");
    server.send(header +
                "<stream:error><system-shutdown xmlns='urn:ietf:params:xml:ns:xmpp-streams'/></stream:error>"
                "</stream:stream>");
    EXPECT_FALSE(end().answered);
}

TEST_F(Ends, TheMachineThatSleepsAfterOurClosingTagHasNoAnswer) {
    bench->service.send("s", "</stream:stream>");
    bench->service.resumedFromSleep();
    const End slept = end();
    EXPECT_TRUE(slept.askedFor);
    EXPECT_FALSE(slept.answered);
}

TEST_F(Ends, AfterOurClosingTagTheServerResets) {
    bench->service.send("s", "</stream:stream>");
    server.reset();
    const End reset = end();
    EXPECT_TRUE(reset.askedFor);
    EXPECT_FALSE(reset.answered);
}

TEST_F(Ends, AfterOurClosingTagTheHostClosesWhenTheServerDoesNot) {
    bench->service.send("s", "</stream:stream>");
    const End closed = end();
    EXPECT_TRUE(closed.askedFor);
    EXPECT_FALSE(closed.answered);
    EXPECT_TRUE(waitFor([&] { return server.client().state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_EQ(server.received(), "</stream:stream>");
}

TEST_F(Ends, AfterOurClosingTagTheServerHasTheWholeGraceToAnswer) {
    begin({});
    bench->service.send("s", "</stream:stream>");
    settle(150);
    EXPECT_TRUE(bench->events.ends.empty());
    server.send("<message/>");
    EXPECT_TRUE(waitFor([&] { return bench->events.bytes() == "<message/>"; }));
    server.send("</stream:stream>");
    EXPECT_TRUE(end().askedFor) << "both streams are closed, nothing is left to wait for";
}

TEST_F(Ends, TheCoreMayTellThatTheStreamEnded) {
    bench->service.streamEnded("s");
    EXPECT_TRUE(end().askedFor);
}

TEST_F(Ends, NothingIsSentBehindOurClosingTag) {
    EXPECT_EQ(bench->service.send("s", "<a/></stream:stream>"), 20);
    EXPECT_EQ(bench->service.send("s", "<b/>"), -1);
    end();
    EXPECT_TRUE(waitFor([&] { return server.client().state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_EQ(server.received(), "<a/></stream:stream>");
}

TEST_F(Ends, ClosedByThePlugin) {
    bench->service.send("s", "</stream:stream>");
    EXPECT_TRUE(bench->service.close("s"));
    EXPECT_EQ(bench->events.ends.size(), 1U);
    EXPECT_FALSE(bench->service.close("s")) << "there is nothing left to close";
    const End closed = end();
    EXPECT_TRUE(closed.askedFor);
    EXPECT_FALSE(closed.answered);
    EXPECT_TRUE(waitFor([&] { return server.received() == "</stream:stream>"; })) << "what was sent still goes out";
}

TEST_F(Ends, ConflictCountsAsAskedFor) {
    bench->service.sessionBound("s");
    server.send(header +
                "<stream:error><conflict xmlns='urn:ietf:params:xml:ns:xmpp-streams'/></stream:error>"
                "</stream:stream>");
    server.client().disconnectFromHost();
    const End conflict = end();
    EXPECT_TRUE(conflict.askedFor);
    EXPECT_EQ(conflict.cause, EndCause::Conflict);
}

TEST_F(Ends, ConflictInClearBeforeALoginDoesNotAsAnybodyOnTheLineCouldSayIt) {
    server.send(header +
                "<stream:error><conflict xmlns='urn:ietf:params:xml:ns:xmpp-streams'/></stream:error>"
                "</stream:stream>");
    server.client().disconnectFromHost();
    const End forged = end();
    EXPECT_FALSE(forged.askedFor);
    EXPECT_EQ(forged.text, "The server closed the connection. The server said: conflict.");
}

TEST_F(Ends, ConflictSeenByTheCoreCountsAsAskedFor) {
    bench->service.conflictSeen("s");
    server.reset();
    EXPECT_TRUE(end().askedFor);
}

TEST_F(Ends, AnotherStreamErrorDoesNotAndIsTold) {
    server.send(header +
                "<stream:error><system-shutdown xmlns='urn:ietf:params:xml:ns:xmpp-streams'/>"
                "<text xmlns='urn:ietf:params:xml:ns:xmpp-streams'>Back soon</text></stream:error>"
                "</stream:stream>");
    server.client().disconnectFromHost();
    const End shutdown = end();
    EXPECT_FALSE(shutdown.askedFor);
    EXPECT_EQ(shutdown.text, "The server closed the connection. The server said: system-shutdown (Back soon).");
}

TEST_F(Ends, ALoginThatWorkedAtTheSecondTryForgetsTheFirst) {
    server.send(header + "<failure xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><not-authorized/></failure><success/>");
    ASSERT_TRUE(waitFor([&] { return bench->events.bytes().endsWith("<success/>"); }));
    bench->service.sessionBound("s");
    server.client().disconnectFromHost();
    EXPECT_EQ(end().text, "The server cut the connection.");
}

TEST_F(Ends, ALoginThatFailedIsTold) {
    server.send(header + "<failure xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><not-authorized/></failure>");
    ASSERT_TRUE(waitFor([&] { return bench->events.bytes().endsWith("</failure>"); }));
    bench->service.send("s", "</stream:stream>");
    EXPECT_EQ(end().text, "The connection was closed. The server said: not-authorized.");
}

TEST_F(Ends, NetworkGone) {
    bench->service.networkGone();
    const End gone = end();
    EXPECT_FALSE(gone.askedFor);
    EXPECT_EQ(gone.cause, EndCause::NetworkGone);
}

TEST_F(Ends, TheAddressOfTheConnectionIsGone) {
    QList<QHostAddress> addresses{QHostAddress::LocalHost};
    SocketSettings settings = quick();
    Told told(settings);
    settings.localAddresses = [&] { return addresses; };
    begin(settings);
    told.changed();
    settle();
    EXPECT_TRUE(bench->events.ends.empty());
    addresses = {QHostAddress("192.0.2.1")};
    settle();
    EXPECT_TRUE(bench->events.ends.empty()) << "nobody looks before the system tells";
    told.changed();
    const End gone = end();
    EXPECT_FALSE(gone.askedFor);
    EXPECT_EQ(gone.cause, EndCause::NetworkGone);
}

TEST_F(Ends, WhereTheSystemTellsNothingTheAddressesAreLookedAtAgainAndAgain) {
    QList<QHostAddress> addresses{QHostAddress::LocalHost};
    SocketSettings settings = quick();
    settings.systemEvents = [](const std::function<void()>&) { return nullptr; };
    settings.watchInterval = 5;
    settings.localAddresses = [&] { return addresses; };
    begin(settings);
    settle();
    EXPECT_TRUE(bench->events.ends.empty());
    addresses = {QHostAddress("192.0.2.1")};
    EXPECT_EQ(end().cause, EndCause::NetworkGone);
}

TEST_F(Ends, ResumedFromSleep) {
    qint64 slept = 1'000'000;
    SocketSettings settings = quick();
    Told told(settings);
    settings.sleptTime = [&] { return slept; };
    begin(settings);
    slept += 1'000;
    told.changed();
    settle();
    EXPECT_TRUE(bench->events.ends.empty()) << "a nap of a second harms no connection";
    slept += 60'000;
    told.changed();
    const End resumed = end();
    EXPECT_FALSE(resumed.askedFor);
    EXPECT_EQ(resumed.cause, EndCause::Resumed);
}

TEST_F(Ends, SilentWithUnsentDataIsFoundByTheUserTimeout) {
    SocketSettings settings = quick();
    settings.userTimeout = 400;
    begin(settings);
    server.fallSilent();
    bench->service.send("s", "<a/>");
    const End dead = end();
    EXPECT_FALSE(dead.askedFor);
    EXPECT_EQ(dead.cause, EndCause::LineDead);
}

TEST_F(Ends, SilentAndIdleIsFoundByKeepalive) {
    SocketSettings settings = quick();
    settings.keepaliveIdle = settings.keepaliveInterval = 1'000;
    settings.keepaliveCount = 1;
    settings.userTimeout = 1'000;
    begin(settings);
    server.fallSilent();
    const End dead = end();
    EXPECT_FALSE(dead.askedFor);
    EXPECT_EQ(dead.cause, EndCause::LineDead);
}

/** The clock stands still until the test is ready: a slow machine must not run into it while the socket opens. */
TEST_F(Ends, StalledLogin) {
    SocketSettings settings = quick();
    settings.stall = 50;
    begin(settings, true);
    server.send(header);
    bench->service.setPluginBusy(false);
    const End stalled = end();
    EXPECT_FALSE(stalled.askedFor);
    EXPECT_EQ(stalled.cause, EndCause::Stalled);
}

TEST_F(Ends, ABoundSessionDoesNotStall) {
    SocketSettings settings = quick();
    settings.stall = 50;
    begin(settings, true);
    bench->service.sessionBound("s");
    bench->service.setPluginBusy(false);
    settle(150);
    EXPECT_TRUE(bench->events.ends.empty());
}

TEST_F(Ends, ALoginDoesNotStallWhileThePluginIsHeldUp) {
    SocketSettings settings = quick();
    settings.stall = 50;
    begin(settings, true);
    settle(150);
    EXPECT_TRUE(bench->events.ends.empty());
    bench->service.setPluginBusy(false);
    EXPECT_EQ(end().cause, EndCause::Stalled) << "then its clock goes on";
}

TEST_F(Ends, DestroyReportsDestroyedAndNoEnd) {
    bench->service.send("s", "</stream:stream>");
    EXPECT_TRUE(bench->service.destroy("s"));
    EXPECT_EQ(bench->events.log.last(), "destroyed s");
    EXPECT_FALSE(bench->service.isCurrent(id));
    EXPECT_TRUE(waitFor([&] { return server.client().state() == QAbstractSocket::UnconnectedState; }));
    EXPECT_EQ(server.received(), "</stream:stream>");
    EXPECT_TRUE(bench->events.ends.empty());
    EXPECT_FALSE(bench->service.destroy("s"));
    EXPECT_EQ(bench->service.send("s", "x"), -1);
}

TEST(EndsOfADial, Refused) {
    Bench bench;
    bench.connect(deadPort());
    ASSERT_TRUE(bench.closed());
    settle();
    ASSERT_EQ(bench.events.log.size(), 1);
    EXPECT_FALSE(bench.events.ends[0].askedFor);
    EXPECT_EQ(bench.events.ends[0].cause, EndCause::Unreachable);
    EXPECT_TRUE(bench.events.ends[0].text.contains("connection refused")) << bench.events.ends[0].text.toStdString();
}

TEST(EndsOfADial, NameNotFound) {
    Bench bench;
    bench.connect(5222, "nowhere.test");
    ASSERT_TRUE(bench.closed());
    EXPECT_FALSE(bench.events.ends[0].askedFor);
    EXPECT_EQ(bench.events.ends[0].text, "No address was found for the server nowhere.test.");
}

TEST(EndsOfADial, NoAnswerAtAll) {
    SocketSettings settings;
    settings.targetTimeout = 100;
    Bench bench(settings);
    const BlackHole hole(QHostAddress::LocalHost);
    bench.connect(hole.port());
    ASSERT_TRUE(bench.closed());
    EXPECT_FALSE(bench.events.ends[0].askedFor);
    EXPECT_TRUE(bench.events.ends[0].text.contains("no answer"));
}

TEST(EndsOfADial, StalledCountsFromTheDial) {
    SocketSettings settings;
    settings.stall = 100;
    Bench bench(settings);
    const BlackHole hole(QHostAddress::LocalHost);
    bench.connect(hole.port());
    ASSERT_TRUE(bench.closed());
    EXPECT_FALSE(bench.events.ends[0].askedFor);
    EXPECT_EQ(bench.events.ends[0].cause, EndCause::Stalled);
}

TEST(EndsOfADial, ClosedByThePluginWhileDialling) {
    Bench bench;
    const BlackHole hole(QHostAddress::LocalHost);
    bench.connect(hole.port());
    settle(20);
    EXPECT_TRUE(bench.service.close("s"));
    settle();
    ASSERT_EQ(bench.events.ends.size(), 1U);
    EXPECT_TRUE(bench.events.ends[0].askedFor);
}

TEST(EndsOfADial, NetworkGoneWhileDialling) {
    Bench bench;
    const BlackHole hole(QHostAddress::LocalHost);
    bench.connect(hole.port());
    settle(20);
    bench.service.networkGone();
    ASSERT_EQ(bench.events.ends.size(), 1U);
    EXPECT_FALSE(bench.events.ends[0].askedFor);
}

TEST(EndsOfADial, NothingIsThereToClose) {
    Bench bench;
    EXPECT_FALSE(bench.service.close("s"));
    EXPECT_FALSE(bench.service.close("unknown"));
    EXPECT_FALSE(bench.service.create("s")) << "the name is taken";
    EXPECT_EQ(bench.service.connect("unknown", {}).number, 0U);
    EXPECT_TRUE(bench.events.log.isEmpty());
}

}  // namespace
}  // namespace oku::net::test
