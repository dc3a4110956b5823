// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/pace.h"

namespace oku {
namespace {

// Milliseconds.
constexpr qint64 kLookedBack = 5'000;
constexpr qint64 kBetweenSamples = 200;

}  // namespace

void Pace::add(qint64 time, qint64 position) {
    // The last sample moves until it is old enough to stay.
    const std::size_t count = samples_.size();
    if (count >= 2 && samples_[count - 1].time - samples_[count - 2].time < kBetweenSamples) samples_.pop_back();
    samples_.push_back({time, position});
    while (samples_.size() > 2 && samples_[1].time <= time - kLookedBack) samples_.pop_front();
}

qint64 Pace::speed() const {
    if (samples_.size() < 2) return 0;
    const qint64 time = samples_.back().time - samples_.front().time;
    const qint64 bytes = samples_.back().position - samples_.front().position;
    return time > 0 && bytes > 0 ? static_cast<qint64>(static_cast<double>(bytes) * 1000.0 / static_cast<double>(time))
                                 : 0;
}

qint64 Pace::secondsLeft(qint64 size) const {
    const qint64 now = speed();
    if (now <= 0 || size < samples_.back().position) return -1;
    return (size - samples_.back().position + now - 1) / now;
}

}  // namespace oku
