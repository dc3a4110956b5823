// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/net/wait.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace oku::net::test {

bool waitFor(const std::function<bool()>& condition, int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    QTimer waker;  // wakes the loop, so that the condition is looked at again
    waker.start(5);
    while (!condition()) {
        if (clock.elapsed() > milliseconds) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

void settle(int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    // Time alone is no turn of the loop: the process may have stood still for all of it.
    int turns = 0;
    waitFor([&] { return clock.elapsed() >= milliseconds && turns++ >= qBound(1, milliseconds / 5, 10); });
}

}  // namespace oku::net::test
