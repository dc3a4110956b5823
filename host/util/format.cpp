// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/format.h"

#include <algorithm>
#include <array>
#include <charconv>

/// Walks a pattern once and writes the result.
class PatternWriter {
public:
    PatternWriter(std::u16string_view pattern, std::initializer_list<FormatArgument> arguments)
        : pattern_(pattern), next_(arguments.begin()), end_(arguments.end()) {}

    std::u16string write();

private:
    /// What stands between a `%` and its letter.
    struct Conversion {
        bool zeroFill = false;
        std::size_t width = 0;
        std::size_t precision = kNoPrecision;
        char16_t letter = 0;
    };

    static constexpr std::size_t kNoPrecision = static_cast<std::size_t>(-1);
    /// A pattern cannot ask for more fill or more decimals than this.
    static constexpr std::size_t kMaxWidth = 255;
    static constexpr std::size_t kMaxDecimals = 40;
    /// The longest double has 309 digits before the point, then the point, the decimals and a sign.
    using Digits = std::array<char, 320 + kMaxDecimals>;

    /// Reads a conversion from behind its `%` and tells its length; 0 when there is none.
    static std::size_t readConversion(std::u16string_view rest, Conversion& conversion);
    static std::size_t readNumber(std::u16string_view rest, std::size_t& at, std::size_t limit);
    static std::string_view digits(const FormatArgument& argument, const Conversion& conversion, Digits& buffer);
    void writeArgument(const FormatArgument& argument, const Conversion& conversion);
    void writeNumber(std::string_view text, const Conversion& conversion);

    std::u16string_view pattern_;
    const FormatArgument* next_;
    const FormatArgument* end_;
    std::u16string out_;
};

std::u16string PatternWriter::write() {
    out_.reserve(pattern_.size() + 32);
    while (!pattern_.empty()) {
        const std::size_t plain = std::min(pattern_.find(u'%'), pattern_.size());
        out_ += pattern_.substr(0, plain);
        pattern_.remove_prefix(plain);
        if (pattern_.empty()) break;
        Conversion conversion;
        const std::size_t length = readConversion(pattern_.substr(1), conversion);
        if (length == 0 || conversion.letter == u'%')
            out_ += u'%';
        else if (next_ != end_)
            writeArgument(*next_++, conversion);
        pattern_.remove_prefix(1 + length);
    }
    return std::move(out_);
}

std::size_t PatternWriter::readNumber(std::u16string_view rest, std::size_t& at, std::size_t limit) {
    std::size_t number = 0;
    for (; at < rest.size() && rest[at] >= u'0' && rest[at] <= u'9'; ++at)
        number = std::min<std::size_t>(number * 10 + (rest[at] - u'0'), limit);
    return number;
}

std::size_t PatternWriter::readConversion(std::u16string_view rest, Conversion& conversion) {
    std::size_t at = 0;
    if (rest.starts_with(u'%')) {
        conversion.letter = u'%';
        return 1;
    }
    if (rest.starts_with(u'0')) {
        conversion.zeroFill = true;
        ++at;
    }
    conversion.width = readNumber(rest, at, kMaxWidth);
    if (rest.substr(at).starts_with(u'.')) conversion.precision = readNumber(rest, ++at, kMaxDecimals);
    while (at < rest.size() && std::u16string_view(u"hlz").find(rest[at]) != std::u16string_view::npos) ++at;
    if (at == rest.size() || std::u16string_view(u"sdiuxXf").find(rest[at]) == std::u16string_view::npos) return 0;
    conversion.letter = rest[at];
    return at + 1;
}

std::string_view PatternWriter::digits(const FormatArgument& argument, const Conversion& conversion, Digits& buffer) {
    using Kind = FormatArgument::Kind;
    char* const begin = buffer.data();
    char* const end = begin + buffer.size();
    const bool hexadecimal = (conversion.letter | 0x20) == u'x';
    const auto asSigned = static_cast<std::int64_t>(argument.integer_);
    std::to_chars_result result{};
    if (argument.kind_ == Kind::Real || conversion.letter == u'f') {
        const double value = argument.kind_ == Kind::Real     ? argument.real_
                             : argument.kind_ == Kind::Signed ? static_cast<double>(asSigned)
                                                              : static_cast<double>(argument.integer_);
        const std::size_t decimals = conversion.precision == kNoPrecision ? 6 : conversion.precision;
        result = std::to_chars(begin, end, value, std::chars_format::fixed, static_cast<int>(decimals));
    } else if (hexadecimal) {
        // A negative number is shown in the width of its own type.
        const std::uint64_t mask = argument.bits_ < 64 ? (std::uint64_t{1} << argument.bits_) - 1 : ~std::uint64_t{0};
        result = std::to_chars(begin, end, argument.integer_ & mask, 16);
        if (conversion.letter == u'X')
            std::transform(begin, result.ptr, begin, [](char c) { return c >= 'a' ? static_cast<char>(c - 32) : c; });
    } else if (argument.kind_ == Kind::Signed) {
        result = std::to_chars(begin, end, asSigned);
    } else {
        result = std::to_chars(begin, end, argument.integer_);
    }
    return {begin, static_cast<std::size_t>(result.ptr - begin)};
}

void PatternWriter::writeArgument(const FormatArgument& argument, const Conversion& conversion) {
    if (argument.kind_ == FormatArgument::Kind::Text) {
        const std::size_t length = argument.text_.size();
        if (length < conversion.width) out_.append(conversion.width - length, u' ');
        out_ += argument.text_;
        return;
    }
    Digits buffer;
    writeNumber(digits(argument, conversion, buffer), conversion);
}

void PatternWriter::writeNumber(std::string_view text, const Conversion& conversion) {
    const std::size_t fill = text.size() < conversion.width ? conversion.width - text.size() : 0;
    if (!conversion.zeroFill) out_.append(fill, u' ');
    if (text.starts_with('-')) {
        out_ += u'-';
        text.remove_prefix(1);
    }
    if (conversion.zeroFill) out_.append(fill, u'0');
    out_.append(text.begin(), text.end());
}

std::u16string formatPattern(std::u16string_view pattern, std::initializer_list<FormatArgument> arguments) {
    return PatternWriter(pattern, arguments).write();
}

std::u16string lutCID(std::u16string_view pattern, std::int64_t number) { return formatText(pattern, number); }
