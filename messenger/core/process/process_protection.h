// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

namespace oku {

/// Keeps what the process knows to its user: files that it makes from now on are their owner's alone, also where a
/// library makes them, and a crash leaves no image of its memory behind. A limit on the size of files makes a write
/// fail instead of ending the program. For the start of a program.
void protectProcess();

}  // namespace oku
