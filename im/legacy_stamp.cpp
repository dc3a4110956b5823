// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "im/legacy_stamp.h"

#include <chrono>

#include "host/util/numbers.h"

namespace protolink {

namespace {

constexpr std::size_t kStampLength = 17;
constexpr int kEarliestYear = 1900;

}  // namespace

bool isLegacyStamp(std::u16string_view stamp) { return stamp.size() == kStampLength; }

std::int64_t legacyStampTime(std::u16string_view stamp) {
    using namespace std::chrono;
    const auto field = [stamp](std::size_t at, std::size_t digits) { return parseInt32(stamp.substr(at, digits)); };
    const std::int32_t stampYear = field(0, 4);
    if (stampYear < kEarliestYear) return 0;
    // Fields out of their range carry over, as a calendar computation does.
    const year_month month = year{stampYear} / January + months{field(4, 2) - 1};
    const sys_days day = sys_days{month / 1} + days{field(6, 2) - 1};
    return duration_cast<seconds>(
               (day + hours{field(9, 2)} + minutes{field(12, 2)} + seconds{field(15, 2)}).time_since_epoch())
        .count();
}

}  // namespace protolink
