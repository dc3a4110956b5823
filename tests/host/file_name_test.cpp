// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Names that others choose lead out of no folder.
#include "host/util/file_name.h"

#include <gtest/gtest.h>

#include <string>

#include "host/util/utf.h"

namespace {

using namespace std::string_literals;

constexpr FileNameRules kBoth[] = {FileNameRules::Plain, FileNameRules::Windows};

TEST(FileName, OrdinaryNamesArePlain) {
    for (const FileNameRules rules : kBoth) {
        for (const std::u16string& name :
             {u"L"s, u"Lda39a3ee5e6b4b0d3255bfef95601890afd80709"s, u"żółw i łoś.png"s, u"a..b"s, u".hidden"s,
              u"..."s + u"x"s, u"content"s, u"compact"s, u"com"s, u"com10"s, u"\U0001F600"s, std::u16string(255, u'n')})
            EXPECT_TRUE(isPlainFileName(name, rules)) << wtou(name);
    }
}

TEST(FileName, SeparatorsOfEveryTargetLeadOut) {
    for (const FileNameRules rules : kBoth) {
        for (const std::u16string& name : {u"a/b"s, u"/etc"s, u"a\\b"s, u"..\\x"s, u"../x"s, u"c:x"s, u"L:stream"s})
            EXPECT_FALSE(isPlainFileName(name, rules)) << wtou(name);
    }
}

TEST(FileName, TheFolderItselfAndItsParentAreNoNames) {
    for (const FileNameRules rules : kBoth) {
        for (const std::u16string& name : {u""s, u"."s, u".."s})
            EXPECT_FALSE(isPlainFileName(name, rules)) << wtou(name);
    }
}

TEST(FileName, ControlCharactersAreInNoName) {
    for (const FileNameRules rules : kBoth) {
        for (const std::u16string& name : {u"a\0b"s, u"a\nb"s, u"\x1B[0m"s, u"\x7F"s, u"a\u0085"s})
            EXPECT_FALSE(isPlainFileName(name, rules)) << wtou(name);
    }
}

TEST(FileName, TheLengthIsCountedInBytes) {
    EXPECT_TRUE(isPlainFileName(std::u16string(127, u'ł') + u"x"));
    EXPECT_FALSE(isPlainFileName(std::u16string(128, u'ł')));
    EXPECT_FALSE(isPlainFileName(std::u16string(256, u'n')));
    EXPECT_FALSE(isPlainFileName(std::u16string(100'000'000, u'n')));
}

TEST(FileName, WindowsKnowsMoreThatIsNoName) {
    for (const std::u16string& name :
         {u"a*"s, u"a?"s, u"\"a\""s, u"<a"s, u"a>"s, u"a|b"s, u"a."s, u"a "s, u"CON"s, u"con.png"s, u"Nul .x"s, u"aux"s,
          u"prn"s, u"com1"s, u"LPT9.txt"s, u"com\u00B2"s, u"conin$"s, u"CONOUT$"s}) {
        EXPECT_FALSE(isPlainFileName(name, FileNameRules::Windows)) << wtou(name);
        EXPECT_TRUE(isPlainFileName(name, FileNameRules::Plain)) << wtou(name);
    }
}

}  // namespace
