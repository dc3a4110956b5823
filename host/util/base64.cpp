// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/base64.h"

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

/// Up to three bytes as the upper bits of 24.
std::uint32_t group(std::string_view bytes) {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < 3; ++i)
        bits = bits << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u);
    return bits;
}

}  // namespace

std::string lutBase64Encode(std::string_view bytes) {
    std::string result((bytes.size() + 2) / 3 * 4, '=');
    char* out = result.data();
    for (; !bytes.empty(); bytes.remove_prefix(bytes.size() < 3 ? bytes.size() : 3), out += 4) {
        const std::uint32_t bits = group(bytes);
        const std::size_t letters = bytes.size() < 3 ? bytes.size() + 1 : 4;
        for (std::size_t i = 0; i < letters; ++i) out[i] = kAlphabet[bits >> (18 - 6 * i) & 63];
    }
    return result;
}

std::string lutBase64Decode(std::string_view text) {
    std::string result;
    result.reserve(text.size() / 4 * 3 + 3);
    std::uint32_t bits = 0;
    unsigned held = 0;
    for (const char letter : text) {
        const std::uint8_t value = valueOf(letter);
        if (value == kBlank) continue;
        if (value == kOther) break;
        bits = bits << 6 | value;
        held += 6;
        if (held < 8) continue;
        held -= 8;
        result += static_cast<char>(bits >> held & 0xFF);
    }
    return result;
}
