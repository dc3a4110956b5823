// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Base64 (RFC 4648, section 4).
#pragma once

#include <string>
#include <string_view>

/// With padding, without line breaks.
std::string lutBase64Encode(std::string_view bytes);

/// White space is passed over; reading stops at padding or at the first character outside the alphabet, and bits that
/// make up no whole byte are dropped. Never fails.
std::string lutBase64Decode(std::string_view text);
