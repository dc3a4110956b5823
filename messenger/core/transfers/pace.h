// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <QtGlobal>

namespace oku {

/// How fast bytes move, over the last seconds.
class Pace {
public:
    /// So many bytes had come by this time (milliseconds of any clock that does not run backwards).
    void add(qint64 time, qint64 position);
    /// Bytes a second; 0 while that is not known.
    [[nodiscard]] qint64 speed() const;
    /// Seconds until all have come at this speed; -1 while that is not known.
    [[nodiscard]] qint64 secondsLeft(qint64 size) const;

private:
    struct Sample {
        qint64 time;
        qint64 position;
    };
    std::deque<Sample> samples_;
};

}  // namespace oku
