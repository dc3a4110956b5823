// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Composing, escaping and restoring.
#include "host/util/xml_compose.h"

#include <gtest/gtest.h>

#include <random>

#include "host/util/utf.h"
#include "tests/host/xml_test.h"

namespace {

TEST(Compose, AnEmptyInnerTextGivesTheShortForm) {
    EXPECT_EQ(lutCPW(u"ping", u"", {{u"xmlns", u"urn:xmpp:ping"}}), u"<ping xmlns=\"urn:xmpp:ping\"/>");
    EXPECT_EQ(lutCPW(u"a", u"", {}), u"<a/>");
    EXPECT_EQ(lutCPW(u"a", u""), u"<a/>");
}

TEST(Compose, StanzasAreBuiltFromTheInsideOut) {
    const std::u16string ping = lutCPW(u"ping", u"", {{u"xmlns", u"urn:xmpp:ping"}});
    EXPECT_EQ(lutCPW(u"iq", ping, {{u"type", u"get"}, {u"to", u"example.org"}, {u"id", u"1"}}),
              u"<iq type=\"get\" to=\"example.org\" id=\"1\"><ping xmlns=\"urn:xmpp:ping\"/></iq>");
}

TEST(Compose, InnerTextStandsAsItIs) { EXPECT_EQ(lutCPW(u"a", u"<b/>&amp;&", {}), u"<a><b/>&amp;&</a>"); }

TEST(Compose, AttributesKeepTheirOrderAndEmptyOnesStay) {
    EXPECT_EQ(lutCPW(u"a", u"", {{u"z", u""}, {u"b", u"1"}, {u"a", u""}}), u"<a z=\"\" b=\"1\" a=\"\"/>");
}

TEST(Compose, ValuesAreEscaped) {
    EXPECT_EQ(lutCPW(u"a", u"", {{u"b", u"<&>\"' \u017C\U0001F600"}}),
              u"<a b=\"&lt;&amp;&gt;&quot;&apos; \u017C\U0001F600\"/>");
    EXPECT_EQ(lutCPW(u"a", u"",
                     {{u"b", std::u16string_view(u"1\0\x02"
                                                 u"2",
                                                 4)}}),
              u"<a b=\"12\"/>");
}

TEST(Compose, BlanksOfValuesAreTheSameWhenTheyAreReadBack) {
    EXPECT_EQ(lutCPW(u"a", u"", {{u"b", u"1\t2\n3\r4 5"}}), u"<a b=\"1&#9;2&#10;3&#13;4 5\"/>");
    const auto read = parsed(wtou(lutCPW(u"a", u"", {{u"b", u"1\t2\r\n3"}})));
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read.front().GetAttribute(u"b"), u"1\t2\r\n3");
}

TEST(Escape, TheFiveCharactersBecomeEntities) {
    EXPECT_EQ(lutXMLEscapeW(u"a<b>c&d\"e'f"), u"a&lt;b&gt;c&amp;d&quot;e&apos;f");
    EXPECT_EQ(lutXMLEscapeW(u"&amp;"), u"&amp;amp;");
    EXPECT_EQ(lutXMLEscapeW(u""), u"");
}

TEST(Escape, WhatXmlForbidsIsLeftOutAndAllElseStays) {
    for (char32_t unit = 0; unit < 0x10000; ++unit) {
        const bool forbidden = (unit < 0x20 && unit != '\t' && unit != '\n' && unit != '\r') ||
                               (unit >= 0xD800 && unit < 0xE000) || unit >= 0xFFFE;
        const std::u16string text = u"a" + std::u16string(1, static_cast<char16_t>(unit)) + u"b";
        if (std::u16string_view(u"<>&\"'").find(static_cast<char16_t>(unit)) != std::u16string_view::npos) continue;
        ASSERT_EQ(lutXMLEscapeW(text), forbidden ? u"ab" : text);
    }
}

