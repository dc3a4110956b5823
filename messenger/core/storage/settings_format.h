// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVariant>

/// The form of a file of settings: `key = 5` for integers, `key = "text"` for texts (escapes \" \\ \n \r \t \0), a line
/// each, UTF-8; lines that begin with # are comments.
namespace oku {

/// The content of a file, and back: what its readable lines say. `ok` tells whether all of them are.
QByteArray settingsToBytes(const QMap<QString, QVariant>& values);
QMap<QString, QVariant> settingsFromBytes(const QByteArray& bytes, bool& ok);

/// Whether a line with this key would be read back as it was written: a key is not empty, begins with no # and no
/// blank, ends with no blank, and holds no = and no end of a line.
bool canBeSettingKey(const QString& key);
/// The sentence that tells a person so.
QString unusableSettingKey(const QString& key);

}  // namespace oku
