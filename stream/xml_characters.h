// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Which bytes of UTF-8 may stand where in XML 1.0, as expat judges them.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "host/util/byte_block.h"

namespace protolink {

namespace xml {

/// Sets of bytes: what can be passed over without a look at what it is, one set for each place in a text; and what
/// names and white space are made of, for ASCII only.
enum ByteSet : std::uint8_t {
    kContent = 1,
    kValue = 2,
    kComment = 4,
    kCData = 8,
    kInstruction = 16,
    kNameStart = 32,
    kNamePart = 64,
    kSpace = 128,
};

constexpr bool isControl(unsigned char byte) { return byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r'; }

constexpr std::uint8_t setsOf(unsigned char byte) {
    const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_' || byte == ':';
    const bool digit = byte >= '0' && byte <= '9';
    unsigned sets = 0;
    if (byte >= 0x80 || isControl(byte)) return 0;
    if (byte != '<' && byte != '&' && byte != ']') sets |= kContent;
    if (byte != '<' && byte != '&' && byte != '"' && byte != '\'') sets |= kValue;
    if (byte != '-') sets |= kComment;
    if (byte != ']') sets |= kCData;
    if (byte != '?') sets |= kInstruction;
    if (letter) sets |= kNameStart | kNamePart;
    if (digit || byte == '-' || byte == '.') sets |= kNamePart;
    if (byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r') sets |= kSpace;
    return static_cast<std::uint8_t>(sets);
}

inline constexpr std::array<std::uint8_t, 256> kByteSets = [] {
    std::array<std::uint8_t, 256> sets{};
    for (unsigned byte = 0; byte < sets.size(); ++byte) sets[byte] = setsOf(static_cast<unsigned char>(byte));
    return sets;
}();

inline bool isIn(char byte, ByteSet set) { return kByteSets[static_cast<unsigned char>(byte)] & set; }

/// The first place from `from` on where a byte stands that is not in the set; the text's size if there is none.
inline std::size_t skip(std::string_view text, std::size_t from, ByteSet set) {
    while (from < text.size() && isIn(text[from], set)) ++from;
    return from;
}

/// The same for a set that holds all printable ASCII but `kStops`, where a stretch can be long.
template <ByteSet kSet, char... kStops>
std::size_t skipLong(std::string_view text, std::size_t from) {
    while (text.size() - from >= util::ByteBlock::kSize) {
        const util::ByteBlock block(text.data() + from);
        const std::uint32_t marks = (block.below(' ') | ... | block.equalTo(kStops)).mask();
        if (marks == 0) {
            from += util::ByteBlock::kSize;
            continue;
        }
        from += static_cast<std::size_t>(std::countr_zero(marks));
        if (!isIn(text[from], kSet)) return from;
        ++from;  // a line end or a tab
    }
    return skip(text, from, kSet);
}

inline std::size_t skipContent(std::string_view text, std::size_t from) {
    return skipLong<kContent, '<', '&', ']'>(text, from);
}
inline std::size_t skipValue(std::string_view text, std::size_t from) {
    return skipLong<kValue, '<', '&', '"', '\''>(text, from);
}
inline std::size_t skipComment(std::string_view text, std::size_t from) { return skipLong<kComment, '-'>(text, from); }
inline std::size_t skipCData(std::string_view text, std::size_t from) { return skipLong<kCData, ']'>(text, from); }
inline std::size_t skipInstruction(std::string_view text, std::size_t from) {
    return skipLong<kInstruction, '?'>(text, from);
}

inline bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

inline constexpr int kInvalidSequence = 0;
inline constexpr int kCutSequence = -1;
/// The length of the character at `index` when it is one of several bytes that XML allows.
int sequenceLength(std::string_view text, std::size_t index);

/// Whether expat takes a character beyond ASCII as part of a name, or as its beginning. It is asked about each only
/// once.
bool canBeInName(std::string_view character, bool asStart);

/// What "&#" begins.
struct NumberReference {
    enum class Kind {
        Cut,          // nothing is wrong, but the end is missing
        None,         // at `length` stands what cannot stand there
        WrongNumber,  // of `length`, to a character that XML does not allow
        Whole,        // of `length`
    };
    Kind kind = Kind::Cut;
    std::size_t length = 0;
};
/// Reads the reference to a character's number that the text begins with; "&#" is there. The first `known` characters
/// were found to belong to it before.
NumberReference readNumberReference(std::string_view text, std::size_t known);

/// One of the five names that every document knows.
bool isPredefinedEntity(std::string_view name);

/// "xml" in any case is no target of an instruction.
bool isReservedTarget(std::string_view name);

}  // namespace xml

}  // namespace protolink
