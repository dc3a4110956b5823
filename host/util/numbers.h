// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Reading numbers out of texts that others wrote.
#pragma once

#include <cstdint>
#include <string_view>

/// Leading blanks (space, tab, LF, CR, VT, FF), a sign, then decimal digits up to the first other character. A text
/// that holds no number gives 0, and what lies beyond the type gives the nearest value that it has.
std::int32_t parseInt32(std::u16string_view text);
std::uint32_t parseUInt32(std::u16string_view text);
std::int64_t parseInt64(std::u16string_view text);
