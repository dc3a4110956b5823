// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/support/plain_probe.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "stream/received_text.h"

using namespace protolink;

namespace {

struct Case {
    const char* text;
    std::uint32_t errorCode, line, column;
};

// What expat tells of these texts in the wrapper of the check.
const Case kWaiting[] = {
    {"<mess", 4, 1, 48},
    {"<message><body>", 7, 1, 60},
    {"<message><body>he", 7, 1, 62},
    {"</stream:stream>", 7, 1, 45},
    {"<message/><", 4, 1, 54},
    {"a & b", 4, 1, 46},
    {"<a>\n<b", 4, 2, 2},
    {"<body>\xff", 4, 1, 49},
    {"<a b='&x;' c='&#0;'>", 11, 1, 43},
    {"<a b='&#0;' b=''>", 14, 1, 49},
    {"<?xml ", 5, 1, 43},
    {"<?xml ?>", 17, 1, 43},
    {"<?XML ?>", 4, 1, 48},
};

TEST(XmlProbe, TellsWhereTextStops) {
    for (const auto& row : kWaiting) {
        const auto result = probePlainly(row.text);
        EXPECT_FALSE(result.balanced) << row.text;
        EXPECT_EQ(result.errorCode, row.errorCode) << row.text;
        EXPECT_EQ(result.line, row.line) << row.text;
        EXPECT_EQ(result.column, row.column) << row.text;
    }
}

TEST(XmlProbe, TakesWhatIsBalanced) {
    // The last closes the wrapper itself, and nothing behind that counts.
    for (const char* text :
         {"", " ", "text", "<a/>", "<a></a><b/>", "<a>x</a> y <b/>", "<stream:stream/>", "&amp;", "<a/></mrn><b>&"}) {
        EXPECT_TRUE(probePlainly(text).balanced) << text;
        EXPECT_TRUE(XmlProbe().probeXml(text).balanced) << text;
    }
}

TEST(XmlProbe, KnowsEachOfManyAttributes) {
    constexpr int kMany = 40;
    std::string attributes;
    for (int i = 0; i < kMany; ++i) attributes += " n" + std::to_string(i) + "=''";
    // Each element has its own.
    EXPECT_TRUE(XmlProbe().probeXml("<a" + attributes + "/><b" + attributes + "/>").balanced);
    for (int i = 0; i < kMany; ++i) {
        const std::string text = "<a" + attributes + " n" + std::to_string(i) + "=''/>";
        EXPECT_FALSE(probePlainly(text).balanced) << i;
        EXPECT_FALSE(XmlProbe().probeXml(text).balanced) << i;
    }
}

/// The check of a growing text gives at each piece what the check by the letter gives.
void expectSame(const std::string& text, const std::vector<std::size_t>& ends) {
    XmlProbe probe;
    for (const auto end : ends) {
        const auto part = std::string_view(text).substr(0, end);
        const auto quick = probe.probeXml(part);
        const auto plain = probePlainly(part);
        ASSERT_EQ(quick.balanced, plain.balanced) << part;
        if (plain.balanced) continue;
        ASSERT_EQ(quick.errorCode, plain.errorCode) << part;
        ASSERT_EQ(quick.line, plain.line) << part;
        ASSERT_EQ(quick.column, plain.column) << part;
    }
}

TEST(XmlProbe, GrowingTextIsCheckedAsByTheLetter) {
    const std::string texts[] = {
        "<message from='bob@example.org/desk'><body>za\xc5\xbc\xc3\xb3\xc5\x82\xc4\x87 "
        "\xf0\x9f\xa6\x94</body></message><a/>",
        "<a b=\"x>y\" c='<'/>",
        "<a><!-- <b> --><![CDATA[<c>]]></a>",
        "<a>&lt;&#x41;&nothing;</a>",
        "<a b='1' b='2'/>",
        "</a><b/>",
        "<a>\r\n\t<b>\n</b></a>\n",
        "<!DOCTYPE x><a/>",
        "<a>]]></a>",
        "<a\n\nb='1'\n/>",
        "<a b='1'\tb='2' c='&x;' d='&#0;'>",
        "<a\nb='&x;' b='1'></a>",
        "<a b='&#xD800;' b='1'></a>",
        "<a>&#x110000;</a>",
        "<a>&#6x;</a>",
        "<a></b\n>",
        "</mrn><b>",
        "<a>\n<?xml version='1.0'?></a>",
        "<?XML ?>",
        "<![CDATB",
        "<!-- -- -->",
        "<a b='<'/>",
        "<a/ >",
        "<a b='1'c='2'/>",
        "<a b='\"' c=\"'\"/>",
        "<a b = '1'\n= '2'>",
        "<mrn><b></mrn></b>",
        "<mrn",
        "<mrn></mrn></mrn>",
        // Names of all alphabets, and characters that are no part of any or not the first.
        "<\xc5\xbc\xc3\xb3\xc5\x82w \xc4\x85='1' b\xc4\x87='2'></\xc5\xbc\xc3\xb3\xc5\x82w>",
        "<a\xc2\xb7 \xc2\xb7='1'/>",
        "<\xc2\xb7/>",
        "<a\xc3\x97/>",
        "<\xc3\x97/>",
        "<a \xf0\x9f\xa6\x94='1'/>",
        "<a\xff/>",
        "<a b\xc5='1'/>",
        "<a></a\xc5\x82>",
        "<a>&\xc5\x82;</a>",
        "<a b='&\xc3\xb3x;'/>",
        "<?\xc5\x82 x?><a/>",
        "<?x\xc3\x97 ?>",
        "<a>\xef\xbf\xbe</a>",
        "<a b='\xed\xa0\x80'/>",
        "<a>&#x1F994;&#55296;</a>",
        "<a>&#x;</a>",
        "<a>&#;</a>",
        "<a>&ltx;</a>",
        "<a>& amp;</a>",
    };
    for (const auto& text : texts) {
        std::vector<std::size_t> ends;
        for (std::size_t i = 1; i <= text.size(); ++i) ends.push_back(i);
        expectSame(text, ends);
    }
}

TEST(XmlProbe, RandomTextIsCheckedAsByTheLetter) {
    std::mt19937 random(1);
    const std::string pieces[] = {"<a>",       "</a>", "<b c='d'>", "</b>", "<e/>", "text", " ",    "\n",
                                  "&amp;",     "&",    "<",         ">",    "'",    "\"",   "<!--", "-->",
                                  "<![CDATA[", "]]>",  "\xc5\x82",  "\xc5", "<?x",  "?>",   "=",    "/"};
    for (int round = 0; round < 300; ++round) {
        std::string text;
        std::vector<std::size_t> ends;
        for (int i = 0; i < 12; ++i) {
            text += pieces[random() % std::size(pieces)];
            ends.push_back(text.size());
        }
        expectSame(text, ends);
    }
}

/// The same for received text, which is changed as it grows.
void expectSame(const std::vector<std::string>& pieces) {
    ReceivedText text;
    XmlProbe probe;
    std::string sofar;
    for (const std::string& piece : pieces) {
        sofar += "[" + piece + "]";
        probe.changed(text.append(piece));
        const auto quick = probe.probeXml(text.view(), text.settled());
        const auto plain = probePlainly(text.view());
        ASSERT_EQ(quick.balanced, plain.balanced) << sofar;
        if (plain.balanced) continue;
        ASSERT_EQ(quick.errorCode, plain.errorCode) << sofar;
        ASSERT_EQ(quick.line, plain.line) << sofar;
        ASSERT_EQ(quick.column, plain.column) << sofar;
    }
}

TEST(XmlProbe, RemovedDeclarationJoinsWhatStoodOnBothSides) {
    const std::vector<std::string> rows[] = {
        {"]]<?", ">?><message/>"},
        {"<a<?", "?>b>", "</a?b>"},
        {"<a b='1' c<?", "?>='2'/>"},
        {"<!-- -<?", "-> ?>", "-->"},
        {"<![CDATA[]<?", "]>?>", "<a>"},
        {"<a></a<?", "?>a>"},
        {"<![CDATA[<", "?", "?>", "<", "?", "]]>", "<a/>"},
        {"<![CDATA[<<??", "x?>", "y", "]]>"},
        {"<a>\r<?", "\n?>", "</a>"},
        {"<str<?eam:stream a=''>?>", "<b>", "</b>"},
    };
    for (const auto& pieces : rows) expectSame(pieces);
}

TEST(XmlProbe, RandomReceivedTextIsCheckedAsByTheLetter) {
    std::mt19937 random(2);
    const std::string tokens[] = {"<", "?", "<?", ">",  "?>", "<a>", "</a>",      "<b c='d'", " ",   "/",    "]]",
                                  "'", "=", "&",  "x;", "#",  "xml", "<![CDATA[", "<!--",     "-->", "\xc5", "\n"};
    for (int round = 0; round < 2'000; ++round) {
        std::vector<std::string> pieces(random() % 8 + 1);
        for (auto& piece : pieces)
            for (auto count = random() % 4; count > 0; --count) piece += tokens[random() % std::size(tokens)];
        expectSame(pieces);
    }
}

TEST(XmlProbe, KnowsNothingOfTheLastTextOnceItIsReset) {
    std::string deep, attributes = "<a";
    for (int i = 0; i < 1'000; ++i) {
        deep += "<level" + std::to_string(i) + ">";
        attributes += " n" + std::to_string(i) + "=''";
    }
    XmlProbe probe;
    for (const std::string& text : {std::string("<a b='"), std::string("<a c='' d=''><e>"), deep, attributes,
                                    deep + "]]>", std::string("</a>"), std::string("<a><b></b>\n")}) {
        const auto first = probe.probeXml(text);
        const auto plain = probePlainly(text);
        EXPECT_FALSE(first.balanced);
        EXPECT_EQ(first.errorCode, plain.errorCode);
        EXPECT_EQ(first.line, plain.line);
        EXPECT_EQ(first.column, plain.column);
        probe.reset();
        EXPECT_TRUE(probe.probeXml("<a b='' b2=''><c/></a>").balanced);
        probe.reset();
    }
}

}  // namespace
