// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "router/md5.h"

#include <algorithm>
#include <bit>

namespace protolink {

namespace {

constexpr std::array<std::uint32_t, 64> kSines{
    0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
    0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
    0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
    0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
    0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
    0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
    0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
    0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391};

/// Rotations of the four rounds, four for each.
constexpr std::array<int, 16> kRotations{7, 12, 17, 22, 5, 9, 14, 20, 4, 11, 16, 23, 6, 10, 15, 21};

std::uint32_t mix(std::size_t round, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    switch (round) {
        case 0:
            return (b & c) | (~b & d);
        case 1:
            return (b & d) | (c & ~d);
        case 2:
            return b ^ c ^ d;
        default:
            return c ^ (b | ~d);
    }
}

std::size_t wordOf(std::size_t round, std::size_t step) {
    constexpr std::array<std::size_t, 4> kFactor{1, 5, 3, 7};
    constexpr std::array<std::size_t, 4> kOffset{0, 1, 5, 0};
    return (kFactor[round] * step + kOffset[round]) % 16;
}

std::uint32_t littleEndianWord(const std::uint8_t* at) {
    return static_cast<std::uint32_t>(at[0]) | static_cast<std::uint32_t>(at[1]) << 8 |
           static_cast<std::uint32_t>(at[2]) << 16 | static_cast<std::uint32_t>(at[3]) << 24;
}

void transform(MD5Context& context) {
    auto [a, b, c, d] = context.state;
    for (std::size_t step = 0; step < 64; ++step) {
        const std::size_t round = step / 16;
        const std::uint32_t word = littleEndianWord(context.block.data() + 4 * wordOf(round, step));
        const std::uint32_t sum = a + mix(round, b, c, d) + kSines[step] + word;
        a = d;
        d = c;
        c = b;
        b += std::rotl(sum, kRotations[round * 4 + step % 4]);
    }
    context.state[0] += a;
    context.state[1] += b;
    context.state[2] += c;
    context.state[3] += d;
}

}  // namespace

void MD5Init(MD5Context& context) {
    context = MD5Context{};
    context.state = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
}

void MD5Update(MD5Context& context, std::string_view data) {
    std::size_t used = context.bitCount / 8 % 64;
    context.bitCount += static_cast<std::uint64_t>(data.size()) * 8;
    while (!data.empty()) {
        const std::size_t taken = std::min(data.size(), context.block.size() - used);
        std::copy_n(data.begin(), taken, context.block.begin() + static_cast<std::ptrdiff_t>(used));
        data.remove_prefix(taken);
        used += taken;
        if (used < context.block.size()) return;
        transform(context);
        used = 0;
    }
}

MD5Digest MD5Final(MD5Context& context) {
    std::array<char, 8> length;
    for (std::size_t i = 0; i < length.size(); ++i) length[i] = static_cast<char>(context.bitCount >> (8 * i));
    const std::size_t used = context.bitCount / 8 % 64;
    static constexpr std::array<char, 64> kPadding{static_cast<char>(0x80)};
    MD5Update(context, {kPadding.data(), (used < 56 ? 56 : 120) - used});
    MD5Update(context, {length.data(), length.size()});
    MD5Digest digest;
    for (std::size_t i = 0; i < digest.size(); ++i)
        digest[i] = static_cast<std::uint8_t>(context.state[i / 4] >> (8 * (i % 4)));
    return digest;
}

}  // namespace protolink
