// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// For programs that have the real platform below the plugin, and with the client of the torture tests a reader of the
// fake one's world: that world has no part in what happens, and its time stands still.
#include "tests/support/fake_platform.h"

namespace harness {

FakeWorld& world() {
    static FakeWorld instance;
    return instance;
}

void FakeWorld::advance(std::int64_t) {}

}  // namespace harness
