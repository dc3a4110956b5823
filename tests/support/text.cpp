// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/text.h"

#include <array>
#include <cstdint>
#include <stdexcept>

namespace harness {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::string_view kBase64 = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

void appendUtf8(std::string& out, char32_t c) {
    const auto tail = [&](int shift) { out += static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        tail(0);
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        tail(6);
        tail(0);
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

/// One character at `at`, which is moved behind it.
char32_t takeUtf8(std::string_view text, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80) return lead;
    const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
    if (more == 0) return kReplacement;
    char32_t c = lead & (0x3F >> more);
    for (int i = 0; i < more; ++i) {
        if (at == text.size() || (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80) return kReplacement;
        c = (c << 6) | (static_cast<unsigned char>(text[at++]) & 0x3F);
    }
    return c;
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    throw std::invalid_argument("\\x wants two hexadecimal digits");
}

}  // namespace

std::string toUtf8(std::u16string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000) {
            c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00u);
        } else if (c >= 0xD800 && c < 0xE000) {
            c = kReplacement;
        }
        appendUtf8(out, c);
    }
    return out;
}

std::u16string toUtf16(std::string_view text) {
    std::u16string out;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t c = takeUtf8(text, at);
        if (c >= 0x10000) {
            out += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
            out += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
        } else {
            out += static_cast<char16_t>(c);
        }
    }
    return out;
}

std::string escape(std::string_view text) {
    static constexpr std::string_view kHex = "0123456789abcdef";
    std::string out;
    for (const char c : text) {
        switch (c) {
            case '\r':
                out += "\\r";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\t':
                out += "\\t";
                break;
            case '\0':
                out += "\\0";
                break;
            case '\\':
            case '{':
                out += '\\', out += c;
                break;
            default:
                if (static_cast<unsigned char>(c) < 0x20) {
                    out += "\\x", out += kHex[static_cast<unsigned char>(c) >> 4], out += kHex[c & 15];
                } else {
                    out += c;
                }
        }
    }
    return out;
}

std::string quoted(std::string_view text) { return '"' + replaceAll(escape(text), "\"", "\\\"") + '"'; }

char unescapeAt(std::string_view text, std::size_t& at) {
    if (at + 1 >= text.size()) throw std::invalid_argument("a backslash at the end");
    const char c = text[at + 1];
    at += 2;
    switch (c) {
        case 'r':
            return '\r';
        case 'n':
            return '\n';
        case 't':
            return '\t';
        case '0':
            return '\0';
        case '\\':
        case '"':
        case ' ':
        case '{':
            return c;
        case 'x':
            if (at + 2 > text.size()) throw std::invalid_argument("\\x wants two hexadecimal digits");
            at += 2;
            return static_cast<char>(hexDigit(text[at - 2]) * 16 + hexDigit(text[at - 1]));
        default:
            throw std::invalid_argument(std::string("unknown escape \\") + c);
    }
}

std::string unescape(std::string_view text) {
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == '\\') {
            out += unescapeAt(text, at);
        } else {
            out += text[at++];
        }
    }
    return out;
}

std::string base64Encode(std::string_view bytes) {
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k) {
            group = (group << 8) | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0u);
        }
        for (std::size_t k = 0; k < 4; ++k) {
            out += i + k <= bytes.size() ? kBase64[(group >> (18 - 6 * k)) & 63] : '=';
        }
    }
    return out;
}

std::string base64Decode(std::string_view text) {
    if (text.size() % 4 != 0) return {};
    std::string out;
    std::uint32_t group = 0;
    int bits = 0;
    for (const char c : text) {
        if (c == '=') break;
        const auto value = kBase64.find(c);
        if (value == std::string_view::npos) return {};
        group = (group << 6) | static_cast<std::uint32_t>(value);
        bits += 6;
        if (bits >= 8) out += static_cast<char>((group >> (bits -= 8)) & 0xFF);
    }
    return out;
}

std::string_view trim(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r')) text.remove_suffix(1);
    return text;
}

bool startsWith(std::string_view text, std::string_view prefix) { return text.substr(0, prefix.size()) == prefix; }

std::string replaceAll(std::string text, std::string_view from, std::string_view to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

}  // namespace harness
