// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/text_position.h"

#include <bit>

#include "host/util/byte_block.h"

namespace protolink {

namespace {

bool endsLine(char byte) { return byte == '\n' || byte == '\r'; }

/// As a signed number: the bytes that go on with a character are below it, as no others are.
constexpr char kFirstLead = static_cast<char>(0xC0);

bool isContinuation(char byte) { return static_cast<signed char>(byte) < static_cast<signed char>(kFirstLead); }

/// The number of characters in a stretch without line ends; the stretch ends with the text or before a line end.
std::uint32_t charactersOfLine(std::string_view text, std::size_t& length) {
    using util::ByteBlock;
    std::size_t continuations = 0;
    std::size_t at = 0;
    for (; at + ByteBlock::kSize <= text.size(); at += ByteBlock::kSize) {
        const ByteBlock block(text.data() + at);
        // Most blocks are printable ASCII, which one question tells.
        if (!block.below(' ').mask()) continue;
        if ((block.equalTo('\n') | block.equalTo('\r')).mask()) break;
        continuations += static_cast<std::size_t>(std::popcount(block.below(kFirstLead).mask()));
    }
    for (; at < text.size() && !endsLine(text[at]); ++at) continuations += isContinuation(text[at]);
    length = at;
    return static_cast<std::uint32_t>(at - continuations);
}

}  // namespace

void TextPosition::advance(std::string_view text) {
    while (!text.empty()) {
        if (afterCarriageReturn_) {
            afterCarriageReturn_ = false;
            if (text.front() == '\n') {
                text.remove_prefix(1);
                continue;
            }
        }
        std::size_t lineEnd = 0;
        column_ += charactersOfLine(text, lineEnd);
        if (lineEnd == text.size()) return;
        ++line_;
        column_ = 0;
        afterCarriageReturn_ = text[lineEnd] == '\r';
        text.remove_prefix(lineEnd + 1);
    }
}

}  // namespace protolink
