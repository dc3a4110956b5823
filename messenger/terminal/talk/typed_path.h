// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// Paths of files as they are typed.
#pragma once

#include <QString>
#include <QStringList>

namespace oku::terminal {

/// The whole path of one that may begin where the program was started, or in the home directory (`~`).
QString wholePath(const QString& startDirectory, const QString& path);

/// The paths that one may go on to, as it was typed: folders end in the separator. Names with a dot in front are for
/// whoever types it.
QStringList pathsFrom(const QString& startDirectory, const QString& typed);

}  // namespace oku::terminal
