// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Line and column of a place in a text, counted as expat counts them.
#pragma once

#include <cstdint>
#include <string_view>

namespace protolink {

/// Lines count from 1 and end with LF, CR or CR LF; columns count characters of UTF-8 from 0.
class TextPosition {
public:
    TextPosition(std::uint32_t line, std::uint32_t column) : line_(line), column_(column) {}

    void advance(std::string_view text);
    std::uint32_t line() const { return line_; }
    std::uint32_t column() const { return column_; }

private:
    std::uint32_t line_;
    std::uint32_t column_;
    bool afterCarriageReturn_ = false;
};

}  // namespace protolink
