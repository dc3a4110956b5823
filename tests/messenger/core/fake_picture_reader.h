// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <utility>

#include "messenger/core/cards/picture_reader.h"

namespace oku::test {

/// Reads what a test says that it reads, when the test says so.
class FakePictureReader final : public PictureReader {
public:
    void read(const QByteArray& content, Done done) override { waiting.emplace_back(content, std::move(done)); }

    /// The oldest one is read: `png` is what comes of it, empty for no picture.
    void answer(const QByteArray& png) {
        const Done done = std::move(waiting.front().second);
        waiting.pop_front();
        done(png);
    }

    std::deque<std::pair<QByteArray, Done>> waiting;
};

}  // namespace oku::test
