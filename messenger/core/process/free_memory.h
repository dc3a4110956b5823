// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

namespace oku {

/// Gives memory that was freed back to the system, where the C library would keep it. Takes a millisecond or two for
/// each ten megabytes; for when something large has passed.
void giveBackFreeMemory();

}  // namespace oku
