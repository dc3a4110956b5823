// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Memory for texts of several megabytes. The platform implements it.
#pragma once

#include <cstddef>

namespace util {

/// Tells the system that all of this memory is about to be written, so that it comes in few large pages instead of one
/// small page at a time. It is only advice: a system that cannot follow it goes on as ever, and so does memory that is
/// too small for it to matter.
void expectToFill(void* memory, std::size_t bytes);

}  // namespace util
