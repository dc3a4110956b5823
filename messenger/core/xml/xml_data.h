// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// Character data out of XML, read as the plugin reads it: references are expanded, line ends are one kind. A reference
/// that is none, or to a character that XML does not allow, stays as it stands. Time grows with the length only.
namespace oku {

/// The value of an attribute, from what stands between its quotes. Each blank is a space.
std::string readValue(std::string_view raw);

/// The text of an element, from what stands between its tags: without comments and instructions, with CDATA sections
/// as they stand, and without the elements inside of it.
std::string readText(std::string_view content);

}  // namespace oku
