// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Contract 4: logins that fail three times in a row behind an open socket are paced, and the user is told why.
#include <gtest/gtest.h>

#include "messenger/core/net/login_pacer.h"
#include "messenger/core/texts.h"
#include "tests/messenger/net/recorder.h"
#include "tests/messenger/net/server.h"
#include "tests/messenger/net/wait.h"

namespace oku::net::test {
namespace {

struct Pacing : testing::Test {
    static SocketSettings settings(int first) {
        SocketSettings settings;
        settings.paceFirst = first;
        return settings;
    }

    /** Dials and is thrown out again, so many times. */
    void fail(int times) {
        server.onClient = [](QSslSocket& client) {
            client.write(header +
                         "<stream:error><policy-violation xmlns='urn:ietf:params:xml:ns:xmpp-streams'/>"
                         "</stream:error></stream:stream>");
            client.disconnectFromHost();
        };
        for (int i = 0; i < times; ++i) {
            const int before = bench->events.count("closed");
            bench->connect(server.serverPort());
            ASSERT_TRUE(bench->closed(before + 1));
        }
    }

    Server server;
    std::unique_ptr<Bench> bench = std::make_unique<Bench>(settings(60'000));
};

TEST_F(Pacing, ThreeFailuresDelayTheNextDialAndTheUserIsTold) {
    fail(3);
    EXPECT_TRUE(bench->events.notices.isEmpty());
    bench->connect(server.serverPort());
    ASSERT_EQ(bench->events.notices.size(), 1);
    EXPECT_EQ(bench->events.notices[0],
              "Logins that failed in a row: 3. The next attempt follows in 60 s. The server closed the connection. The "
              "server said: policy-violation.");
    settle();
    EXPECT_EQ(server.clientCount(), 3);
}

TEST_F(Pacing, TheDelayedDialGoesInItsTime) {
    bench = std::make_unique<Bench>(settings(100));
    fail(4);
    EXPECT_EQ(server.clientCount(), 4);
    EXPECT_EQ(bench->events.notices.size(), 1);
}

TEST_F(Pacing, ABoundSessionWipesTheSlateClean) {
    fail(2);
    server.onClient = nullptr;
    bench->connect(server.serverPort());
    ASSERT_TRUE(bench->opened(3));
    bench->service.sessionBound("s");
    ASSERT_TRUE(waitFor([&] { return server.clientCount() == 3; }));
    server.reset();
    ASSERT_TRUE(bench->closed(3));
    fail(2);
    EXPECT_TRUE(bench->events.notices.isEmpty());
}

TEST_F(Pacing, ASocketThatNeverOpenedIsNoFailedLogin) {
    const quint16 port = deadPort();
    for (int i = 1; i <= 5; ++i) {
        bench->connect(port);
        ASSERT_TRUE(bench->closed(i));
    }
    EXPECT_TRUE(bench->events.notices.isEmpty());
}

TEST_F(Pacing, WhatTheUserDoesGoesAtOnce) {
    fail(3);
    bench->service.forgetFailures("s");
    bench->connect(server.serverPort());
    ASSERT_TRUE(bench->opened(4));
    EXPECT_TRUE(bench->events.notices.isEmpty());
}

TEST_F(Pacing, ADialThatWaitsGoesWhenTheUserActs) {
    fail(3);
    bench->connect(server.serverPort());
    settle(20);
    bench->service.forgetFailures("s");
    EXPECT_TRUE(bench->opened(4));
}

TEST_F(Pacing, ADialThatWaitsCanBeClosedAndReplaced) {
    fail(3);
    bench->connect(server.serverPort());
    EXPECT_TRUE(bench->service.close("s"));
    ASSERT_EQ(bench->events.ends.size(), 4U);
    EXPECT_TRUE(bench->events.ends[3].askedFor);
    bench->connect(server.serverPort());
    bench->service.networkGone();
    settle();
    EXPECT_EQ(bench->events.ends.size(), 4U) << "a dial that has not begun has nothing to lose";
    EXPECT_EQ(server.clientCount(), 3);
}

TEST_F(Pacing, WhileItWaitsTheLoginsClockDoesNotRun) {
    SocketSettings own = settings(1600);
    own.stall = 1500;
    bench = std::make_unique<Bench>(own);
    // From each dial until its socket is open the clock stands still: a slow machine must not run into it there.
    bench->events.onStep = [this] { bench->service.setPluginBusy(true); };
    bench->events.onEvent = [this](const QString& line) {
        if (line.startsWith("connected")) bench->service.setPluginBusy(false);
    };
    fail(3);
    server.onClient = nullptr;
    bench->connect(server.serverPort());
    EXPECT_TRUE(bench->opened(4));
}

TEST(LoginPacer, DoublesUpToItsLimit) {
    LoginPacer pacer(3, 10, 300);
    QList<int> delays;
    for (int i = 0; i < 12; ++i) {
        delays.append(pacer.delay());
        pacer.failed();
    }
    EXPECT_EQ(delays, (QList<int>{0, 0, 0, 10, 20, 40, 80, 160, 300, 300, 300, 300}));
    for (int i = 0; i < 100'000; ++i) pacer.failed();
    EXPECT_EQ(pacer.delay(), 300);
    pacer.reset();
    EXPECT_EQ(pacer.delay(), 0);
}

TEST(Texts, ArePolishAndEnglish) {
    Bench bench;
    bench.connect(5222, "nie-ma.test");
    setLanguage(Language::Polish);
    EXPECT_TRUE(bench.closed());
    setLanguage(Language::English);
    EXPECT_EQ(bench.events.ends[0].text, "Nie znaleziono adresu serwera nie-ma.test.");
}

}  // namespace
}  // namespace oku::net::test
