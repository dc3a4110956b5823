// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Single code points in UTF-8 and UTF-16. Inside of host/util only.
#pragma once

#include <cstddef>
#include <cstdint>

namespace util {

inline constexpr char32_t kReplacement = 0xFFFD;

struct CodePoint {
    char32_t code;
    /// Units of the source that it stands for, at least 1.
    std::size_t length;
};

inline bool isContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

/// Reads the sequence that begins at `at` with a byte that is no ASCII. An ill-formed one reads as U+FFFD with the
/// length of its maximal subpart.
inline CodePoint decodeUtf8(const char* at, std::size_t left) {
    const auto byte = [at](std::size_t i) { return static_cast<unsigned char>(at[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0xC2 || lead > 0xF4 || left < 2) return {kReplacement, 1};
    const unsigned char second = byte(1);
    if (lead < 0xE0) {
        if (!isContinuation(second)) return {kReplacement, 1};
        return {static_cast<char32_t>((lead & 0x1Fu) << 6 | (second & 0x3Fu)), 2};
    }
    // The second byte decides about overlong forms, surrogates and what lies beyond U+10FFFF.
    const unsigned char lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned char highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (second < lowest || second > highest) return {kReplacement, 1};
    if (left < 3 || !isContinuation(byte(2))) return {kReplacement, 2};
    if (lead < 0xF0)
        return {static_cast<char32_t>((lead & 0x0Fu) << 12 | (second & 0x3Fu) << 6 | (byte(2) & 0x3Fu)), 3};
    if (left < 4 || !isContinuation(byte(3))) return {kReplacement, 3};
    return {static_cast<char32_t>((lead & 0x07u) << 18 | (second & 0x3Fu) << 12 | (byte(2) & 0x3Fu) << 6 |
                                  (byte(3) & 0x3Fu)),
            4};
}

inline bool isHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }
inline bool isLowSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

/// Reads the code point that begins at `at`; a lone surrogate reads as U+FFFD.
inline CodePoint decodeUtf16(const char16_t* at, std::size_t left) {
    const char16_t unit = at[0];
    if ((unit & 0xF800) != 0xD800) return {unit, 1};
    if (!isHighSurrogate(unit) || left < 2 || !isLowSurrogate(at[1])) return {kReplacement, 1};
    return {0x10000 + ((static_cast<char32_t>(unit) & 0x3FF) << 10 | (at[1] & 0x3FFu)), 2};
}

/// Writes a code point as one or two units and tells how many.
inline std::size_t encodeUtf16(char32_t code, char16_t* to) {
    if (code < 0x10000) {
        to[0] = static_cast<char16_t>(code);
        return 1;
    }
    to[0] = static_cast<char16_t>(0xD7C0 + (code >> 10));
    to[1] = static_cast<char16_t>(0xDC00 | (code & 0x3FF));
    return 2;
}

/// Writes a code point as one to four bytes and tells how many.
inline std::size_t encodeUtf8(char32_t code, char* to) {
    const auto tail = [code](unsigned shift) { return static_cast<char>(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        to[0] = static_cast<char>(code);
        return 1;
    }
    if (code < 0x800) {
        to[0] = static_cast<char>(0xC0 | code >> 6);
        to[1] = tail(0);
        return 2;
    }
    if (code < 0x10000) {
        to[0] = static_cast<char>(0xE0 | code >> 12);
        to[1] = tail(6);
        to[2] = tail(0);
        return 3;
    }
    to[0] = static_cast<char>(0xF0 | code >> 18);
    to[1] = tail(12);
    to[2] = tail(6);
    to[3] = tail(0);
    return 4;
}

/// What XML 1.0 allows as a character (its production 2).
inline bool isXmlCharacter(char32_t code) {
    if (code < 0x20) return code == '\t' || code == '\n' || code == '\r';
    return code < 0xD800 || (code > 0xDFFF && code < 0xFFFE) || (code > 0xFFFF && code < 0x110000);
}

}  // namespace util
