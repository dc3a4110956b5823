// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <QObject>

namespace oku {

/// Rings once after this time, unless what it returned is gone by then. A test puts a clock of its own in its place.
using SetAlarm = std::function<std::unique_ptr<QObject>(int milliseconds, std::function<void()> ring)>;

/// The system's.
std::unique_ptr<QObject> systemAlarm(int milliseconds, std::function<void()> ring);

}  // namespace oku
