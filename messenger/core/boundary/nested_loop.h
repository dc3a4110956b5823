// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractEventDispatcher>
#include <QEventLoop>

namespace oku {

/// Runs the loop inside a call, which waits for what the loop brings. What was posted behind the event that led here is
/// done in it too: without a push, a loop over GLib leaves that until something else happens.
inline void runNested(QEventLoop& loop) {
    QAbstractEventDispatcher::instance()->wakeUp();
    loop.exec();
}

}  // namespace oku
