// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/large_memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

TEST(LargeMemory, KeepsWhatIsInItWhereverItBeginsAndEnds) {
    constexpr std::size_t kSize = std::size_t{9} << 20;
    std::string memory(kSize, 'a');
    for (const std::size_t begin : {0, 1, 4095, 4096}) {
        for (const std::size_t length : {std::size_t{0}, std::size_t{1}, kSize / 2, kSize - begin}) {
            util::expectToFill(memory.data() + begin, length);
            EXPECT_EQ(std::count(memory.begin(), memory.end(), 'a'), static_cast<std::ptrdiff_t>(kSize));
        }
    }
}

}  // namespace
