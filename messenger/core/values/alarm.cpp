// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/values/alarm.h"

#include <QTimer>
#include <utility>

namespace oku {

std::unique_ptr<QObject> systemAlarm(int milliseconds, std::function<void()> ring) {
    auto timer = std::make_unique<QTimer>();
    timer->setSingleShot(true);
    QObject::connect(timer.get(), &QTimer::timeout, timer.get(), std::move(ring));
    timer->start(milliseconds);
    return timer;
}

}  // namespace oku
