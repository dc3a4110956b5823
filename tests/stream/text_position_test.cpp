// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/text_position.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace protolink;

namespace {

/// Line and column, counted one byte after the other.
struct Counted {
    std::uint32_t line = 1;
    std::uint32_t column = 0;
};

Counted counted(const std::string& text) {
    Counted place;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte == '\n' && i > 0 && text[i - 1] == '\r') continue;
        if (byte == '\n' || byte == '\r') {
            ++place.line;
            place.column = 0;
        } else if (byte < 0x80 || byte >= 0xC0) {
            ++place.column;
        }
    }
    return place;
}

/// Mostly long stretches without a line end, as in XMPP; every kind of character and line end in between.
std::string randomText(std::mt19937& random) {
    std::string text;
    for (int piece = 0; piece < 12; ++piece) {
        text.append(random() % 70, 'a');
        for (const char* kind : {"\n", "\r", "\r\n", "\t", "ż", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"})
            if (random() % 4 == 0) text += kind;
    }
    return text;
}

TEST(TextPosition, IsTheSameForAnyTextInAnyPieces) {
    std::mt19937 random(20);
    for (int round = 0; round < 2'000; ++round) {
        const std::string text = randomText(random);
        TextPosition position(1, 0);
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t length = std::min<std::size_t>(1 + random() % 100, text.size() - at);
            position.advance(std::string_view(text).substr(at, length));
            at += length;
            const Counted expected = counted(text.substr(0, at));
            ASSERT_EQ(position.line(), expected.line) << text;
            ASSERT_EQ(position.column(), expected.column) << text;
        }
    }
}

}  // namespace
