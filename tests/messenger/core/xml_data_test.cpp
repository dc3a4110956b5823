// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/xml/xml_data.h"

#include <gtest/gtest.h>

#include "messenger/core/xml/tag_scanner.h"

namespace oku::test {
namespace {

TEST(XmlData, ExpandsWhatIsAReferenceAndNothingElse) {
    EXPECT_EQ(readValue("&lt;&gt;&amp;&quot;&apos;&#65;&#x42;&#x17c;&#x1F98a;"), "<>&\"'AB\xc5\xbc\xf0\x9f\xa6\x8a");
    for (const char* text : {"&", "&;", "&lt", "&nothing;", "&#;", "&#x;", "&#0;", "&#xD800;", "&#xFFFE;", "&#x110000;",
                             "&#99999999999999999999;", "&#6x;", "& &", "&LT;"})
        EXPECT_EQ(readValue(text), text);
    EXPECT_EQ(readValue("&amp;lt;&&lt;"), "&lt;&<");
}

TEST(XmlData, MakesOneKindOfBlanksAndLineEnds) {
    EXPECT_EQ(readValue("a\r\nb\nc\rd\te&#10;f"), "a b c d e\nf");
    EXPECT_EQ(readText("a\r\nb\nc\rd\te&#13;f"), "a\nb\nc\nd\te\rf");
}

TEST(XmlData, TextIsWhatStandsInTheElementItself) {
    EXPECT_EQ(readText("a<![CDATA[&lt;<b>\r\n]]>&lt;<c>d<![CDATA[e]]></c><f/><!-- g --><?h i?>j"), "a&lt;<b>\n<j");
    EXPECT_EQ(readText("<![CDATA[]]>"), "");
    EXPECT_EQ(readText(""), "");
}

TEST(TagScanner, FindsTheElementBehindADocumentType) {
    const auto list = splitStanzas("<!DOCTYPE a [<!ENTITY b '>'> <!-- > ' --> <?c > ?> ]><iq a='1'/>");
    ASSERT_EQ(list.stanzas.size(), 1u);
    EXPECT_EQ(list.stanzas[0].tag.name, "iq");
}

TEST(TagScanner, TellsWhereAnAttributeStands) {
    const std::string text = "<a/><iq id = 'x' from=\"y\"/>";
    const auto list = splitStanzas(text);
    ASSERT_EQ(list.stanzas.size(), 2u);
    const auto span = attributeSpan(list.stanzas[1].tag, "id");
    ASSERT_TRUE(span);
    EXPECT_EQ(text.substr(span->begin, span->end - span->begin), "id = 'x'");
    EXPECT_FALSE(attributeSpan(list.stanzas[1].tag, "to"));
}

}  // namespace
}  // namespace oku::test
