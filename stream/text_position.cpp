#include "stream/text_position.h"

namespace {

bool endsLine(char byte) { return byte == '\n' || byte == '\r'; }

std::uint32_t startsCharacter(char byte) {
    constexpr unsigned kContinuationMask = 0xC0;
    constexpr unsigned kContinuation = 0x80;
    return (static_cast<unsigned char>(byte) & kContinuationMask) != kContinuation;
}

/// The number of characters in a stretch without line ends; the stretch ends with the text or before a line end.
std::uint32_t charactersOfLine(std::string_view text, std::size_t& length) {
    constexpr std::size_t kBlock = 64;
    std::uint32_t characters = 0;
    std::size_t at = 0;
    // Whole blocks first, in a form that the compiler turns into vector instructions.
    for (; at + kBlock <= text.size(); at += kBlock) {
        std::uint32_t inBlock = 0;
        std::uint32_t lineEnds = 0;
        for (std::size_t i = 0; i < kBlock; ++i) {
            inBlock += startsCharacter(text[at + i]);
            lineEnds += endsLine(text[at + i]);
        }
        if (lineEnds) break;
        characters += inBlock;
    }
    for (; at < text.size() && !endsLine(text[at]); ++at) characters += startsCharacter(text[at]);
    length = at;
    return characters;
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
