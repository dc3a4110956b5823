// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// From the bytes of an XML text to the characters that they stand for. Inside of host/util only.
#pragma once

#include <string>
#include <string_view>

namespace util {

/// Where character data stands decides what is done to its white space and its references.
enum class TextPlace { Text, Value, CData };

/// Appends what `raw` stands for to `out`; null drops it. Up to `readable`, which lies behind `raw`, memory may be
/// read. False when it makes the text bad: a control character, a reference that is none, a `<` in a value.
bool appendXmlText(std::string_view raw, const char* readable, TextPlace place, std::u16string* out);

}  // namespace util
