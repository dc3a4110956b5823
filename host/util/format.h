// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Texts made from a pattern, safe for any pattern and any arguments.
#pragma once

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

/// One argument of a pattern: a text, an integer or a floating-point number. Other types do not compile, characters
/// among them. A text is borrowed for the call.
class FormatArgument {
public:
    template <typename Text>
    requires std::convertible_to<const Text&, std::u16string_view> FormatArgument(const Text& value)
        : kind_(Kind::Text), text_(value) {}

    template <std::integral Number>
    requires(!std::same_as<Number, char> && !std::same_as<Number, char8_t> && !std::same_as<Number, char16_t> &&
             !std::same_as<Number, char32_t> && !std::same_as<Number, wchar_t>) FormatArgument(Number value)
        : kind_(std::is_signed_v<Number> ? Kind::Signed : Kind::Unsigned), integer_(static_cast<std::uint64_t>(value)) {
        if constexpr (std::is_signed_v<Number>) bits_ = sizeof(Number) * 8;
    }

    template <std::floating_point Number>
    FormatArgument(Number value) : kind_(Kind::Real), real_(static_cast<double>(value)) {}

private:
    friend class PatternWriter;
    enum class Kind : std::uint8_t { Text, Signed, Unsigned, Real };

    Kind kind_;
    std::uint8_t bits_ = 64;
    std::u16string_view text_;
    std::uint64_t integer_ = 0;
    double real_ = 0;
};

std::u16string formatPattern(std::u16string_view pattern, std::initializer_list<FormatArgument> arguments);

/// `pattern` with its conversions replaced by the arguments in turn: %s %d %i %u %x %X %f %%, with a width, zero fill
/// and a precision as printf has them (%02d, %.2f; the length letters h, l, z are passed over). An argument is written
/// as what it is when the conversion asks for another kind: a number for %s, a text for %d. A missing argument gives
/// nothing, one too many is not used, and a `%` that begins no conversion stands as it is.
template <typename... Arguments>
std::u16string formatText(std::u16string_view pattern, const Arguments&... arguments) {
    return formatPattern(pattern, {FormatArgument(arguments)...});
}

/// A name that holds one number, such as "XMPP/%d/Menu".
std::u16string lutCID(std::u16string_view pattern, std::int64_t number);
