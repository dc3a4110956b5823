// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <time.h>

#include <algorithm>
#include <ctime>

#include "platform/platform.h"

namespace {

/// The offset from UTC in seconds on a day of the present year.
long offsetInMonth(int month) {
    const std::time_t present = std::time(nullptr);
    std::tm day{};
    localtime_r(&present, &day);
    day.tm_mon = month;
    day.tm_mday = 1;
    day.tm_hour = 12;
    day.tm_isdst = -1;
    const std::time_t moment = std::mktime(&day);
    localtime_r(&moment, &day);
    return day.tm_gmtoff;
}

}  // namespace

namespace platform {

std::int64_t now() { return std::time(nullptr); }

std::uint32_t tickCount() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<std::uint32_t>(static_cast<std::uint64_t>(time.tv_sec) * 1000 +
                                      static_cast<std::uint64_t>(time.tv_nsec) / 1'000'000);
}

std::int32_t timeZoneBias() {
    tzset();
    // Daylight saving adds to the offset, in January on one half of the earth and in July on the other. A zone that
    // calls its winter the exception is told the same way.
    return static_cast<std::int32_t>(-std::min(offsetInMonth(0), offsetInMonth(6)) / 60);
}

}  // namespace platform
