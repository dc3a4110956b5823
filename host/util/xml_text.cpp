// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/xml_text.h"

#include <algorithm>
#include <array>

#include "host/util/unit_block.h"
#include "host/util/utf_code.h"
#include "host/util/xml_reference.h"

namespace util {
namespace {

/// Up to this length a piece without markup is written straight into its string, which is the way of most of XMPP.
constexpr std::size_t kShort = 512;

/// Makes room in a string before its units are written in place. Copying any text is several times faster than filling
/// with zeros, for which compilers choose an instruction that is slow with short texts.
constexpr auto kBlanks = [] {
    std::array<char16_t, kShort> blanks{};
    blanks.fill(u' ');
    return blanks;
}();

[[gnu::noinline]] void makeRoom(std::u16string& in, std::size_t count) { in.append(kBlanks.data(), count); }

/// Converts what begins at `at` up to the next plain ASCII and tells its length; 0 when it makes the text bad.
std::size_t appendSpecial(const char* at, const char* end, TextPlace place, UnitBlock<char16_t>& block) {
    const auto expected = [=] { return static_cast<std::size_t>(end - at); };
    const auto put = [&](char32_t code) { block.taken(encodeUtf16(code, block.room(expected))); };
    const char byte = *at;
    if (static_cast<unsigned char>(byte) >= 0x80) {
        const char* next = at;
        do {
            const CodePoint point = decodeUtf8(next, static_cast<std::size_t>(end - next));
            put(point.code);
            next += point.length;
        } while (next != end && static_cast<unsigned char>(*next) >= 0x80);
        return static_cast<std::size_t>(next - at);
    }
    if (byte == '&' && place != TextPlace::CData) {
        const CodePoint point = readReference(at, end);
        if (point.length) put(point.code);
        return point.length;
    }
    if (byte == '\t' || byte == '\n' || byte == '\r') {
        const bool pair = byte == '\r' && end - at > 1 && at[1] == '\n';
        put(place == TextPlace::Value ? U' ' : byte == '\t' ? U'\t' : U'\n');
        return pair ? 2 : 1;
    }
    if (byte < ' ' || place != TextPlace::CData) return 0;
    put(static_cast<char32_t>(byte));
    return 1;
}

}  // namespace

bool appendXmlText(std::string_view raw, const char* readable, TextPlace place, std::u16string* out) {
    if (out && raw.size() <= kShort && isPlain(raw, readable)) {
        const std::size_t before = out->size();
        makeRoom(*out, raw.size());
        widenExactly(raw.data(), raw.size(), out->data() + before);
        return true;
    }
    UnitBlock<char16_t> block(out);
    const char* at = raw.data();
    const char* const end = at + raw.size();
    const auto expected = [&] { return static_cast<std::size_t>(end - at); };
    while (at != end) {
        // Reading past the piece is fine as long as the text itself goes on.
        if (readable - at >= static_cast<std::ptrdiff_t>(kWideStep)) {
            const std::size_t step = std::min(expected(), kWideStep);
            const auto marks = markupMask(at) & ((1u << step) - 1);
            const std::size_t plain = marks ? static_cast<std::size_t>(std::countr_zero(marks)) : step;
            widen(at, block.room(expected));
            block.taken(plain);
            at += plain;
            if (!marks) continue;
        } else if (!isMarkup(*at)) {
            *block.room(expected) = static_cast<unsigned char>(*at++);
            block.taken(1);
            continue;
        }
        const std::size_t length = appendSpecial(at, end, place, block);
        if (length == 0) return false;
        at += length;
    }
    block.finish();
    return true;
}

}  // namespace util
