// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/growing_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <string>

namespace {

using util::GrowingText;

TEST(GrowingText, IsEmptyAtFirst) {
    const GrowingText text;
    EXPECT_EQ(text.size(), 0u);
    EXPECT_EQ(text.view(), "");
}

TEST(GrowingText, HoldsWhatWasAppendedAndANulBehindIt) {
    GrowingText text;
    std::string expected;
    for (int i = 0; i < 20'000; ++i) {
        const std::string piece = std::to_string(i);
        text.append(piece);
        expected += piece;
    }
    EXPECT_EQ(text.view(), expected);
    EXPECT_STREQ(text.data(), expected.c_str());
}

TEST(GrowingText, GetsANulFromAnEmptyPiece) {
    GrowingText text;
    text.append("");
    EXPECT_STREQ(text.data(), "");
}

TEST(GrowingText, TakesAByteAtItsBeginInsideAndAtItsEnd) {
    GrowingText text;
    text.append("bd");
    text.insert(0, 'a');
    text.insert(2, 'c');
    text.insert(4, 'e');
    EXPECT_STREQ(text.data(), "abcde");
}

TEST(GrowingText, IsShortened) {
    GrowingText text;
    text.append("abc");
    text.truncate(1);
    EXPECT_STREQ(text.data(), "a");
    text.append("d");
    EXPECT_STREQ(text.data(), "ad");
}

TEST(GrowingText, IsEmptyOnceMoved) {
    GrowingText text;
    text.append("abc");
    GrowingText other(std::move(text));
    EXPECT_EQ(other.view(), "abc");
    text = GrowingText();
    EXPECT_EQ(text.view(), "");
    text.append("d");
    other = std::move(text);
    EXPECT_STREQ(other.data(), "d");
}

TEST(GrowingText, RefusesWhatNoMemoryHasRoomForAndKeepsWhatItHas) {
    GrowingText text;
    text.append("abc");
    EXPECT_THROW(text.append({text.data(), PTRDIFF_MAX}), std::bad_alloc);
    EXPECT_STREQ(text.data(), "abc");
}

}  // namespace
