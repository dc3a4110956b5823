// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The check of received text where one character more or less decides, against expat at each byte.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "stream/xml_probe.h"
#include "tests/support/plain_probe.h"

using namespace protolink;

namespace {

/// The check of a text that grows from `first` on by `step` bytes tells each time what expat tells of that part.
void expectSameBy(const std::string& text, std::size_t first, std::size_t step) {
    XmlProbe probe;
    for (std::size_t size = first; size <= text.size(); size += step) {
        const auto part = std::string_view(text).substr(0, size);
        const auto quick = probe.probeXml(part);
        const auto plain = probePlainly(part);
        ASSERT_EQ(quick.balanced, plain.balanced) << testing::PrintToString(part);
        if (plain.balanced) continue;
        ASSERT_EQ(quick.errorCode, plain.errorCode) << testing::PrintToString(part);
        ASSERT_EQ(quick.line, plain.line) << testing::PrintToString(part);
        ASSERT_EQ(quick.column, plain.column) << testing::PrintToString(part);
    }
}

/// Byte by byte, and the text at once.
void expectSame(const std::string& text, std::size_t first) {
    expectSameBy(text, first, 1);
    expectSameBy(text, text.size(), 1);
}

/// Where a character may stand, and what stands behind it.
constexpr std::string_view kPlaces[][2] = {{"<a>", "</a>"},     {"<a b='", "'/>"},          {"<a", "/>"},
                                           {"<a>&", ";</a>"},   {"<!--", "--><a/>"},        {"<![CDATA[", "]]><a/>"},
                                           {"<?x ", "?><a/>"},  {"<a b", "='' c=''/>"},     {"<", "/>"},
                                           {"<a>]", "]>x</a>"}, {"<a\n b='1' c='", "'>\n"}, {"<a></a", ">"}};

void expectSameInEachPlace(const std::string& character) {
    for (const auto& [before, behind] : kPlaces)
        expectSame(std::string(before) + character + std::string(behind), before.size());
}

TEST(XmlProbeEdges, SequencesOfBytes) {
    constexpr unsigned char kLeads[] = {0x7F, 0x80, 0xBF, 0xC0, 0xC1, 0xC2, 0xC3, 0xDF, 0xE0, 0xE1,
                                        0xEC, 0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xFF};
    constexpr unsigned char kFollowing[] = {'a', 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0};
    for (const unsigned char lead : kLeads) {
        for (const unsigned char following : kFollowing) {
            for (std::size_t place = 1; place < 4; ++place) {
                for (std::size_t size = place + 1; size <= 4; ++size) {
                    std::string bytes(size, '\x81');
                    bytes[0] = static_cast<char>(lead);
                    bytes[place] = static_cast<char>(following);
                    expectSame("<a>" + bytes + "</a>", 3);
                    expectSame("<a" + bytes + "='1'/>", 2);
                }
            }
        }
    }
    for (const char* text : {"\xEF\xBF\xBD", "\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xED\x9F\xBF", "\xEE\x80\x80",
                             "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "\xC2\xB7", "\xCC\x80", "\xE2\x82\xAC", "\xFF"})
        expectSameInEachPlace(text);
}

TEST(XmlProbeEdges, EachByteInEachPlace) {
    for (unsigned byte = 1; byte < 256; ++byte) expectSameInEachPlace(std::string(1, static_cast<char>(byte)));
}

TEST(XmlProbeEdges, NumbersOfCharacters) {
    for (const char* number :
         {"&#0;",       "&#8;",       "&#9;",          "&#10;",         "&#11;",      "&#12;",         "&#13;",
          "&#14;",      "&#31;",      "&#32;",         "&#126;",        "&#127;",     "&#128;",        "&#55295;",
          "&#55296;",   "&#57343;",   "&#57344;",      "&#65533;",      "&#65534;",   "&#65535;",      "&#65536;",
          "&#1114111;", "&#1114112;", "&#4294967296;", "&#4294967337;", "&#x9;",      "&#xB;",         "&#x1F;",
          "&#x20;",     "&#x7F;",     "&#xD7FF;",      "&#xD800;",      "&#xDFFF;",   "&#xE000;",      "&#xFFFD;",
          "&#xFFFE;",   "&#xFFFF;",   "&#x10000;",     "&#x10FFFF;",    "&#x110000;", "&#x100000041;", "&#/;",
          "&#:;",       "&#x/;",      "&#x:;",         "&#x@;",         "&#xG;",      "&#x`;",         "&#xg;",
          "&#xaF;",     "&#X41;",     "&#a;",          "&#x;",          "&#;",        "&#0000000065;", "&# 65;"}) {
        expectSame("<a>" + std::string(number) + "</a>", 3);
        expectSame("<a b='" + std::string(number) + "' b=''/>", 6);
    }
}

TEST(XmlProbeEdges, TwoMarksInEachPlace) {
    constexpr std::string_view kMarks[] = {"<", ">",  "/",  "=", "'", "\"", "&lt;", "&x;", "&#1;", "]",    "]]>", "-",
                                           "!", "--", "?>", "?", " ", "\n", "a",    "xml", "<b>",  "</a>", "mrn"};
    for (const auto& one : kMarks)
        for (const auto& other : kMarks) expectSameInEachPlace(std::string(one) + std::string(other));
}

TEST(XmlProbeEdges, NamesThatAreThoseOfTheWrapper) {
    for (const char* text : {"<mrn>", "<mrn><a>", "<mrm>", "<mr>", "<mrnx>", "<a><mrn>\n", "</mrn>", "</mrn ><",
                             "</mrnx>", "<mrn></mrn></mrn>x<", "<mrn/></mrn>&"})
        expectSame(text, 1);
}

TEST(XmlProbeEdges, DeclarationsAndTheirKin) {
    for (const char* text : {"<?xml?>",
                             "<?xml ?>",
                             "<?xml\n?>",
                             "<?xmL ?>",
                             "<?Xml?>",
                             "<?xmlx ?>",
                             "<?xm ?>",
                             "<?x?><a/>",
                             "<?x?a",
                             "<?x a?b?>",
                             "<?x ?"
                             "?><a/>",
                             "<?x\t?>",
                             "<?x>",
                             "<!-",
                             "<!-a",
                             "<![CDATA",
                             "<![CDATA]",
                             "<!a",
                             "<![",
                             "<!",
                             "<!---><a/>",
                             "<!----><a/>",
                             "<!--a--b",
                             "<![CDATA[]]]]><a/>",
                             "<![CDATA[]>]]><a/>"})
        expectSame(text, 1);
}

}  // namespace
