// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/sha1.h"

#include <bit>
#include <cstring>

namespace {

using State = std::array<std::uint32_t, 5>;

constexpr std::size_t kBlock = 64;
constexpr State kStart = {0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0};

std::uint32_t readBigEndian(const unsigned char* from) {
    return static_cast<std::uint32_t>(from[0]) << 24 | static_cast<std::uint32_t>(from[1]) << 16 |
           static_cast<std::uint32_t>(from[2]) << 8 | from[3];
}

using Words = std::array<std::uint32_t, 80>;

/// The function and the constant of twenty rounds in a row (RFC 3174, section 5), where kQuarter counts from 0.
template <unsigned kQuarter>
std::uint32_t mix(std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    if constexpr (kQuarter == 0) return (d ^ (b & (c ^ d))) + 0x5A827999;
    if constexpr (kQuarter == 1) return (b ^ c ^ d) + 0x6ED9EBA1;
    if constexpr (kQuarter == 2) return ((b & c) | (d & (b | c))) + 0x8F1BBCDC;
    if constexpr (kQuarter == 3) return (b ^ c ^ d) + 0xCA62C1D6;
}

/// One round, which changes two of the five numbers; the caller turns the others instead of moving them.
template <unsigned kQuarter>
void turn(std::uint32_t a, std::uint32_t& b, std::uint32_t c, std::uint32_t d, std::uint32_t& e, std::uint32_t word) {
    e += std::rotl(a, 5) + mix<kQuarter>(b, c, d) + word;
    b = std::rotl(b, 30);
}

template <unsigned kQuarter>
void addQuarter(State& state, const Words& words) {
    auto& [a, b, c, d, e] = state;
    for (const std::uint32_t* word = words.data() + 20 * kQuarter; word != words.data() + 20 * (kQuarter + 1);
         word += 5) {
        turn<kQuarter>(a, b, c, d, e, word[0]);
        turn<kQuarter>(e, a, b, c, d, word[1]);
        turn<kQuarter>(d, e, a, b, c, word[2]);
        turn<kQuarter>(c, d, e, a, b, word[3]);
        turn<kQuarter>(b, c, d, e, a, word[4]);
    }
}

void addBlock(State& state, const unsigned char* block) {
    Words words;
    for (unsigned i = 0; i < 16; ++i) words[i] = readBigEndian(block + 4 * i);
    for (unsigned i = 16; i < 80; ++i)
        words[i] = std::rotl(words[i - 3] ^ words[i - 8] ^ words[i - 14] ^ words[i - 16], 1);

    State next = state;
    addQuarter<0>(next, words);
    addQuarter<1>(next, words);
    addQuarter<2>(next, words);
    addQuarter<3>(next, words);
    for (std::size_t i = 0; i < state.size(); ++i) state[i] += next[i];
}

}  // namespace

std::array<std::uint8_t, 20> lutSHA1Bin(std::string_view bytes) {
    State state = kStart;
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    std::size_t left = bytes.size();
    for (; left >= kBlock; left -= kBlock, data += kBlock) addBlock(state, data);

    // The rest, a one bit, zeros, and the length in bits as the last eight bytes of a block.
    std::array<unsigned char, 2 * kBlock> tail{};
    if (left) std::memcpy(tail.data(), data, left);
    tail[left] = 0x80;
    const std::size_t size = left + 9 <= kBlock ? kBlock : 2 * kBlock;
    const std::uint64_t bits = static_cast<std::uint64_t>(bytes.size()) * 8;
    for (std::size_t i = 0; i < 8; ++i) tail[size - 1 - i] = static_cast<unsigned char>(bits >> (8 * i));
    for (std::size_t at = 0; at < size; at += kBlock) addBlock(state, tail.data() + at);

    std::array<std::uint8_t, 20> digest;
    for (std::size_t i = 0; i < digest.size(); ++i)
        digest[i] = static_cast<std::uint8_t>(state[i / 4] >> (24 - 8 * (i % 4)));
    return digest;
}

std::string lutSHA1(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string result;
    for (const std::uint8_t byte : lutSHA1Bin(bytes)) {
        result += kDigits[byte >> 4];
        result += kDigits[byte & 15];
    }
    return result;
}
