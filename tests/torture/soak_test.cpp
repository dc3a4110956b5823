// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A month of service on a simulated clock: four accounts, a million stanzas, twenty thousand reconnects. Nothing may
// grow, and no message may be lost, doubled or out of order, however the stream is cut.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/torture/allocations.h"
#include "tests/torture/client.h"

namespace torture {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int kShare = 50;  // instrumented code runs the fiftieth part
#else
constexpr int kShare = 1;
#endif
constexpr int kAccounts = 4;
constexpr int kStanzas = 1'000'000 / kShare;
constexpr int kReconnects = 20'000 / kShare;
constexpr int kMessages = 100'000 / kShare;
constexpr std::int64_t kMonth = std::int64_t{30} * 24 * 3600 * 1000;

// What a running plugin may have more after a month than after its first day: nothing but the slack of its containers.
constexpr std::size_t kBlocksOfSlack = 64;
constexpr std::size_t kBytesOfSlack = 16 * 1024;

std::string stanza(int number) {
    const std::string contact = "contact" + std::to_string(number % 3) + "@example.org/r" + std::to_string(number % 7);
    switch (number % 8) {
        case 0:
            return "<presence from='" + contact + "'><status>s" + std::to_string(number) + "</status></presence>";
        case 1:
            return "<presence from='" + contact + "' type='unavailable'/>";
        case 2:
            return "<iq type='get' from='example.org' id='p" + std::to_string(number) +
                   "'><ping xmlns='urn:xmpp:ping'/></iq>";
        case 3:
            return "<iq type='set' id='r" + std::to_string(number) +
                   "'><query xmlns='jabber:iq:roster'><item jid='contact" + std::to_string(number % 3) +
                   "@example.org' name='n" + std::to_string(number) + "' subscription='both'/></query></iq>";
        default:
            return "<message from='" + contact + "' type='chat'><body>" + std::to_string(number) +
                   "</body><active xmlns='http://jabber.org/protocol/chatstates'/></message>";
    }
}

TEST(Soak, AMonthOfFourAccountsLeavesNothingBehind) {
    std::mt19937 random(1);
    Client client({.compression = true}, kAccounts);
    client.logIn();
    ASSERT_TRUE(client.isReady());
    std::size_t messages = 0;
    client.host.onMessage = [&](const OKU_MESSAGE_DATA&) { ++messages; };
    std::size_t mostTimers = 0;
    client.host.before = [&](const Call&) -> std::optional<OKU_WORD> {
        mostTimers = std::max(mostTimers, client.host.timers.size());
        return std::nullopt;
    };
    Living afterOneDay;
    const int stanzasOfARound = kStanzas / kReconnects;
    const std::int64_t roundLength = kMonth / kReconnects;
    std::int64_t clock = 0;
    for (int round = 0; round < kReconnects; ++round) {
        const std::uint32_t net = static_cast<std::uint32_t>(round) % kAccounts + 1;
        for (int i = 0; i < stanzasOfARound; ++i)
            client.servers.at(1 + random() % kAccounts).say(stanza(static_cast<int>(random() >> 1)));
        client.pump();
        client.cut(net);
        clock += roundLength;
        while (client.host.clock < clock) client.pass(std::min<std::int64_t>(clock - client.host.clock, 20'000));
        ASSERT_TRUE(client.passUntilReady(60)) << "round " << round;
        // Each account has its keepalive timer and no other one.
        ASSERT_EQ(client.host.timers.size(), std::size_t{kAccounts});
        if (round == kReconnects / 30) afterOneDay = living();
    }
    const Living afterAMonth = living();
    EXPECT_LE(afterAMonth.blocks, afterOneDay.blocks + kBlocksOfSlack);
    EXPECT_LE(afterAMonth.bytes, afterOneDay.bytes + kBytesOfSlack);
    RecordProperty("blocks after a day", std::to_string(afterOneDay.blocks));
    RecordProperty("blocks after a month", std::to_string(afterAMonth.blocks));
    RecordProperty("bytes after a day", std::to_string(afterOneDay.bytes));
    RecordProperty("bytes after a month", std::to_string(afterAMonth.bytes));
    EXPECT_GT(messages, static_cast<std::size_t>(kStanzas) / 3);
    // Only the account that lost its connection has one more, which waits for the next try.
    EXPECT_EQ(mostTimers, kAccounts + 1u);
    client.unload();
    EXPECT_EQ(client.host.leftovers(), "");
}

class Delivery : public testing::TestWithParam<bool> {};

TEST_P(Delivery, EachNumberedMessageComesOnceAndInOrderOverAnyCuts) {
    constexpr std::uint32_t kNet = 1;
    std::mt19937 random(2);
    Client client({.compression = GetParam()});
    // The bytes of the stream as a network hands them over: joined, and cut anywhere.
    std::string stream;
    client.deliver = [&](std::uint32_t, const std::string& bytes) { stream += bytes; };
    const auto deliver = [&](bool all) {
        while (!stream.empty()) {
            // Up to the largest piece that inflates into its room whatever it holds.
            const std::size_t length = 1 + random() % (random() % 4 ? 300 : 3000);
            if (!all && stream.size() < length) return;
            const std::string piece = stream.substr(0, length);
            stream.erase(0, piece.size());
            client.receive(kNet, piece);
        }
    };
    client.load();
    client.setStatus(kNet, OKU_STATUS_ONLINE);
    do {
        client.pump();
        deliver(true);
    } while (client.pumpOne());
    ASSERT_TRUE(client.isReady());
    int next = 0;
    bool inOrder = true;
    client.host.onMessage = [&](const OKU_MESSAGE_DATA& message) {
        inOrder = inOrder && narrow(textAt(message.body)) == "numer " + std::to_string(next) + " \xE2\x82\xAC";
        ++next;
    };
    for (int number = 0; number < kMessages; ++number) {
        client.servers.at(kNet).say("<message from='contact0@example.org/r' type='chat'><body>numer " +
                                    std::to_string(number) + " \xE2\x82\xAC</body></message>");
        client.pump();
        deliver(false);
    }
    deliver(true);
    EXPECT_EQ(next, kMessages);
    EXPECT_TRUE(inOrder);
}

INSTANTIATE_TEST_SUITE_P(, Delivery, testing::Bool(),
                         [](const auto& test) { return test.param ? "Compressed" : "Plain"; });

}  // namespace
}  // namespace torture
