// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The status codes that the host and the plugin share, and their words on the wire.
#pragma once

#include <cstdint>
#include <string_view>

namespace protolink {

/// A status as the host numbers it. The host may hand over other numbers; they behave as `Online` does.
enum class Status : std::uint32_t {
    Online = 1,
    Chat = 2,
    Dnd = 3,
    Away = 4,
    Xa = 5,
    Invisible = 6,
    Offline = 7,
    Error = 8,
};

/// The word of a status; "available" for every code that has none of its own.
const char16_t* statusToName(Status status);

/// The status of a word, whatever its case. An unknown or empty word is `Online`.
Status statusFromName(std::u16string_view word);

}  // namespace protolink
