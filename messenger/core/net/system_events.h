// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <QObject>

namespace oku::net {

/// Calls `changed` from the event loop when the machine was asleep, its clock was set, or its interfaces or addresses
/// changed, as long as the object lives; the call must not end it. Null where the system does not tell.
std::unique_ptr<QObject> listenToSystem(std::function<void()> changed);

/// The same for any descriptor: calls `changed` whenever there is something to read from it, and reads it away. Owns
/// the descriptor.
std::unique_ptr<QObject> listenTo(int descriptor, std::function<void()> changed);

}  // namespace oku::net
