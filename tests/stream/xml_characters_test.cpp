// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "stream/xml_characters.h"

#include <expat.h>
#include <gtest/gtest.h>

#include "host/util/utf.h"

using namespace protolink;

namespace {

bool expatTakes(const std::string& document) {
    const XML_Parser parser = XML_ParserCreate("UTF-8");
    const bool taken = XML_Parse(parser, document.data(), static_cast<int>(document.size()), XML_TRUE) == XML_STATUS_OK;
    XML_ParserFree(parser);
    return taken;
}

TEST(XmlCharacters, NamesAreMadeOfTheCharactersThatExpatTakes) {
    // A prime step meets every alphabet; all of them would take seconds.
    constexpr unsigned kStep = 5;
    for (unsigned code = 0x80; code < 0xFFFE; code += kStep) {
        if (code >= 0xD800 && code <= 0xDFFF) continue;
        const std::string character = wtou(std::u16string(1, static_cast<char16_t>(code)));
        EXPECT_EQ(xml::canBeInName(character, true), expatTakes("<" + character + "/>")) << code;
        EXPECT_EQ(xml::canBeInName(character, false), expatTakes("<a" + character + "/>")) << code;
    }
}

TEST(XmlCharacters, NoCharacterOfFourBytesIsInAName) {
    for (const char* character : {"\xF0\x90\x80\x80", "\xF0\xA0\x80\x80", "\xF3\xAF\xBF\xBD"}) {
        EXPECT_FALSE(xml::canBeInName(character, false));
        EXPECT_FALSE(expatTakes(std::string("<a") + character + "/>"));
    }
}

TEST(XmlCharacters, ReferenceToANumberIsReadOnFromWhereItWasCut) {
    using Kind = xml::NumberReference::Kind;
    const auto expect = [](const char* text, std::size_t known, Kind kind, std::size_t length) {
        const xml::NumberReference found = xml::readNumberReference(text, known);
        EXPECT_EQ(found.kind, kind) << text;
        EXPECT_EQ(found.length, length) << text;
    };
    expect("&#", 0, Kind::Cut, 0);
    expect("&#x", 2, Kind::Cut, 0);
    expect("&#000000065", 5, Kind::Cut, 0);
    expect("&#000000065;", 11, Kind::Whole, 12);
    expect("&#x41;", 0, Kind::Whole, 6);
    expect("&#xD800;", 0, Kind::WrongNumber, 8);
    expect("&#99999999999999999999;", 0, Kind::WrongNumber, 23);
    expect("&#1;", 0, Kind::WrongNumber, 4);
    expect("&#;", 0, Kind::None, 2);
    expect("&#6x;", 0, Kind::None, 3);
}

TEST(XmlCharacters, LongStretchesEndWhereOneLookAtEachByteSaysSo) {
    const std::string plain(70, 'a');
    const auto check = [&](auto skipLong, xml::ByteSet set) {
        for (unsigned byte = 0; byte < 256; ++byte) {
            for (std::size_t place = 0; place < plain.size(); ++place) {
                std::string text = plain;
                text[place] = static_cast<char>(byte);
                for (const std::size_t from : {std::size_t{0}, std::size_t{5}, place, plain.size()})
                    ASSERT_EQ(skipLong(text, from), xml::skip(text, from, set)) << byte << " at " << place;
            }
        }
    };
    check(xml::skipContent, xml::kContent);
    check(xml::skipValue, xml::kValue);
    check(xml::skipComment, xml::kComment);
    check(xml::skipCData, xml::kCData);
    check(xml::skipInstruction, xml::kInstruction);
}

}  // namespace
