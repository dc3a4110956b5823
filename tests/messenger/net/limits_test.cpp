// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The times and sizes that a person lives with; elsewhere tests make them short.
#include <gtest/gtest.h>

#include "messenger/core/net/socket_settings.h"
#include "messenger/core/options.h"

namespace oku::net::test {
namespace {

constexpr qsizetype kKibibyte = 1024;

TEST(Limits, AreThoseThatThePluginNeeds) {
    const SocketSettings settings;
    EXPECT_EQ(settings.closeGrace, 5'000);
    EXPECT_EQ(settings.paceAfter, 3);
    EXPECT_EQ(settings.clearPiece, 256 * kKibibyte);
    EXPECT_EQ(settings.compressedPiece, kKibibyte);
    EXPECT_EQ(settings.holdBytes, 64 * kKibibyte * kKibibyte);
    EXPECT_EQ(settings.holdTime, 120'000);
}

TEST(Limits, FindADeadLineInAboutHalfAMinute) {
    const SocketSettings settings;
    EXPECT_EQ(settings.keepaliveIdle + settings.keepaliveCount * settings.keepaliveInterval, 30'000);
    EXPECT_EQ(settings.userTimeout, 30'000);
}

TEST(Limits, OfAMessengerAsItIsStarted) {
    const MessengerOptions options;
    EXPECT_EQ(options.loginSeconds, 60);
    EXPECT_EQ(options.typingSeconds, 30);
    EXPECT_TRUE(options.stanzaGuard);
}

}  // namespace
}  // namespace oku::net::test
