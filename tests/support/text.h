// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Text of the harness: conversions and the escapes that transcripts use. It shares no code with the plugin, so that a
// mistake there cannot hide itself here.
#pragma once

#include <string>
#include <string_view>

namespace harness {

/// UTF-16 to UTF-8; a lone surrogate becomes U+FFFD.
std::string toUtf8(std::u16string_view text);
/// UTF-8 to UTF-16; a byte that does not belong becomes U+FFFD.
std::u16string toUtf16(std::string_view text);

/// Text with `\r \n \t \0 \\ \" \{` and `\xNN` for other control characters; `quoted` adds the quotation marks.
std::string escape(std::string_view text);
std::string quoted(std::string_view text);

/// What one escape sequence at `text[at]` (a backslash) stands for; `at` is moved behind it. An unknown one throws
/// std::invalid_argument.
char unescapeAt(std::string_view text, std::size_t& at);
/// A whole text with its escapes resolved.
std::string unescape(std::string_view text);

std::string base64Encode(std::string_view bytes);
/// The bytes of a base64 text; an empty text when it is not base64.
std::string base64Decode(std::string_view text);

std::string_view trim(std::string_view text);
bool startsWith(std::string_view text, std::string_view prefix);
std::string replaceAll(std::string text, std::string_view from, std::string_view to);

}  // namespace harness
