// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/base64.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t kOther = 0xFF;
constexpr std::uint8_t kBlank = 0xFE;

constexpr auto kValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(kOther);
    for (std::size_t i = 0; i < kAlphabet.size(); ++i)
        values[static_cast<unsigned char>(kAlphabet[i])] = static_cast<std::uint8_t>(i);
    for (const unsigned char blank : {' ', '\t', '\n', '\v', '\f', '\r'}) values[blank] = kBlank;
    return values;
}();

std::uint8_t valueOf(char letter) { return kValues[static_cast<unsigned char>(letter)]; }

/// The two letters of each twelve bits.
constexpr auto kPairs = [] {
    std::array<std::array<char, 2>, 4096> pairs{};
    for (std::size_t bits = 0; bits < pairs.size(); ++bits) pairs[bits] = {kAlphabet[bits >> 6], kAlphabet[bits & 63]};
    return pairs;
}();

/// Up to three bytes as the upper bits of 24.
std::uint32_t group(std::string_view bytes) {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < 3; ++i)
        bits = bits << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u);
    return bits;
}

char* putPair(char* out, std::uint32_t bits) {
    const std::array<char, 2>& pair = kPairs[bits & 4095];
    return std::copy(pair.begin(), pair.end(), out);
}

/// Takes four letters of the alphabet at a time, as long as such come.
void takeGroups(std::string_view& text, char*& out) {
    constexpr std::uint32_t kNoLetter = 0xC0;
    for (; text.size() >= 4; text.remove_prefix(4)) {
        const std::uint32_t a = valueOf(text[0]), b = valueOf(text[1]), c = valueOf(text[2]), d = valueOf(text[3]);
        if ((a | b | c | d) & kNoLetter) return;
        const std::uint32_t bits = a << 18 | b << 12 | c << 6 | d;
        *out++ = static_cast<char>(bits >> 16);
        *out++ = static_cast<char>(bits >> 8);
        *out++ = static_cast<char>(bits);
    }
}

}  // namespace

std::string lutBase64Encode(std::string_view bytes) {
    std::string result((bytes.size() + 2) / 3 * 4, '=');
    char* out = result.data();
    for (; bytes.size() >= 3; bytes.remove_prefix(3)) {
        const std::uint32_t bits = group(bytes.substr(0, 3));
        out = putPair(putPair(out, bits >> 12), bits);
    }
    if (bytes.empty()) return result;
    const std::uint32_t bits = group(bytes);
    out = putPair(out, bits >> 12);
    if (bytes.size() == 2) *out = kAlphabet[bits >> 6 & 63];
    return result;
}

std::string lutBase64Decode(std::string_view text) {
    std::string result(text.size() / 4 * 3 + 3, '\0');
    char* out = result.data();
    std::uint32_t bits = 0;
    unsigned held = 0;
    while (!text.empty()) {
        if (held == 0) takeGroups(text, out);
        if (text.empty()) break;
        const std::uint8_t value = valueOf(text.front());
        text.remove_prefix(1);
        if (value == kBlank) continue;
        if (value == kOther) break;
        bits = bits << 6 | value;
        held += 6;
        if (held < 8) continue;
        held -= 8;
        *out++ = static_cast<char>(bits >> held);
    }
    result.resize(static_cast<std::size_t>(out - result.data()));
    return result;
}
