// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/identifiers.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/support/fake_platform.h"

using namespace protolink;

namespace {

class Identifiers : public testing::Test {
protected:
    Identifiers() { harness::world() = harness::FakeWorld(); }
    std::u16string idOf(std::uint32_t first, std::uint32_t second) {
        harness::world().randoms = {first, second};
        return generateId();
    }
};

TEST_F(Identifiers, TicksModuloTheRandomValueTimesTheirSum) {
    EXPECT_EQ(idOf(8, 9), u"dJBidHfqo/AMIMI=");  // 1000 % 9 * (9 + 1000)
    EXPECT_EQ(idOf(7, 9), u"Bf5AV1MWbxJVWec=");  // 1000 % 8 is 0
}

TEST_F(Identifiers, LargeRandomValueLeavesTheTicks) {
    EXPECT_EQ(idOf(0xFFFFFFFF, 3), u"uEz51BxwlqTiZeg=");  // 1000 * (3 + 1000)
}

TEST_F(Identifiers, StanzaIdHas16CharactersTheLastAnEqualsSign) {
    for (int i = 0; i < 100; ++i) {
        const auto id = generateId();
        EXPECT_EQ(id.size(), 16u);
        EXPECT_EQ(id.back(), u'=');
    }
}

TEST_F(Identifiers, OneMillisecondGivesDifferentIdsThroughTheRandomValues) {
    std::set<std::u16string> ids;
    for (int i = 0; i < 1000; ++i) ids.insert(generateId());
    EXPECT_EQ(ids.size(), 1000u);
}

TEST_F(Identifiers, SameRandomValuesInOneMillisecondGiveTheSameId) { EXPECT_EQ(idOf(11, 12), idOf(11, 12)); }

TEST_F(Identifiers, UuidIsMadeOfFourRandomValues) {
    harness::world().randoms = {0x33221100, 0x77665544, 0xBBAA9988, 0xFFEEDDCC};
    EXPECT_EQ(lutGenerateUUID(), u"00112233-4455-4677-8899-aabbccddeeff");
}

TEST_F(Identifiers, UuidIsARandomOne) {
    const auto uuid = lutGenerateUUID();
    ASSERT_EQ(uuid.size(), 36u);
    EXPECT_EQ(uuid[14], u'4');
    EXPECT_NE(std::u16string(u"89ab").find(uuid[19]), std::u16string::npos);
    EXPECT_NE(uuid, lutGenerateUUID());
}

}  // namespace
