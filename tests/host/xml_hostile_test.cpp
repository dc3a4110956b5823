// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Text that is bad, cut, huge or written to be slow.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>

#include "host/util/utf.h"
#include "tests/host/xml_test.h"

namespace {

using namespace std::string_literals;

/// Whatever is bad ends the text: what was complete before stays, nothing behind is read.
class XmlBad : public testing::TestWithParam<const char*> {};

TEST_P(XmlBad, KeepsWhatWasCompleteAndDropsTheRest) {
    EXPECT_EQ(readBack("<ok>1</ok>"s + GetParam() + "<never/>"), u"<ok>1</ok>");
    EXPECT_EQ(readBack("<ok>1</ok><half><whole/>"s + GetParam() + "</half><never/>"), u"<ok>1</ok>");
}

INSTANTIATE_TEST_SUITE_P(Tags, XmlBad,
                         testing::Values("<a></b>", "</a>", "<a><b></a></b>", "<a", "<a ", "<a b", "<a b=", "<a b='",
                                         "<a b='1", "<a b='1'", "<a b=1/>", "<a b/>", "<a b='1'c='2'/>", "<a/ >",
                                         "<a//>", "</ a>", "< a/>", "<1/>", "<-a/>", "<>", "</>", "<a b='<'/>",
                                         "<a b='1' b='2'/>", "<a =''/>", "<a 1=''/>", "<a></a b>", "<a></a", "<a><",
                                         "<a\x01/>", "<a></aa>", "<aa></a>", "<a b='1' c='2' d='3' b='4'/>"));

// What is bad stays bad when an end tag follows that would fit.
INSTANTIATE_TEST_SUITE_P(ClosedTags, XmlBad,
                         testing::Values("<a b></a>", "<a b=1></a>", "<a b='1'c='2'></a>", "<a b='1' b='2'></a>",
                                         "<a b='1' c='2' c='3'/>", "<a ='1'></a>", "<a b='<'></a>", "<a b='&x;'></a>",
                                         "<a b!'1'/>", "<a b!'1'></a>", "<a b=!1!/>", "<a b=x1x></a>", "<a b='1></a>",
                                         "<a/ ></a>", "<a></a x></a>", "<a></ax></a>", "<a !></a>", "<a b= c='1'></a>",
                                         "<a b ></a>"));

INSTANTIATE_TEST_SUITE_P(References, XmlBad,
                         testing::Values("<a>&</a>", "<a>&;</a>", "<a>&amp</a>", "<a>&unknown;</a>", "<a>&nbsp;</a>",
                                         "<a>&AMP;</a>", "<a>& amp;</a>", "<a>&amp ;</a>", "<a>&#;</a>", "<a>&#x;</a>",
                                         "<a>&#65</a>", "<a>&#6a;</a>", "<a>&#xG;</a>", "<a>&#X41;</a>",
                                         "<a>&#-65;</a>", "<a>&#0;</a>", "<a>&#1;</a>", "<a>&#xD800;</a>",
                                         "<a>&#xDFFF;</a>", "<a>&#xFFFE;</a>", "<a>&#xFFFF;</a>", "<a>&#x110000;</a>",
                                         "<a>&#99999999999999999999999999;</a>", "<a>&#x100000041;</a>",
                                         "<a b='&unknown;'/>", "<a b='&amp'/>", "<a b='&#0;'/>", "&unknown;",
                                         "<a>&am<b/>p;</a>"));

INSTANTIATE_TEST_SUITE_P(Others, XmlBad,
                         testing::Values("<!", "<!-", "<!--", "<!-- --", "<!DOCTYPE", "<!DOCTYPE a [", "<!DOCTYPE '>",
                                         "<?", "<? ?", "<?>", "<![CDATA[", "<![CDATA[ ]]", "<a><![CDATA[x</a>",
                                         "<a>\x01</a>", "<a>\x1F</a>", "<a b='\x02'/>", "<a><![CDATA[\x03]]></a>",
                                         "<!ENTITY a 'b'><a>&a;</a>"));

TEST(XmlHostile, AnEntityThatTheTextDeclaresIsNotExpanded) {
    EXPECT_EQ(readBack("<ok/><!DOCTYPE a [<!ENTITY lol 'lol'><!ENTITY more '&lol;&lol;&lol;'>]><a>&more;</a>"),
              u"<ok/>");
}

TEST(XmlHostile, ARepeatedAttributeAmongManyIsFound) {
    std::string text = "<a";
    for (int i = 0; i < 50; ++i) text += " n" + std::to_string(i) + "=''";
    EXPECT_EQ(parsed(text + "/>").size(), 1u);
    EXPECT_EQ(parsed(text + " n7=''/>").size(), 0u);
}

TEST(XmlHostile, ABadValueAmongManyIsFound) {
    for (int bad = 0; bad < 40; ++bad) {
        std::string text = "<a";
        for (int i = 0; i < 40; ++i) text += " n" + std::to_string(i) + (i == bad ? "='&x;'" : "=''");
        EXPECT_EQ(parsed(text + "></a>").size(), 0u) << bad;
    }
}

TEST(XmlHostile, EveryCutOfATextKeepsTheCompleteElements) {
    const std::string text = "<a x='1&amp;'>\xC5\xBC<!-- c --></a><?p i?><b><![CDATA[x]]>&#65;</b> <c><d e=\"f\"/></c>";
    const std::size_t ends[] = {text.find("</a>") + 4, text.find("</b>") + 4, text.size()};
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const auto complete = static_cast<std::size_t>(
            std::count_if(std::begin(ends), std::end(ends), [length](std::size_t end) { return end <= length; }));
        EXPECT_EQ(parsed(std::string_view(text).substr(0, length)).size(), complete) << length;
    }
}

