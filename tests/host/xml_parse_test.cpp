// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Reading well-formed text.
#include "host/util/xml_parse.h"

#include <gtest/gtest.h>

#include "host/util/utf.h"
#include "tests/host/xml_test.h"

namespace {

using namespace std::string_literals;

TEST(XmlParse, SeveralTopLevelElementsComeInOrder) {
    const std::vector<xmlElement> out = parsed("<a/><b x='1'>text</b><c><d/></c>");
    ASSERT_EQ(out.size(), 3u);
    EXPECT_EQ(out[0].name, u"a");
    EXPECT_EQ(out[1].text, u"text");
    EXPECT_EQ(out[2].GetXML(1), u"<c><d/></c>");
}

TEST(XmlParse, ElementsAreAppendedToWhatIsThere) {
    std::vector<xmlElement> out{xmlElement(u"old")};
    lutXMLParseA(out, "<new/>");
    ASSERT_EQ(out.size(), 2u);
    EXPECT_EQ(out[0].name, u"old");
    EXPECT_EQ(out[1].name, u"new");
}

TEST(XmlParse, CharacterDataBetweenElementsIsDropped) {
    // What is left of a declaration after its marks were taken out of a stream.
    EXPECT_EQ(readBack("xml version='1.0'<stream:stream xmlns='jabber:client'/> \n <a/>tail"),
              u"<stream:stream xmlns=\"jabber:client\"/><a/>");
    EXPECT_EQ(readBack(" &amp; <![CDATA[<b/>]]> <a/>"), u"<a/>");
}

TEST(XmlParse, NothingGivesNothing) {
    EXPECT_TRUE(parsed("").empty());
    EXPECT_TRUE(parsed({}).empty());
    EXPECT_TRUE(parsed(" \r\n\t ").empty());
    EXPECT_TRUE(parsed("just text").empty());
}

TEST(XmlParse, AMessageIsReadWhole) {
    const std::vector<xmlElement> out = parsed(
        "<message from=\"romeo@example.org/orchard\" to='juliet@example.org' type='chat' xml:lang='en'>"
        "<body>Art thou not Romeo?</body><x xmlns='jabber:x:event'><composing/></x></message>");
    ASSERT_EQ(out.size(), 1u);
    const xmlElement& message = out[0];
    EXPECT_EQ(message.name, u"message");
    EXPECT_EQ(message.attributes.size(), 4u);
    EXPECT_EQ(message.GetAttribute(u"from"), u"romeo@example.org/orchard");
    EXPECT_EQ(message.GetAttribute(u"xml:lang"), u"en");
    EXPECT_EQ(message.GetChild(u"body").text, u"Art thou not Romeo?");
    EXPECT_NE(message.GetChildPtr(u"x", u"jabber:x:event")->GetChildPtr(u"composing"), nullptr);
}

TEST(XmlParse, AllTextOfAnElementIsJoined) {
    const xmlElement element = parsed("<a> one <b>two</b> three <c/>&amp;<![CDATA[ <four> ]]></a>").at(0);
    EXPECT_EQ(element.text, u" one  three & <four> ");
    EXPECT_EQ(element.children.at(0).text, u"two");
}

TEST(XmlParse, ThePredefinedEntitiesAreExpanded) {
    const xmlElement element = parsed("<a b='&lt;&gt;&amp;&quot;&apos;'>&lt;&gt;&amp;&quot;&apos;</a>").at(0);
    EXPECT_EQ(element.text, u"<>&\"'");
    EXPECT_EQ(element.GetAttribute(u"b"), u"<>&\"'");
}

TEST(XmlParse, CharacterReferencesAreExpanded) {
    EXPECT_EQ(parsed("<a>&#65;&#x42;&#0000000000000000067;&#x20AC;&#128512;&#x10FFFF;&#9;&#10;&#13;</a>").at(0).text,
              u"ABC\u20AC\U0001F600\U0010FFFF\t\n\r");
}

TEST(XmlParse, AnExpandedReferenceIsNoMarkup) {
    EXPECT_EQ(parsed("<a>&amp;lt;&#60;b/&#62;&#38;amp;</a>").at(0).text, u"&lt;<b/>&amp;");
}

TEST(XmlParse, LineEndsInTextAreLineFeeds) {
    EXPECT_EQ(parsed("<a>1\r\n2\r3\n4\r\r\n5\t6</a>").at(0).text, u"1\n2\n3\n4\n\n5\t6");
    EXPECT_EQ(parsed("<a><![CDATA[1\r\n2\r3]]></a>").at(0).text, u"1\n2\n3");
    EXPECT_EQ(parsed("<a>1\n\n2\t\n3\r\n</a>").at(0).text, u"1\n\n2\t\n3\n");
    EXPECT_EQ(parsed("<a>1\r<b/>\n2</a>").at(0).text, u"1\n\n2");
}

TEST(XmlParse, WhiteSpaceInValuesBecomesBlanks) {
    EXPECT_EQ(parsed("<a b='1\t2\n3\r4\r\n5'/>").at(0).GetAttribute(u"b"), u"1 2 3 4 5");
    EXPECT_EQ(parsed("<a b='&#9;&#10;&#13;'/>").at(0).GetAttribute(u"b"), u"\t\n\r");
}

TEST(XmlParse, WhiteSpaceInTagsIsFree) {
    EXPECT_EQ(readBack("<a\n b = '1'\r\n\tc\t=\n\"2\" ><d /></a \n>"), u"<a b=\"1\" c=\"2\"><d/></a>");
}

TEST(XmlParse, EitherQuoteMayHoldTheOther) {
    const xmlElement element = parsed("<a b='\"' c=\"'\" d='>' e='/>'/>").at(0);
    EXPECT_EQ(element.GetAttribute(u"b"), u"\"");
    EXPECT_EQ(element.GetAttribute(u"c"), u"'");
    EXPECT_EQ(element.GetAttribute(u"d"), u">");
    EXPECT_EQ(element.GetAttribute(u"e"), u"/>");
}

TEST(XmlParse, NamesMayHoldWhatXmlAllows) {
    EXPECT_EQ(readBack("<_a:b-c.1 x-1_2:y='z'/>"), u"<_a:b-c.1 x-1_2:y=\"z\"/>");
    EXPECT_EQ(parsed("<\xC5\xBC\xC3\xB3\xC5\x82w \xC4\x85='1'></\xC5\xBC\xC3\xB3\xC5\x82w>").at(0).name,
              u"\u017C\u00F3\u0142w");
}

TEST(XmlParse, CommentsInstructionsAndDeclarationsArePassedOver) {
    EXPECT_EQ(readBack("\xEF\xBB\xBF<?xml version='1.0'?><!DOCTYPE a [<!ENTITY b \"]>\"><!-- ' --><?p ' ?>]>"
                       "<!-- <x> -- > & --><a><?php <b/> & ?>1<!--<b/>-->2<!-->-->3</a><!---->"),
              u"<a>123</a>");
}

TEST(XmlParse, ADeclarationHidesWhatIsQuotedOrCommentedInIt) {
    for (const char* declaration :
         {"<!DOCTYPE a \"><x/>\">", "<!DOCTYPE a '><x/>'>", "<!DOCTYPE a [<!-- ' -->]>", "<!DOCTYPE a [<!-- \" > -->]>",
          "<!DOCTYPE a [<?p ' ?>]>", "<!DOCTYPE a [<?p > ?>]>", "<!DOCTYPE a [<!E <x/> >]>", "<!DOCTYPE a \"'\" '\"'>"})
        EXPECT_EQ(readBack(std::string(declaration) + "<b/>"), u"<b/>") << declaration;
}

TEST(XmlParse, ADeclarationEndsWithItsOwnMarkOnly) {
    for (const char* declaration :
         {"<!DOCTYPE a [<!E x> <y/> ]>", "<!DOCTYPE a [<!--> <x/> > <y/> -->]>", "<!DOCTYPE a [<?p > <x/> > <y/> ?>]>",
          "<!DOCTYPE a [<?> > <y/> ?>]>", "<!DOCTYPE a x?>", "<!DOCTYPE a x!-->"})
        EXPECT_EQ(readBack(declaration + "<a/>"s), u"<a/>") << declaration;
}

TEST(XmlParse, NothingIsReadBehindADeclarationThatDoesNotEnd) {
    for (const char* declaration : {"<!DOCTYPE a [<!-- ]>", "<!DOCTYPE a [<?p ]>", "<!DOCTYPE a \" >"})
        EXPECT_EQ(readBack(declaration + "<a/>"s), u"") << declaration;
}

TEST(XmlParse, EachByteIsPartOfANameOrBlankOrNeither) {
    const auto letter = [](unsigned byte) {
        return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_' || byte == ':';
    };
    for (unsigned byte = 1; byte < 0x80; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        const bool blank = byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
        const bool part = letter(byte) || (byte >= '0' && byte <= '9') || byte == '-' || byte == '.';
        EXPECT_EQ(parsed("<" + text + " b=''/>").size(), letter(byte) ? 1u : 0u) << byte;
        EXPECT_EQ(parsed("<a" + text + "b=''/>").size(), blank ? 1u : 0u) << byte;
        EXPECT_EQ(parsed("<a b" + text + "=''/>").size(), blank || part ? 1u : 0u) << byte;
    }
}

TEST(XmlParse, AttributesThatAreAlmostOfOneNameAreTwo) {
    EXPECT_EQ(readBack("<a ab='1' ac='2' a='3'/>"), u"<a ab=\"1\" ac=\"2\" a=\"3\"/>");
}

TEST(XmlParse, CDataIsTakenAsItStands) {
    EXPECT_EQ(parsed("<a><![CDATA[<b>&amp;]]]]><![CDATA[>]]></a>").at(0).text, u"<b>&amp;]]>");
    EXPECT_EQ(parsed("<a><![CDATA[]]></a>").at(0).GetXML(1), u"<a/>");
}

TEST(XmlParse, BrokenUtf8BecomesReplacements) {
    EXPECT_EQ(parsed("<a b='\xFF'>x\xC5<c/>\xF0\x9F\x98</a>").at(0).text, u"x\xFFFD\xFFFD"s);
    EXPECT_EQ(parsed("<a b='1\xED\xA0\x80'/>").at(0).GetAttribute(u"b"), u"1\xFFFD\xFFFD\xFFFD"s);
}

TEST(XmlParse, ANulEndsTheText) {
    EXPECT_EQ(readBack("<a/>\0<b/>"s), u"<a/>");
    EXPECT_EQ(readBack("<a/><b>\0</b>"s), u"<a/>");
}

TEST(XmlParse, NothingIsReadBehindTheText) {
    // A view into a longer text: what follows would complete the element.
    const std::string whole = "<a/><b>12345678901234567890</b>";
    for (std::size_t length = 4; length < whole.size(); ++length)
        EXPECT_EQ(readBack(std::string_view(whole).substr(0, length)), u"<a/>") << length;
}

TEST(XmlParse, TextOfEveryLengthAtEveryPlace) {
    for (std::size_t length = 0; length < 1100; length += length < 80 ? 1 : 37) {
        for (const std::string_view letter : {"x", "\xC5\xBC", "\xF0\x9F\x98\x80", "&amp;"}) {
            const std::string piece = repeated("a", length) + std::string(letter) + repeated("b", length);
            const std::string text = "<a v='" + piece + "'>" + piece + "</a>";
            const std::u16string expected =
                utow(repeated("a", length) + std::string(letter == "&amp;" ? "&" : letter) + repeated("b", length));
            const xmlElement element = parsed(text).at(0);
            ASSERT_EQ(element.text, expected);
            ASSERT_EQ(element.GetAttribute(u"v"), expected);
        }
    }
}

TEST(XmlParse, AHundredAttributesKeepTheirOrder) {
    std::string text = "<a";
    for (int i = 0; i < 100; ++i) text += " n" + std::to_string(i) + "='" + std::to_string(i * i) + "'";
    const xmlElement element = parsed(text + "/>").at(0);
    ASSERT_EQ(element.attributes.size(), 100u);
    for (std::size_t i = 0; i < 100; ++i) {
        EXPECT_EQ(element.attributes[i].name, utow("n" + std::to_string(i)));
        EXPECT_EQ(element.attributes[i].value, utow(std::to_string(i * i)));
    }
}

TEST(XmlParse, ALongTextTakesNoMoreMemoryThanItNeeds) {
    const xmlElement element = parsed("<a>" + repeated("\xE2\x82\xAC", 1'000'000) + "</a>").at(0);
    EXPECT_EQ(element.text.size(), 1'000'000u);
    EXPECT_LE(element.text.capacity(), 1'250'000u);
}

/// The names of the elements that a sequence gives when its text is gone before they are read.
std::u16string namesOfDetached(std::string text, int readBefore = 0) {
    XmlSequence sequence(text);
    xmlElement element;
    std::u16string names;
    const auto readOne = [&] {
        if (!sequence.next(element)) return false;
        names += element.name + u' ';
        return true;
    };
    for (int i = 0; i < readBefore; ++i) readOne();
    sequence.detach();
    text.assign(text.size(), 'x');
    while (readOne()) {
    }
    EXPECT_FALSE(sequence.next(element));
    return names;
}

TEST(XmlSequence, GivesAllElementsAlsoWhenItsTextIsGone) {
    EXPECT_EQ(namesOfDetached("<a/>"), u"a ");
    EXPECT_EQ(namesOfDetached(" <a/> "), u"a ");
    EXPECT_EQ(namesOfDetached("<a><b/></a><!-- --><c/>text<d/>"), u"a c d ");
    EXPECT_EQ(namesOfDetached("<a/><b/><c/>", 1), u"a b c ");
    EXPECT_EQ(namesOfDetached("<a/><b/><c/>", 4), u"a b c ");
}

TEST(XmlSequence, GivesNoneOfATextWithoutElements) {
    EXPECT_EQ(namesOfDetached(""), u"");
    EXPECT_EQ(namesOfDetached(" \n"), u"");
    EXPECT_EQ(namesOfDetached("<a>"), u"");
}

TEST(XmlSequence, EndsWhereItsTextTurnsBadAlsoWhenThatIsGone) {
    EXPECT_EQ(namesOfDetached("<a/><b></c><d/>"), u"a ");
    EXPECT_EQ(namesOfDetached("<a></b><c/>"), u"");
}

}  // namespace
