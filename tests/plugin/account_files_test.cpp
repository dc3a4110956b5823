// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/account_files.h"

#include <gtest/gtest.h>

using namespace protolink;

namespace {

TEST(ModuleBaseName, IsTheFileNameWithoutFolderAndEnding) {
    EXPECT_EQ(moduleBaseName(u"/usr/lib/oku/protoLink.module"), u"protoLink");
    EXPECT_EQ(moduleBaseName(u"protoLink.module"), u"protoLink");
    EXPECT_EQ(moduleBaseName(u"/a/two.dots.module"), u"two.dots");
    EXPECT_EQ(moduleBaseName(u"/a/noending"), u"noending");
    EXPECT_EQ(moduleBaseName(u""), u"");
}

TEST(ModuleBaseName, FirstCharacterIsNeverLookedAt) {
    EXPECT_EQ(moduleBaseName(u"/x"), u"/x");
    EXPECT_EQ(moduleBaseName(u".module"), u".module");
}

TEST(AccountName, StandsBetweenTheFirstUnderscoreAndTheLastDot) {
    EXPECT_EQ(accountNameFromFile(u"protoLink_work.config"), u"work");
    EXPECT_EQ(accountNameFromFile(u"protoLink_a_b.config"), u"a_b");
    EXPECT_EQ(accountNameFromFile(u"protoLink_two.dots.config"), u"two.dots");
    EXPECT_EQ(accountNameFromFile(u"/profile/protoLink_work.config"), u"work");
    EXPECT_EQ(accountNameFromFile(u"my_link_work.config"), u"link_work");
    EXPECT_EQ(accountNameFromFile(u"_x"), u"x");
}

TEST(AccountName, IsTheWholeInputWhenThereIsNone) {
    EXPECT_EQ(accountNameFromFile(u"protoLink_.config"), u"protoLink_.config");
    EXPECT_EQ(accountNameFromFile(u"protoLink.config"), u"protoLink.config");
    EXPECT_EQ(accountNameFromFile(u"protoLink_"), u"protoLink_");
    EXPECT_EQ(accountNameFromFile(u""), u"");
}

}  // namespace
