// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the plugin keeps in memory for each account, contact and resource; bench/memory_bench.cpp gives the figures.
#include <gtest/gtest.h>

#include "tests/torture/allocations.h"
#include "tests/torture/client.h"

namespace torture {
namespace {

constexpr std::uint32_t kNet = 1;
constexpr int kContacts = 2000;
constexpr std::size_t kKibibyte = 1024;

/// The host of these tests remembers no contact, so that all that stays is the plugin's.
void letHostForget(Client& client) {
    client.host.before = [](const Call& call) -> std::optional<OKU_WORD> {
        if (call.name == u"OKU/CTL/AddContact" || call.name == u"OKU/CTL/FndContact") return 1;
        return std::nullopt;
    };
}

TEST(Footprint, AnIdleAccountKeepsLittle) {
    constexpr int kAccounts = 20;
    Client client({.contacts = 0}, kAccounts);
    letHostForget(client);
    const std::size_t before = living().bytes;
    client.logIn();
    ASSERT_TRUE(client.isReady());
    // What the host registers for an account is in it.
    EXPECT_LT((living().bytes - before) / kAccounts, 16 * kKibibyte);
}

TEST(Footprint, AContactAndAResourceOfItKeepLessThanOneKibibyteEach) {
    Client client({.contacts = kContacts});
    letHostForget(client);
    client.load();
    const std::size_t empty = living().bytes;
    client.setStatus(kNet, OKU_STATUS_ONLINE);
    client.pump();
    ASSERT_TRUE(client.isReady());
    const std::size_t withContacts = living().bytes;
    EXPECT_GT(withContacts, empty + kContacts * sizeof(void*));
    EXPECT_LT((withContacts - empty) / kContacts, kKibibyte);
    for (int contact = 0; contact < kContacts; ++contact)
        client.receive(kNet, "<presence from='contact" + std::to_string(contact) +
                                 "@example.org/somewhere'><show>away</show><status>back at six</status></presence>");
    const std::size_t withResources = living().bytes;
    EXPECT_GT(withResources, withContacts + kContacts * sizeof(void*));
    EXPECT_LT((withResources - withContacts) / kContacts, kKibibyte);
}

}  // namespace
}  // namespace torture
