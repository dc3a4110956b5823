// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// References in XML text: the five predefined entities and numbered characters. Inside of host/util only.
#pragma once

#include <cstddef>

#include "host/util/utf_code.h"

namespace util {

struct Entity {
    const char* name;
    char16_t character;
};

inline constexpr Entity kEntities[] = {{"amp", u'&'}, {"lt", u'<'}, {"gt", u'>'}, {"quot", u'"'}, {"apos", u'\''}};

/// The value of a digit, or `base` when it is none.
template <typename Unit>
unsigned digitValue(Unit unit, unsigned base) {
    const auto code = static_cast<unsigned>(unit);
    if (code >= '0' && code <= '9') return code - '0';
    const unsigned letter = code | 0x20;
    return base == 16 && code < 0x80 && letter >= 'a' && letter <= 'f' ? letter - 'a' + 10 : base;
}

/// Reads `&#...;` from its first digit on; `length` counts from there and includes the semicolon. Length 0: it is none.
template <typename Unit>
CodePoint readNumber(const Unit* at, const Unit* end, unsigned base) {
    char32_t code = 0;
    const Unit* digit = at;
    for (; digit != end; ++digit) {
        const unsigned value = digitValue(*digit, base);
        if (value == base) break;
        if (code < 0x110000) code = code * base + value;
    }
    if (digit == at || digit == end || *digit != Unit(';') || !isXmlCharacter(code)) return {0, 0};
    return {code, static_cast<std::size_t>(digit - at) + 1};
}

/// Reads the reference whose `&` stands at `at`. Length 0 means that none of those that are known stands there.
template <typename Unit>
CodePoint readReference(const Unit* at, const Unit* end) {
    const Unit* const name = at + 1;
    if (name != end && *name == Unit('#')) {
        const bool hexadecimal = end - name > 1 && name[1] == Unit('x');
        const std::size_t head = hexadecimal ? 3 : 2;
        const CodePoint number = readNumber(at + head, end, hexadecimal ? 16 : 10);
        return number.length ? CodePoint{number.code, number.length + head} : number;
    }
    for (const Entity& entity : kEntities) {
        const Unit* unit = name;
        const char* letter = entity.name;
        while (*letter && unit != end && *unit == Unit(*letter)) ++unit, ++letter;
        if (!*letter && unit != end && *unit == Unit(';'))
            return {entity.character, static_cast<std::size_t>(unit - at) + 1};
    }
    return {0, 0};
}

}  // namespace util
