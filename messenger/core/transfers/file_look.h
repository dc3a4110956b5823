// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace oku {

/// What stands at a path, for a program that is to open it.
struct FileLook {
    QString reason;        ///< why it cannot be opened; empty where it can
    bool program = false;  ///< by its mode, its name or its first bytes it could be run
};

/// Looks at a file itself: a link is not followed, and only a regular file can be opened.
FileLook lookAtFile(const QString& path);

}  // namespace oku