TEST(XmlHostile, AnyBytesAreSurvived) {
    std::mt19937 random(99);
    constexpr std::string_view kPieces[] = {"<",    ">",         "/",     "=",    "'",    "\"",   "&",    ";",
                                            "#",    "x",         "a",     "<a>",  "</a>", "<a",   "-",    "!",
                                            "<!--", "-->",       "]]>",   "?>",   "<?",   " ",    "\r",   "\n",
                                            "[",    "<![CDATA[", "&amp;", "\xC5", "\xF0", "\x80", "\x01", "&#"};
    for (int round = 0; round < 30'000; ++round) {
        std::string text;
        for (std::size_t left = random() % 30; left; --left) {
            if (random() % 8)
                text += kPieces[random() % std::size(kPieces)];
            else
                text += static_cast<char>(random() % 256);
        }
        for (const xmlElement& element : parsed(text)) {
            // What was read can be written, and reads back as the same tree.
            const std::u16string written = element.GetXML(1);
            ASSERT_EQ(readBack(wtou(written)), written) << testing::PrintToString(text);
        }
    }
}

/// A random tree, with every awkward character in texts and values.
xmlElement randomTree(std::mt19937& random, int depth) {
    const auto text = [&random] {
        constexpr std::u16string_view kUnits = u"ab \t\n\r<>&\"';\u017C\u20AC\xFFFD]-";
        std::u16string out;
        for (std::size_t left = random() % 20; left; --left) {
            if (random() % 6)
                out += kUnits[random() % kUnits.size()];
            else
                out += u"\U0001F600";
        }
        return out;
    };
    xmlElement element(std::u16string(1 + random() % 12, u'n'), text());
    for (std::size_t i = random() % 4; i; --i) element.SetAttribute(std::u16string(i, u'a'), text());
    if (depth)
        for (std::size_t i = random() % 4; i; --i) element.SetChild(randomTree(random, depth - 1), random() % 2);
    return element;
}

void expectSame(const xmlElement& one, const xmlElement& other) {
    ASSERT_EQ(one.name, other.name);
    ASSERT_EQ(one.text, other.text);
    ASSERT_EQ(one.attributes.size(), other.attributes.size());
    for (std::size_t i = 0; i < one.attributes.size(); ++i) {
        ASSERT_EQ(one.attributes[i].name, other.attributes[i].name);
        ASSERT_EQ(one.attributes[i].value, other.attributes[i].value);
    }
    ASSERT_EQ(one.children.size(), other.children.size());
    for (std::size_t i = 0; i < one.children.size(); ++i) expectSame(one.children[i], other.children[i]);
}

TEST(XmlHostile, EveryTreeComesBackFromItsText) {
    std::mt19937 random(4711);
    for (int round = 0; round < 1'000; ++round) {
        const xmlElement tree = randomTree(random, 4);
        const std::vector<xmlElement> out = parsed(wtou(tree.GetXML(0)));
        ASSERT_EQ(out.size(), 1u);
        expectSame(out[0], tree);
    }
}

