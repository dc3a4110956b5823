// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// MD5 (RFC 1321), for DIGEST-MD5 only.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace protolink {

struct MD5Context {
    std::array<std::uint32_t, 4> state{};
    std::uint64_t bitCount = 0;
    std::array<std::uint8_t, 64> block{};
};

using MD5Digest = std::array<std::uint8_t, 16>;

void MD5Init(MD5Context& context);
void MD5Update(MD5Context& context, std::string_view data);
MD5Digest MD5Final(MD5Context& context);

}  // namespace protolink
