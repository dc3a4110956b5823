// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The time of a delayed message in the form of XEP-0091: "CCYYMMDDThh:mm:ss", in UTC.
#pragma once

#include <cstdint>
#include <string_view>

namespace protolink {

/// True for a stamp of that form's length. Stamps of XEP-0203 are longer and do not count.
bool isLegacyStamp(std::u16string_view stamp);

/// Seconds since the epoch, 0 for a year before 1900. A field that is no number counts as 0.
std::int64_t legacyStampTime(std::u16string_view stamp);

}  // namespace protolink