struct Shape {
    const char* name;
    /// The text of about `size` bytes.
    std::string (*text)(std::size_t size);
};

std::string manyAttributes(std::size_t size) {
    std::string text = "<a";
    for (std::size_t i = 0; text.size() < size; ++i) text += " a" + std::to_string(i) + "=''";
    return text + "/>";
}

std::string longNames(std::size_t size) {
    // Names that differ at their ends only, as long as they are many.
    std::string text = "<a";
    for (std::size_t i = 0; text.size() < size; ++i) text += " " + repeated("n", 350) + std::to_string(i) + "=''";
    return text + "/>";
}

const Shape kShapes[] = {
    {"open tags", [](std::size_t size) { return repeated("<a>", size / 3); }},
    {"nested", [](std::size_t size) { return repeated("<a>", size / 7) + repeated("</a>", size / 7); }},
    {"top-level", [](std::size_t size) { return repeated("<a/>", size / 4); }},
    {"less-than signs", [](std::size_t size) { return std::string(size, '<'); }},
    {"ampersands", [](std::size_t size) { return "<a>" + std::string(size, '&'); }},
    {"references", [](std::size_t size) { return "<a>" + repeated("&lt;", size / 4) + "</a>"; }},
    {"endless reference", [](std::size_t size) { return "<a>&#" + std::string(size, '1'); }},
    {"zeros", [](std::size_t size) { return "<a>&#" + std::string(size, '0') + "65;</a>"; }},
    {"comment", [](std::size_t size) { return "<a><!--" + std::string(size, '-'); }},
    {"comments", [](std::size_t size) { return "<a>" + repeated("<!---->x", size / 8) + "</a>"; }},
    {"cdata", [](std::size_t size) { return "<a><![CDATA[" + std::string(size, ']'); }},
    {"cdatas", [](std::size_t size) { return "<a>" + repeated("<![CDATA[]]]]>", size / 14) + "</a>"; }},
    {"instruction", [](std::size_t size) { return "<a><?" + std::string(size, '?'); }},
    {"declaration", [](std::size_t size) { return "<!" + std::string(size, '<'); }},
    {"quotes in a declaration", [](std::size_t size) { return "<!" + repeated("''", size / 2); }},
    {"blanks in a tag", [](std::size_t size) { return "<a" + std::string(size, ' '); }},
    {"carriage returns", [](std::size_t size) { return "<a>" + std::string(size, '\r') + "</a>"; }},
    {"value without end", [](std::size_t size) { return "<a b='" + std::string(size, 'x'); }},
    {"long name", [](std::size_t size) { return "<" + std::string(size, 'n') + "/>"; }},
    {"broken bytes", [](std::size_t size) { return "<a>" + std::string(size, '\x80') + "</a>"; }},
    {"pieces of text", [](std::size_t size) { return "<a>" + repeated("x<b/>", size / 5) + "</a>"; }},
    {"longer pieces of text",
     [](std::size_t size) { return "<a>" + repeated(repeated("\xC5\xBC", 400) + "<b/>", size / 804) + "</a>"; }},
    {"attributes", manyAttributes},
    {"attributes with long names", longNames},
};

TEST(XmlHostile, NoShapeIsSlow) {
    constexpr std::size_t kSize = 128 * 1024;
    for (const Shape& shape : kShapes) {
        const std::string text = shape.text(kSize);
        EXPECT_LT(processorSeconds([&] { parsed(text); }), 0.05 * kSlowness) << shape.name;
    }
}

TEST(XmlHostile, TimeGrowsWithTheLengthOnly) {
    for (const Shape& shape : kShapes) {
        const std::string text = shape.text(2 * 1024 * 1024);
        EXPECT_LT(processorSeconds([&] { parsed(text); }), 0.5 * kSlowness) << shape.name;
    }
}

TEST(XmlHostile, AMillionAttributes) {
    const std::vector<xmlElement> out = parsed(manyAttributes(11'900'000));
    ASSERT_EQ(out.size(), 1u);
    EXPECT_GT(out[0].attributes.size(), 1'000'000u);
}

TEST(XmlHostile, AStanzaOf64MiB) {
    const std::string text = "<a>" + std::string(std::size_t{64} << 20, 'x') + "</a>";
    const std::vector<xmlElement> out = parsed(text);
    ASSERT_EQ(out.size(), 1u);
    EXPECT_EQ(out[0].text.size(), std::size_t{64} << 20);
}

}  // namespace
