// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/utf.h"

#include "host/util/unit_block.h"
#include "host/util/utf_code.h"

std::string wtou(std::u16string_view text) {
    std::string result;
    util::UnitBlock<char> block(&result);
    std::size_t at = 0;
    const auto left = [&] { return text.size() - at; };
    while (at < text.size()) {
        while (left() >= util::kWideStep && util::narrow(text.data() + at, block.room(left))) {
            block.taken(util::kWideStep);
            at += util::kWideStep;
        }
        // The sixteen units that held more than ASCII, or the last ones.
        const std::size_t end = at + (left() < util::kWideStep ? left() : util::kWideStep);
        while (at < end) {
            const util::CodePoint point = util::decodeUtf16(text.data() + at, left());
            block.taken(util::encodeUtf8(point.code, block.room(left)));
            at += point.length;
        }
    }
    block.finish();
    return result;
}

std::u16string utow(std::string_view text) {
    std::u16string result;
    util::UnitBlock<char16_t> block(&result);
    std::size_t at = 0;
    const auto left = [&] { return text.size() - at; };
    while (at < text.size()) {
        if (left() >= util::kWideStep) {
            const std::uint32_t mask = util::nonAsciiMask(text.data() + at);
            util::widen(text.data() + at, block.room(left));
            const std::size_t plain = mask ? static_cast<std::size_t>(std::countr_zero(mask)) : util::kWideStep;
            block.taken(plain);
            at += plain;
            if (!mask) continue;
        }
        // What follows one letter beyond ASCII is mostly another, so these are read one by one up to the next ASCII.
        do {
            const auto byte = static_cast<unsigned char>(text[at]);
            const util::CodePoint point =
                byte < 0x80 ? util::CodePoint{byte, 1} : util::decodeUtf8(text.data() + at, left());
            block.taken(util::encodeUtf16(point.code, block.room(left)));
            at += point.length;
        } while (at < text.size() && static_cast<unsigned char>(text[at]) >= 0x80);
    }
    block.finish();
    return result;
}
