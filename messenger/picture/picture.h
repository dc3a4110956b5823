// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace oku::picture {

inline constexpr int kMostPoints = 4096;    ///< of width and of height
inline constexpr int kMostBytes = 4 << 20;  ///< of a file
inline constexpr int kLargestSide = 512;    ///< of what comes out

/// Has Qt load what it needs for each format, while files can still be opened.
void loadFormats();

/// The picture as a PNG of at most `side` by `side` points, its sides in proportion, with nothing in it but the
/// points; a smaller one keeps its size, and one that was made here comes out as it went in. Of a moving picture the
/// first frame. Empty for what is no PNG, JPEG, GIF, WebP or BMP of at most kMostPoints and kMostBytes.
QByteArray smallPng(const QByteArray& content, int side);

}  // namespace oku::picture
