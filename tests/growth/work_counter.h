// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Work as a number that is the same in each run, where a time would not be.
#pragma once

#include <cstdint>

/// Steps since the program began: basic blocks of all that is compiled with -fsanitize-coverage=trace-pc, and the bytes
/// that the C library searched, compared, moved and copied.
std::uint64_t workDone();
