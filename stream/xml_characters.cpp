// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/xml_characters.h"

#include <expat.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <new>
#include <string>

#include "host/util/utf.h"

namespace protolink {

namespace xml {

namespace {

std::size_t sequenceSize(unsigned char lead) {
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

bool isAllowed(std::uint32_t codePoint, std::size_t bytes) {
    constexpr std::array<std::uint32_t, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};
    if (codePoint < kSmallest[bytes] || codePoint > 0x10FFFF) return false;
    if (codePoint >= 0xD800 && codePoint <= 0xDFFF) return false;
    return codePoint != 0xFFFE && codePoint != 0xFFFF;
}

bool isDigit(char byte, bool hexadecimal) {
    if (byte >= '0' && byte <= '9') return true;
    const char letter = static_cast<char>(byte | 0x20);
    return hexadecimal && letter >= 'a' && letter <= 'f';
}

bool expatTakes(const std::string& document) {
    const XML_Parser parser = XML_ParserCreate("UTF-8");
    if (!parser) throw std::bad_alloc();
    const bool taken = XML_Parse(parser, document.data(), static_cast<int>(document.size()), XML_TRUE) == XML_STATUS_OK;
    XML_ParserFree(parser);
    return taken;
}

enum class Answer : std::uint8_t { Unknown, No, Yes };

/// Characters are asked about in blocks: those of one alphabet are mostly alike, and then one question serves.
constexpr std::size_t kBlock = 64;
using Answers = std::array<Answer, 0x10000>;

bool expatTakesInNames(std::u16string_view characters, bool asStart) {
    std::string document = "<a";
    if (asStart) document += ">";
    for (const char16_t character : characters) {
        const std::string bytes = wtou({&character, 1});
        document += asStart ? "<" + bytes + "/>" : bytes;
    }
    return expatTakes(document + (asStart ? "</a>" : "/>"));
}

void askAboutBlock(Answers& answers, std::size_t first, bool asStart) {
    std::array<char16_t, kBlock> block{};
    for (std::size_t i = 0; i < kBlock; ++i) block[i] = static_cast<char16_t>(first + i);
    const bool all = expatTakesInNames({block.data(), kBlock}, asStart);
    for (std::size_t i = 0; i < kBlock; ++i)
        answers[first + i] = all || expatTakesInNames({&block[i], 1}, asStart) ? Answer::Yes : Answer::No;
}

}  // namespace

int sequenceLength(std::string_view text, std::size_t index) {
    const auto lead = static_cast<unsigned char>(text[index]);
    const std::size_t size = sequenceSize(lead);
    if (size == 0) return kInvalidSequence;
    if (text.size() - index < size) return kCutSequence;
    std::uint32_t codePoint = lead & (0x7FU >> size);
    for (std::size_t i = 1; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(text[index + i]);
        if ((byte & 0xC0) != 0x80) return kInvalidSequence;
        codePoint = codePoint << 6 | (byte & 0x3FU);
    }
    return isAllowed(codePoint, size) ? static_cast<int>(size) : kInvalidSequence;
}

bool canBeInName(std::string_view character, bool asStart) {
    // Names end where the basic multilingual plane does.
    constexpr std::size_t kLongestInNames = 3;
    if (character.size() > kLongestInNames) return false;
    static Answers partAnswers{};
    static Answers startAnswers{};
    Answers& answers = asStart ? startAnswers : partAnswers;
    const char16_t code = utow(character).front();
    if (answers[code] == Answer::Unknown) askAboutBlock(answers, code / kBlock * kBlock, asStart);
    return answers[code] == Answer::Yes;
}

NumberReference readNumberReference(std::string_view text, std::size_t known) {
    using Kind = NumberReference::Kind;
    const bool hexadecimal = text.size() > 2 && text[2] == 'x';
    const std::size_t start = hexadecimal ? 3 : 2;
    std::size_t end = std::max(start, known);
    while (end < text.size() && isDigit(text[end], hexadecimal)) ++end;
    if (end >= text.size()) return {};
    if (end == start || text[end] != ';') return {Kind::None, end};
    std::uint32_t number = 0;
    const auto parsed = std::from_chars(text.data() + start, text.data() + end, number, hexadecimal ? 16 : 10);
    const bool control = number < 0x80 && isControl(static_cast<unsigned char>(number));
    const bool allowed = parsed.ec == std::errc() && !control && isAllowed(number, number < 0x80 ? 0 : 2);
    return {allowed ? Kind::Whole : Kind::WrongNumber, end + 1};
}

bool isPredefinedEntity(std::string_view name) {
    constexpr std::array<std::string_view, 5> kEntities{"lt", "gt", "amp", "quot", "apos"};
    return std::find(kEntities.begin(), kEntities.end(), name) != kEntities.end();
}

bool isReservedTarget(std::string_view name) {
    constexpr std::string_view kReserved = "xml";
    return std::equal(name.begin(), name.end(), kReserved.begin(), kReserved.end(),
                      [](char given, char wanted) { return (given | 0x20) == wanted; });
}

}  // namespace xml

}  // namespace protolink
