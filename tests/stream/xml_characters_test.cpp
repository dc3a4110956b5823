#include "stream/xml_characters.h"

#include <expat.h>
#include <gtest/gtest.h>

#include "host/util/utf.h"

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
    EXPECT_EQ(xml::numberReferenceLength("&#", 0), xml::kCutReference);
    EXPECT_EQ(xml::numberReferenceLength("&#x", 2), xml::kCutReference);
    EXPECT_EQ(xml::numberReferenceLength("&#000000065", 5), xml::kCutReference);
    EXPECT_EQ(xml::numberReferenceLength("&#000000065;", 11), 12u);
    EXPECT_EQ(xml::numberReferenceLength("&#x41;", 0), 6u);
    EXPECT_EQ(xml::numberReferenceLength("&#xD800;", 0), xml::kWrongReference);
    EXPECT_EQ(xml::numberReferenceLength("&#99999999999999999999;", 0), xml::kWrongReference);
    EXPECT_EQ(xml::numberReferenceLength("&#1;", 0), xml::kWrongReference);
    EXPECT_EQ(xml::numberReferenceLength("&#;", 0), xml::kWrongReference);
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
