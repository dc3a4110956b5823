// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace oku {

enum class SymbolicLinks { followed, refused };

/// The content of a plain file of at most kLargestPictureFile; empty for anything else, and for what cannot be read.
/// Never waits for a file that is a pipe or a device.
QByteArray readPictureFile(const QString& path, SymbolicLinks links);

/// Whether it begins as a PNG of at most kPictureSide by kPictureSide points does. What follows is not looked at.
bool isSmallPng(const QByteArray& content);

/// SHA-1, as 40 hexadecimal digits in lower case: how pictures are named among clients.
QString pictureHash(const QByteArray& content);

}  // namespace oku
