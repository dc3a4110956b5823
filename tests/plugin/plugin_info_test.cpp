// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the plugin tells of itself before it is loaded.
#include <gtest/gtest.h>

#include <cstring>

#include "plugin/module.h"
#include "tests/support/records.h"

namespace {

TEST(PluginInfo, IsTheSameRecordAtAnyTime) {
    const auto* info = queryPlugInfo();
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(queryPlugInfo(), info);
}

TEST(PluginInfo, HoldsItsFieldsAtTheirPlaces) {
    const auto* info = queryPlugInfo();
    EXPECT_EQ(harness::peek<std::uint32_t>(info, 0), 120u);
    EXPECT_EQ(harness::copyText(harness::peek<const void*>(info, 8)), "Protokół XMPP");
    EXPECT_EQ(harness::copyText(harness::peek<const void*>(info, 16)), "Obsługa protokołu XMPP dla komunikatora OKU");
    for (const std::size_t offset : {24u, 32u, 40u, 48u, 56u}) {
        EXPECT_NE(harness::peek<const void*>(info, offset), nullptr) << offset;
    }
    const std::uint32_t numbers[] = {1200, 131072, 3999007, 7, 1};
    for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(harness::peek<std::uint32_t>(info, 64 + 4 * i), numbers[i]) << i;
    for (std::size_t i = 84; i < 120; ++i) EXPECT_EQ(harness::peek<char>(info, i), 0) << i;
    EXPECT_EQ(harness::peek<std::uint32_t>(info, 4), 0u);
}

}  // namespace
