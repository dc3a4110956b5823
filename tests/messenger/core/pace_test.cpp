// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/pace.h"

#include <gtest/gtest.h>

namespace oku::test {
namespace {

TEST(PaceTest, KnowsNothingBeforeTheSecondSample) {
    Pace pace;
    EXPECT_EQ(pace.speed(), 0);
    EXPECT_EQ(pace.secondsLeft(100), -1);
    pace.add(1000, 50);
    EXPECT_EQ(pace.speed(), 0);
    EXPECT_EQ(pace.secondsLeft(100), -1);
}

TEST(PaceTest, TellsBytesASecondAndTheTimeLeft) {
    Pace pace;
    pace.add(0, 0);
    pace.add(500, 1000);
    EXPECT_EQ(pace.speed(), 2000);
    EXPECT_EQ(pace.secondsLeft(1000), 0);
    EXPECT_EQ(pace.secondsLeft(3000), 1);
    EXPECT_EQ(pace.secondsLeft(3001), 2) << "a second that has begun counts";
    EXPECT_EQ(pace.secondsLeft(-1), -1) << "the size is not known";
    EXPECT_EQ(pace.secondsLeft(999), -1) << "more came than was announced";
}

TEST(PaceTest, LooksAtTheLastSecondsOnly) {
    Pace pace;
    qint64 position = 0;
    for (qint64 time = 0; time <= 10'000; time += 500) pace.add(time, position += 50'000);
    EXPECT_EQ(pace.speed(), 100'000);
    for (qint64 time = 10'500; time <= 20'000; time += 500) pace.add(time, position += 500);
    EXPECT_EQ(pace.speed(), 1000);
    for (qint64 time = 20'500; time <= 30'000; time += 500) pace.add(time, position);
    EXPECT_EQ(pace.speed(), 0) << "it stands still";
    EXPECT_EQ(pace.secondsLeft(position + 1), -1);
}

TEST(PaceTest, CountsEachOfManySmallSteps) {
    Pace pace;
    for (qint64 time = 0; time <= 4000; ++time) pace.add(time, time * 7);
    EXPECT_EQ(pace.speed(), 7000);
    EXPECT_EQ(pace.secondsLeft(28'000), 0) << "the last one too";
}

TEST(PaceTest, BearsSamplesOfOneTimeAndThoseThatGoBack) {
    Pace pace;
    pace.add(1000, 10);
    pace.add(1000, 20);
    EXPECT_EQ(pace.speed(), 0);
    pace.add(2000, 5);
    EXPECT_EQ(pace.speed(), 0);
    EXPECT_EQ(pace.secondsLeft(100), -1);
}

}  // namespace
}  // namespace oku::test
