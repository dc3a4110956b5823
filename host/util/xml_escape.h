// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Escaping text for XML. Inside of host/util only.
#pragma once

#include <string>
#include <string_view>

namespace util {

/// Which white space becomes a character reference: what a reader would otherwise change.
enum class KeepBlanks {
    AsTheyAre,
    /// Character data: a reader turns CR into LF.
    InText,
    /// Attribute values: a reader turns tab, LF and CR into blanks.
    InValue,
};

/// Appends plain text as XML: `& < > " '` become entities, what XML 1.0 does not allow is left out.
void appendEscaped(std::u16string& out, std::u16string_view text, KeepBlanks blanks);

/// Appends ` name="value"`.
void appendAttribute(std::u16string& out, std::u16string_view name, std::u16string_view value, KeepBlanks blanks);

}  // namespace util
