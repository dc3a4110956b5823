// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace oku::net::test {

/** Runs the event loop until the condition holds. The limit is far beyond what anything here takes, so that only a
 * broken program reaches it, not a slow machine. */
bool waitFor(const std::function<bool()>& condition, int milliseconds = 60'000);

/** Runs the event loop for a while, to see that nothing happens. */
void settle(int milliseconds = 60);

}  // namespace oku::net::test
