// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Texts of any length with a shape, and what reads them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace growth {

/// A beginning, parts that are repeated one behind the other, and the rest.
struct Shape {
    std::string begin;
    std::array<std::string, 3> repeated;
    std::string rest;

    /// A text of that shape of about that length.
    std::string text(std::size_t length) const;
};

struct Reader {
    std::string_view name;
    /// Reads the text, in pieces where it comes in pieces. The result is how many bytes it may look at.
    std::uint64_t (*read)(const std::string& text, std::size_t piece);
};

extern const std::array<Reader, 7> kReaders;

/// Steps of work for each byte that the reader may look at.
double stepsForEachByte(const Reader& reader, const std::string& text, std::size_t piece);

/// So many steps are enough for any byte of any text: a piece of one byte costs most.
inline constexpr double kMostSteps = 1000;

}  // namespace growth
