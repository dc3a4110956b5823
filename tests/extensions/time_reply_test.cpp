// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The two texts of a reply to a request for the time.
#include "extensions/time_reply.h"

#include <gtest/gtest.h>

using namespace protolink;

namespace {

TEST(TimeZone, TheOffsetHasTheSignOfTheBias) {
    EXPECT_EQ(timeZoneOffset(0), u"00:00");
    EXPECT_EQ(timeZoneOffset(60), u"01:00");
    EXPECT_EQ(timeZoneOffset(-60), u"-1:00");
    EXPECT_EQ(timeZoneOffset(300), u"05:00");
    EXPECT_EQ(timeZoneOffset(-330), u"-5:30");
    EXPECT_EQ(timeZoneOffset(210), u"03:30");
    EXPECT_EQ(timeZoneOffset(-720), u"-12:00");
    EXPECT_EQ(timeZoneOffset(720), u"12:00");
    EXPECT_EQ(timeZoneOffset(-840), u"-14:00");
}

TEST(TimeZone, LessThanAnHourLosesTheSign) {
    EXPECT_EQ(timeZoneOffset(30), u"00:30");
    EXPECT_EQ(timeZoneOffset(-30), u"00:30");
    EXPECT_EQ(timeZoneOffset(-5), u"00:05");
}

TEST(UtcTime, IsWrittenToTheSecond) {
    EXPECT_EQ(utcTime(0), u"1970-01-01T00:00:00Z");
    EXPECT_EQ(utcTime(1700000000), u"2023-11-14T22:13:20Z");
    EXPECT_EQ(utcTime(951825599), u"2000-02-29T11:59:59Z");
    EXPECT_EQ(utcTime(2147483648), u"2038-01-19T03:14:08Z");
    EXPECT_EQ(utcTime(253402300799), u"9999-12-31T23:59:59Z");
}

TEST(UtcTime, BeforeTheEpoch) { EXPECT_EQ(utcTime(-1), u"1969-12-31T23:59:59Z"); }

}  // namespace