TEST(Escape, NothingIsReadBehindTheText) {
    EXPECT_EQ(lutXMLEscapeW(std::u16string_view(u"ab").substr(0, 1)), u"a");
    EXPECT_EQ(lutXMLEscapeW(std::u16string_view(u"&&").substr(0, 1)), u"&amp;");
    EXPECT_EQ(lutXMLEscapeW(std::u16string_view(u"\U0001F600").substr(0, 1)), u"");
    EXPECT_EQ(lutXMLRestorW(std::u16string_view(u"&amp;").substr(0, 4)), u"&amp");
    EXPECT_EQ(lutXMLRestorW(std::u16string_view(u"&#65;").substr(0, 4)), u"&#65");
    EXPECT_EQ(lutXMLRestorW(std::u16string_view(u"&#x41;").substr(0, 2)), u"&#");
}

TEST(Escape, BlanksStayAndSoDoesTheReplacementCharacter) { EXPECT_EQ(lutXMLEscapeW(u"\r\n\t\xFFFD"), u"\r\n\t\xFFFD"); }

TEST(Escape, PairsStayWholeAndBrokenOnesGo) {
    EXPECT_EQ(lutXMLEscapeW(u"\U0001F600"), u"\U0001F600");
    EXPECT_EQ(lutXMLEscapeW(std::u16string(u"\xD83D\xD83D\xDE00\xDE00", 4)), u"\U0001F600");
    EXPECT_EQ(lutXMLEscapeW(std::u16string(1, u'\xD83D')), u"");
}

TEST(Escape, NoPastedTextBreaksTheStream) {
    std::mt19937 random(5);
    for (int round = 0; round < 5'000; ++round) {
        std::u16string text;
        for (std::size_t left = random() % 40; left; --left)
            text += static_cast<char16_t>(random() % 2 ? random() % 0x80 : random() % 0x10000);
        const std::u16string stanza = lutCPW(u"a", lutXMLEscapeW(text), {{u"b", text}});
        ASSERT_EQ(parsed(wtou(stanza)).size(), 1u) << testing::PrintToString(text);
    }
}

TEST(Restore, EntitiesAndReferencesAreExpanded) {
    EXPECT_EQ(lutXMLRestorW(u"&lt;&gt;&amp;&quot;&apos;"), u"<>&\"'");
    EXPECT_EQ(lutXMLRestorW(u"&#65;&#x42;&#x1F600;&#0000067;"), u"AB\U0001F600C");
    EXPECT_EQ(lutXMLRestorW(u"&amp;lt;"), u"&lt;") << "once only";
}

TEST(Restore, AnythingElseStandsAsItIs) {
    for (const std::u16string_view text :
         {u"", u"&", u"&&", u"&;", u"&amp", u"&nbsp;", u"&#;", u"&#x;", u"&#0;", u"&#xD800;", u"&#x110000;",
          u"&#1114112;", u"&#99999999999999999999;", u"a & b; c", u"<b>", u"&#65", u"&\u017C;", u"&AMP;", u"&#\xFF11;"})
        EXPECT_EQ(lutXMLRestorW(text), text);
    EXPECT_EQ(lutXMLRestorW(u"&&amp;&"), u"&&&");
}

TEST(Restore, IsTheInverseOfEscaping) {
    std::mt19937 random(6);
    for (int round = 0; round < 2'000; ++round) {
        std::u16string text;
        for (std::size_t left = random() % 40; left; --left) {
            const auto unit = static_cast<char16_t>(random() % 2 ? 0x20 + random() % 0x60 : 0xA0 + random() % 0xD000);
            text += unit;
        }
        ASSERT_EQ(lutXMLRestorW(lutXMLEscapeW(text)), text);
    }
}

TEST(Restore, ManyAmpersandsAreNoMoreThanLong) {
    const std::u16string digits(std::size_t{1} << 20, u'1');
    const std::u16string ampersands(std::size_t{1} << 20, u'&');
    EXPECT_LT(processorSeconds([&] {
                  EXPECT_EQ(lutXMLRestorW(ampersands), ampersands);
                  EXPECT_EQ(lutXMLRestorW(u"&#" + digits).size(), digits.size() + 2);
              }),
              0.5 * kSlowness);
}

}  // namespace
