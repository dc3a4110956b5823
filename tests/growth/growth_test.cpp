// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Readers of what others write, with texts that look short-witted and once cost the square of their length.
#include <gtest/gtest.h>

#include "tests/growth/growing_text.h"

namespace growth {
namespace {

struct Row {
    const char* name;
    Shape shape;
};

const Row kRows[] = {
    {"a declaration without its end", {"<?xml ", {"a"}, ""}},
    {"declarations that wait for an end each", {"<![CDATA[", {"<?a<?>"}, ""}},
    {"declarations cut in the middle", {"?><![CDATA[", {"<?"}, ""}},
    {"beginnings of a declaration in a name", {"?><" + std::string(8'000, 'a'), {"<?"}, ""}},
    {"beginnings of a declaration inside each other", {"?><![CDATA[", {"<", "?", "a"}, ""}},
    {"beginnings of a tag", {"<![CDATA[", {"<"}, ""}},
    {"ampersands", {"<a b='", {"&"}, ""}},
    {"ampersands in text", {"<a>", {"&"}, ""}},
    {"a long number", {"<a>&#", {"1"}, ""}},
    {"a long name", {"<a", {"a"}, ""}},
    {"a long value", {"<a b='", {"c"}, ""}},
    {"a long comment", {"<a><!-- ", {"- "}, ""}},
    {"many attributes", {"<a", {" b='c'"}, ""}},
    {"many declared prefixes", {"<a", {" xmlns:b='c'"}, ">"}},
    {"deep elements", {"", {"<a>", "</a>"}, ""}},
    {"deep elements with a declaration each", {"", {"<a xmlns:b='c'>", "</a>"}, ""}},
    {"deep elements around beginnings of a declaration", {"?>", {"<a>", "<![CDATA[<?]]>"}, ""}},
    {"elements one after the other", {"<a>", {"<b/>"}, ""}},
    {"ends that close nothing", {"", {"</a>"}, ""}},
    {"an error early", {"&;", {"<a>b</a>"}, ""}},
    {"line ends", {"<a>", {"\r\n"}, ""}},
    {"lines", {"", {"a = \"b\\n\"\n"}, ""}},
    {"escapes", {"a = \"", {"\\n"}, "\""}},
};

TEST(Growth, CostsTheSameForEachByteWhateverTheText) {
    constexpr std::size_t kLength = 16'000;
    for (const Row& row : kRows) {
        const std::string text = row.shape.text(kLength);
        for (const Reader& reader : kReaders) {
            for (const std::size_t piece : {std::size_t{1}, std::size_t{3}, text.size()})
                EXPECT_LT(stepsForEachByte(reader, text, piece), kMostSteps)
                    << reader.name << ": " << row.name << ", in pieces of " << piece;
        }
    }
}

TEST(Growth, CountsTheWorkOfEachReader) {
    const Shape plain{"<a>", {"<b c='d'>e</b>"}, "</a>"};
    for (const Reader& reader : kReaders) EXPECT_GT(stepsForEachByte(reader, plain.text(1'000), 1), 0.5) << reader.name;
}

}  // namespace
}  // namespace growth
