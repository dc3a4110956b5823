// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the system tells wakes the messenger, once for each news.
#include "messenger/core/net/system_events.h"

#include <gtest/gtest.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include "tests/messenger/net/wait.h"

namespace oku::net::test {
namespace {

TEST(SystemEvents, EachNewsIsToldOnceAndReadAway) {
    const int news = ::eventfd(0, EFD_NONBLOCK);
    ASSERT_GE(news, 0);
    int told = 0;
    const auto listener = listenTo(news, [&told] { ++told; });
    for (int times = 1; times <= 3; ++times) {
        ASSERT_EQ(::eventfd_write(news, 1), 0);
        EXPECT_TRUE(waitFor([&] { return told == times; }));
        settle();
        EXPECT_EQ(told, times);
        eventfd_t rest = 0;
        EXPECT_EQ(::eventfd_read(news, &rest), -1) << "news that stay make a loop that never sleeps";
    }
}

TEST(SystemEvents, NothingIsToldAfterTheEnd) {
    const int news = ::eventfd(0, EFD_NONBLOCK);
    const int same = ::dup(news);
    int told = 0;
    listenTo(news, [&told] { ++told; }).reset();
    ASSERT_EQ(::eventfd_write(same, 1), 0);
    settle();
    EXPECT_EQ(told, 0);
    EXPECT_EQ(::close(same), 0);
}

TEST(SystemEvents, ThisSystemTells) {
    EXPECT_TRUE(listenToSystem([] {}));
}

}  // namespace
}  // namespace oku::net::test
