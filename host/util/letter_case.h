// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Lower case, the same on every target and in every locale.
#pragma once

#include <string>
#include <string_view>

/// Each unit by Unicode's simple lower-case mapping of the basic multilingual plane; the length stays. Surrogates stay
/// as they are.
std::u16string lowerCase(std::u16string_view text);
/// The same in place.
void makeLowerCase(std::u16string& text);
