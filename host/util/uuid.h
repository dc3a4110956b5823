// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// UUIDs of version 4 (RFC 4122, section 4.4).
#pragma once

#include <cstdint>
#include <span>
#include <string>

/// The text of a random UUID, 36 lower-case characters, from 16 random bytes that the caller got.
std::u16string uuidFromBytes(std::span<const std::uint8_t, 16> random);
