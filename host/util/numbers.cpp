// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/numbers.h"

#include <limits>
#include <utility>

namespace {

constexpr bool isBlank(char16_t unit) { return unit == u' ' || (unit >= u'\t' && unit <= u'\r'); }
constexpr bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

/// Takes blanks and a sign off the front; true when the sign was a minus.
bool takeSign(std::u16string_view& text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    if (text.empty() || (text.front() != u'-' && text.front() != u'+')) return false;
    const bool negative = text.front() == u'-';
    text.remove_prefix(1);
    return negative;
}

template <typename Number>
Number parse(std::u16string_view text) {
    constexpr Number kMin = std::numeric_limits<Number>::min(), kMax = std::numeric_limits<Number>::max();
    const bool negative = takeSign(text);
    Number value = 0;
    // Counted towards the limit of the sign, since the lowest value has no positive twin.
    for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1)) {
        const auto digit = static_cast<Number>(text.front() - u'0');
        if (negative) {
            if (std::cmp_less(value, (kMin + digit) / 10) || std::cmp_equal(kMin, 0)) return kMin;
            value = static_cast<Number>(value * 10 - digit);
            continue;
        }
        if (value > (kMax - digit) / 10) return kMax;
        value = static_cast<Number>(value * 10 + digit);
    }
    return value;
}

}  // namespace

std::int32_t parseInt32(std::u16string_view text) { return parse<std::int32_t>(text); }
std::uint32_t parseUInt32(std::u16string_view text) { return parse<std::uint32_t>(text); }
std::int64_t parseInt64(std::u16string_view text) { return parse<std::int64_t>(text); }
