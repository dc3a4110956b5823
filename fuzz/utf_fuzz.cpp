// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The conversions between UTF-8 and UTF-16, against slow ones by the tables of the Unicode standard.
#include <string>

#include "fuzz/input.h"
#include "host/util/utf.h"

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void append(std::u16string& text, char32_t code) {
    if (code >= 0x10000) {
        text += static_cast<char16_t>(0xD800 + (code - 0x10000) / 0x400);
        text += static_cast<char16_t>(0xDC00 + (code - 0x10000) % 0x400);
    } else {
        text += static_cast<char16_t>(code);
    }
}

/// Well-formed sequences as table 3-7 lists them; each maximal part of an ill-formed one becomes U+FFFD.
std::u16string slowWide(std::string_view bytes) {
    std::u16string text;
    for (std::size_t at = 0; at < bytes.size();) {
        const auto lead = static_cast<unsigned char>(bytes[at++]);
        if (lead < 0x80) {
            text += lead;
            continue;
        }
        const std::size_t more = lead >= 0xC2 && lead <= 0xDF   ? 1
                                 : lead >= 0xE0 && lead <= 0xEF ? 2
                                 : lead >= 0xF0 && lead <= 0xF4 ? 3
                                                                : 0;
        unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
        unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
        char32_t code = lead & (0x3Fu >> more);
        std::size_t taken = 0;
        for (; taken < more && at < bytes.size(); ++taken) {
            const auto byte = static_cast<unsigned char>(bytes[at]);
            if (byte < low || byte > high) break;
            code = code * 64 + byte % 64;
            low = 0x80;
            high = 0xBF;
            ++at;
        }
        append(text, more > 0 && taken == more ? code : kReplacement);
    }
    return text;
}

std::string slowNarrow(std::u16string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        char32_t code = text[at];
        if (code >= 0xD800 && code < 0xE000) {
            const bool pair = code < 0xDC00 && at + 1 < text.size() && text[at + 1] >= 0xDC00 && text[at + 1] < 0xE000;
            code = pair ? 0x10000 + (code - 0xD800) * 0x400 + (text[at + 1] - 0xDC00u) : kReplacement;
            at += pair;
        }
        const int more = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        constexpr unsigned kLeads[] = {0, 0xC0, 0xE0, 0xF0};
        bytes += static_cast<char>(kLeads[more] | code >> 6 * more);
        for (int i = more - 1; i >= 0; --i) bytes += static_cast<char>(0x80 | (code >> 6 * i & 0x3F));
    }
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    fuzz::require(utow(bytes) == slowWide(bytes), "another wide text than the slow one");
    std::u16string text;
    for (std::size_t i = 0; i + 1 < size; i += 2) text += static_cast<char16_t>(data[i] << 8 | data[i + 1]);
    fuzz::require(wtou(text) == slowNarrow(text), "another narrow text than the slow one");
    fuzz::require(wtou(utow(wtou(text))) == wtou(text), "what was converted does not come back");
    return 0;
}
