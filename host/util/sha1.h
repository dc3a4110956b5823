// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// SHA-1 (RFC 3174), for the digests that the protocol prescribes. It protects nothing here.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

/// 40 lower-case hexadecimal digits.
std::string lutSHA1(std::string_view bytes);

/// The 20 bytes themselves.
std::array<std::uint8_t, 20> lutSHA1Bin(std::string_view bytes);
