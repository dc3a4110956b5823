// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The time of a delayed message in the form of XEP-0091.
#include "im/legacy_stamp.h"

#include <gtest/gtest.h>

using namespace protolink;

namespace {

TEST(LegacyStamp, OnlyItsOwnLengthCounts) {
    EXPECT_TRUE(isLegacyStamp(u"20240102T03:04:05"));
    EXPECT_FALSE(isLegacyStamp(u""));
    EXPECT_FALSE(isLegacyStamp(u"20240102T03:04:5"));
    EXPECT_FALSE(isLegacyStamp(u"20240102T03:04:05Z"));
    EXPECT_FALSE(isLegacyStamp(u"2024-01-02T03:04:05Z"));
}

TEST(LegacyStamp, IsReadAsUtc) {
    EXPECT_EQ(legacyStampTime(u"19700101T00:00:00"), 0);
    EXPECT_EQ(legacyStampTime(u"20240102T03:04:05"), 1704164645);
    EXPECT_EQ(legacyStampTime(u"20000229T12:00:00"), 951825600);
    EXPECT_EQ(legacyStampTime(u"20380119T03:14:08"), 2147483648);
    EXPECT_EQ(legacyStampTime(u"99991231T23:59:59"), 253402300799);
}

TEST(LegacyStamp, FieldsStandAtFixedPositionsWhateverStandsBetween) {
    EXPECT_EQ(legacyStampTime(u"20240102 03.04.05"), 1704164645);
    EXPECT_EQ(legacyStampTime(u"20240102903904905"), 1704164645);
}

TEST(LegacyStamp, TheYear1900IsTheFirstThatCounts) {
    EXPECT_EQ(legacyStampTime(u"19000101T00:00:00"), -2208988800);
    EXPECT_EQ(legacyStampTime(u"18991231T23:59:59"), 0);
    EXPECT_EQ(legacyStampTime(u"00000000T00:00:00"), 0);
}

TEST(LegacyStamp, AYearThatIsNoNumberGivesNoTime) {
    EXPECT_EQ(legacyStampTime(u"yesterday evening"), 0);
    EXPECT_EQ(legacyStampTime(u"20x40102T03:04:05"), 0);
    EXPECT_EQ(legacyStampTime(std::u16string_view(u"\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 17)), 0);
}

TEST(LegacyStamp, ATimeOfDayThatIsNoNumberCountsAsZero) {
    EXPECT_EQ(legacyStampTime(u"20240102Txx:yy:zz"), 1704153600);
    EXPECT_EQ(legacyStampTime(u"20240102T03:--:05"), 1704153600 + 3 * 3600 + 5);
}

TEST(LegacyStamp, AMonthOrDayThatIsNoNumberCountsAsZeroAndCarriesBack) {
    EXPECT_EQ(legacyStampTime(u"2024xx02T03:04:05"), 1701486245) << "2 December 2023";
    EXPECT_EQ(legacyStampTime(u"202401xxT03:04:05"), 1703991845) << "31 December 2023";
}

}  // namespace
