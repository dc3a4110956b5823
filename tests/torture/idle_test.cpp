// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What an account costs while nothing happens: one timer of a minute, one ping at each of its ticks, and nothing in
// between.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/torture/client.h"

namespace torture {
namespace {

constexpr std::uint32_t kNet = 1;
constexpr std::int64_t kMinute = 60'000;
constexpr int kMinutesOfADay = 24 * 60;

class Idle : public testing::Test {
protected:
    /// The names of all calls of the host in a minute.
    std::vector<std::string> callsOfAMinute() {
        std::vector<std::string> names;
        client.host.before = [&names](const Call& call) -> std::optional<OKU_WORD> {
            names.push_back(narrow(call.name));
            return std::nullopt;
        };
        client.pass(kMinute);
        client.host.before = nullptr;
        return names;
    }

    void expectOneTimerOfAMinute() const {
        ASSERT_EQ(client.host.timers.size(), 1u);
        const auto& [name, timer] = *client.host.timers.begin();
        EXPECT_EQ(narrow(name), "XMPP/Timer/1");
        EXPECT_EQ(timer.interval, kMinute);
        EXPECT_FALSE(timer.oneShot);
    }

    Client client;
};

TEST_F(Idle, AnAccountThatIsOnlinePingsOnceAMinuteForADay) {
    client.logIn();
    ASSERT_TRUE(client.isReady());
    expectOneTimerOfAMinute();
    // Telling the log, the listeners before and after, the socket; then the same about the answer.
    const std::vector<std::string> ping = callsOfAMinute();
    EXPECT_EQ(std::count(ping.begin(), ping.end(), "NetLib/Send"), 1);
    for (int minute = 1; minute < kMinutesOfADay; ++minute) ASSERT_EQ(callsOfAMinute(), ping) << "minute " << minute;
    expectOneTimerOfAMinute();
    EXPECT_EQ(client.servers.at(kNet).logins(), 1u);
}

TEST_F(Idle, AnAccountThatIsOfflineDoesNothing) {
    client.load();
    expectOneTimerOfAMinute();
    EXPECT_EQ(callsOfAMinute(), std::vector<std::string>());
    client.setStatus(kNet, OKU_STATUS_ONLINE);
    client.pump();
    ASSERT_TRUE(client.isReady());
    client.setStatus(kNet, OKU_STATUS_OFFLINE);
    client.cut(kNet, true);
    expectOneTimerOfAMinute();
    EXPECT_EQ(callsOfAMinute(), std::vector<std::string>());
}

TEST_F(Idle, AnAccountThatWaitsForAReconnectionHasOneTimerMoreUntilItIsBack) {
    client.logIn();
    client.cut(kNet);
    EXPECT_EQ(client.host.timers.size(), 2u);
    client.pass(3000);
    ASSERT_TRUE(client.isReady());
    expectOneTimerOfAMinute();
}

}  // namespace
}  // namespace torture
