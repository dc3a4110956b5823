// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Text with captured values: `{name}` stands for a value that binds where it is first seen and must be the same ever
// after; `{base64:...}` stands for the base64 form of what it encloses.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace harness {

using Variables = std::map<std::string, std::string>;

class Pattern {
public:
    /// Reads a text in which `{name}` and `{base64:...}` are special and escapes count.
    static Pattern parse(std::string_view raw);

    /// The text with all its values filled in. A value that is not bound throws std::runtime_error.
    std::string fill(const Variables& variables) const;

    /// Whether `actual` has this form. Binds the values that it sees first; on false nothing is bound. An unbound value
    /// stands for at least one character and never for a quotation mark, an apostrophe or an angle bracket.
    bool match(std::string_view actual, Variables& variables) const;

private:
    struct Segment {
        enum class Kind { Literal, Value, Base64 } kind = Kind::Literal;
        std::string text;            // the literal, or the value's name
        std::vector<Segment> inner;  // of Base64
    };
    static std::vector<Segment> parseSegments(std::string_view raw, std::size_t& at, bool nested);
    static std::string fillSegments(const std::vector<Segment>& segments, const Variables& variables);
    static bool matchFrom(const std::vector<Segment>& segments, std::size_t index, std::string_view rest,
                          Variables& variables);
    static bool matchValue(const std::vector<Segment>& segments, std::size_t index, std::string_view rest,
                           Variables& variables);

    std::vector<Segment> segments_;
};

}  // namespace harness
