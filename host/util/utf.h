// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Text conversion between the wire (UTF-8) and the inside of the plugin (UTF-16).
#pragma once

#include <string>
#include <string_view>

/// UTF-16 to UTF-8. A lone surrogate becomes U+FFFD; nothing else can go wrong.
std::string wtou(std::u16string_view text);

/// UTF-8 to UTF-16. What is no UTF-8 (broken or cut sequences, overlong forms, surrogates, code points over U+10FFFF)
/// becomes one U+FFFD for each maximal ill-formed subpart, as Unicode recommends. NUL is a character like any other.
std::u16string utow(std::string_view text);
