// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/status.h"

#include <gtest/gtest.h>

#include <string>

using namespace protolink;

namespace {

TEST(Status, HasItsWord) {
    const std::u16string words[] = {u"available", u"available", u"chat",        u"dnd",       u"away",
                                    u"xa",        u"invisible", u"unavailable", u"available", u"available"};
    for (std::uint32_t code = 0; code < 10; ++code)
        EXPECT_EQ(statusToName(static_cast<Status>(code)), words[code]) << code;
    EXPECT_EQ(statusToName(static_cast<Status>(0xFFFFFFFF)), std::u16string(u"available"));
}

TEST(Status, ComesFromItsWordInAnyCase) {
    EXPECT_EQ(statusFromName(u"available"), Status::Online);
    EXPECT_EQ(statusFromName(u"Unavailable"), Status::Offline);
    EXPECT_EQ(statusFromName(u"CHAT"), Status::Chat);
    EXPECT_EQ(statusFromName(u"away"), Status::Away);
    EXPECT_EQ(statusFromName(u"Xa"), Status::Xa);
    EXPECT_EQ(statusFromName(u"DND"), Status::Dnd);
    EXPECT_EQ(statusFromName(u"invisible"), Status::Invisible);
    EXPECT_EQ(statusFromName(u"error"), Status::Error);
}

TEST(Status, OfAnyOtherWordIsOnline) {
    EXPECT_EQ(statusFromName(u"Online"), Status::Online);
    EXPECT_EQ(statusFromName(u""), Status::Online);
    EXPECT_EQ(statusFromName(u"away "), Status::Online);
}

}  // namespace
