// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QByteArray>

namespace oku {

inline constexpr qsizetype kLargestPictureFile = 4 << 20;  ///< bytes
inline constexpr int kPictureSide = 192;                   ///< points of what is kept of a picture

/// Reads pictures of anybody's, apart from the program.
class PictureReader {
public:
    /// The picture as a PNG of at most kPictureSide by kPictureSide points; empty when there is none to be had.
    using Done = std::function<void(const QByteArray& png)>;

    virtual ~PictureReader() = default;
    /// Returns at once; `done` is called later, from the event loop, once. Not any more when the reader is gone.
    virtual void read(const QByteArray& content, Done done) = 0;
};

}  // namespace oku
