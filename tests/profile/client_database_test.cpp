// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The cache of what clients can do, and the files that it survives.
#include "profile/client_database.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/fake_platform.h"

using namespace protolink;

namespace {

using harness::world;

constexpr char kPath[] = "/p/XMPPClientDB.xml";

xmlElement queryOf(std::u16string_view feature) {
    xmlElement query(u"query");
    xmlElement child(u"feature");
    child.SetAttribute(u"var", feature);
    query.SetChild(child);
    return query;
}

class ClientDatabase : public testing::Test {
protected:
    ClientDatabase() { world() = harness::FakeWorld(); }

    std::string saved() {
        database.save(u"/p/");
        return world().files[kPath];
    }
    void load(const std::string& content) {
        world().files[kPath] = content;
        database.load(u"/p/");
    }

    CClientDatabase database;
};

TEST_F(ClientDatabase, AnEmptyOneFindsNothingAndSavesAnEmptyFile) {
    EXPECT_EQ(database.find(u"h1"), nullptr);
    EXPECT_EQ(database.find(u""), nullptr);
    EXPECT_EQ(saved(), "");
}

TEST_F(ClientDatabase, TheFirstEntryMakesTheRoot) {
    database.add(queryOf(u"a"), u"h1");
    const auto* entry = database.find(u"h1");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->name, u"entry");
    EXPECT_EQ(entry->GetAttribute(u"hash"), u"h1");
    EXPECT_NE(entry->GetChildPtr(u"query"), nullptr);
    EXPECT_EQ(saved(), "<dbRoot><entry hash=\"h1\"><query><feature var=\"a\"/></query></entry></dbRoot>");
}

TEST_F(ClientDatabase, TheFirstAnswerWins) {
    database.add(queryOf(u"a"), u"h1");
    database.add(queryOf(u"b"), u"h1");
    EXPECT_EQ(saved(), "<dbRoot><entry hash=\"h1\"><query><feature var=\"a\"/></query></entry></dbRoot>");
}

TEST_F(ClientDatabase, HashesAreComparedExactly) {
    database.add(queryOf(u"a"), u"h1");
    database.add(queryOf(u"b"), u"H1");
    EXPECT_EQ(database.find(u"h"), nullptr);
    EXPECT_EQ(database.find(u"h11"), nullptr);
    EXPECT_EQ(database.find(u"h1")->GetChildPtr(u"query")->children.front().GetAttribute(u"var"), u"a");
    EXPECT_EQ(database.find(u"H1")->GetChildPtr(u"query")->children.front().GetAttribute(u"var"), u"b");
}

TEST_F(ClientDatabase, EntriesStandInTheOrderOfTheirComing) {
    database.add(xmlElement(u"query"), u"z");
    database.add(xmlElement(u"query"), u"a");
    EXPECT_EQ(saved(), "<dbRoot><entry hash=\"z\"><query/></entry><entry hash=\"a\"><query/></entry></dbRoot>");
}

TEST_F(ClientDatabase, WhatWasSavedIsReadAgain) {
    database.add(queryOf(u"ż <&> \"'"), u"a<b&c\"d");
    const auto first = saved();
    CClientDatabase again;
    again.load(u"/p/");
    ASSERT_NE(again.find(u"a<b&c\"d"), nullptr);
    world().files.clear();
    again.save(u"/p/");
    EXPECT_EQ(world().files[kPath], first);
}

TEST_F(ClientDatabase, EntriesOfAFileAreFoundAndAddedTo) {
    load("<other><entry hash=\"h1\"/><thing hash=\"h2\"/><entry/></other>");
    ASSERT_NE(database.find(u"h1"), nullptr);
    EXPECT_EQ(database.find(u"h1")->GetChildPtr(u"query"), nullptr);
    EXPECT_EQ(database.find(u"h2"), nullptr);
    database.add(xmlElement(u"query"), u"h2");
    EXPECT_EQ(saved(),
              "<other><entry hash=\"h1\"/><thing hash=\"h2\"/><entry/><entry hash=\"h2\"><query/></entry></other>");
}

TEST_F(ClientDatabase, CutAnywhereItIsEmpty) {
    const std::string content = "<dbRoot><entry hash=\"h1\"><query><feature var=\"ż\"/></query></entry></dbRoot>";
    for (std::size_t length = 0; length < content.size(); ++length) {
        world().files[kPath] = content.substr(0, length);
        CClientDatabase cut;
        cut.load(u"/p/");
        EXPECT_EQ(cut.find(u"h1"), nullptr) << length;
    }
    load(content);
    EXPECT_NE(database.find(u"h1"), nullptr);
}

TEST_F(ClientDatabase, AnEntryWithoutAHashIsNotFoundByAnEmptyOne) {
    load("<dbRoot><entry><query/></entry><entry hash=\"h1\"><query/></entry></dbRoot>");
    EXPECT_EQ(database.find(u""), nullptr);
    EXPECT_NE(database.find(u"h1"), nullptr);
}

TEST_F(ClientDatabase, IsSavedWithoutLineBreaks) {
    load("<dbRoot><entry hash=\"h1\"><query/></entry></dbRoot>");
    EXPECT_EQ(saved(), "<dbRoot><entry hash=\"h1\"><query/></entry></dbRoot>");
}

TEST_F(ClientDatabase, OfHostileBytesIsEmptyOrReadInPart) {
    for (const std::string& content : {std::string("\0\0\0\0", 4), std::string("\xFF\xFE<\0d\0", 6),
                                       std::string("<!DOCTYPE a [<!ENTITY b \"c\">]><a>&b;</a>"), std::string("<a/><b"),
                                       std::string("]]>"), std::string(100000, '<')}) {
        world().files[kPath] = content;
        CClientDatabase hostile;
        hostile.load(u"/p/");
        EXPECT_EQ(hostile.find(u"h1"), nullptr);
        hostile.add(xmlElement(u"query"), u"h1");
        EXPECT_NE(hostile.find(u"h1"), nullptr);
    }
}

TEST_F(ClientDatabase, AQueryOfAnyDepthIsKeptAndSaved) {
    constexpr std::size_t kDepth = 200000;
    std::string content = "<dbRoot><entry hash=\"h1\"><query>";
    for (std::size_t i = 0; i < kDepth; ++i) content += "<a>";
    content += "x";
    for (std::size_t i = 0; i < kDepth; ++i) content += "</a>";
    content += "</query></entry></dbRoot>";
    load(content);
    EXPECT_NE(database.find(u"h1"), nullptr);
    EXPECT_EQ(saved(), content);
}

TEST_F(ClientDatabase, ManyEntriesAreFoundWithoutALongWalk) {
    constexpr int kEntries = 20000;
    for (int i = 0; i < kEntries; ++i) {
        const auto digits = std::to_string(i);
        database.add(xmlElement(u"query"), std::u16string(digits.begin(), digits.end()));
    }
    EXPECT_NE(database.find(u"0"), nullptr);
    EXPECT_NE(database.find(u"19999"), nullptr);
    EXPECT_EQ(database.find(u"20000"), nullptr);
}

TEST_F(ClientDatabase, AFileThatCannotBeOpenedIsLeftAlone) {
    load("<dbRoot><entry hash=\"h1\"/></dbRoot>");
    world().unopenable.insert(kPath);
    CClientDatabase other;
    other.load(u"/p/");
    EXPECT_EQ(other.find(u"h1"), nullptr);
    other.add(xmlElement(u"query"), u"h2");
    other.save(u"/p/");
    EXPECT_EQ(world().files[kPath], "<dbRoot><entry hash=\"h1\"/></dbRoot>");
}

TEST_F(ClientDatabase, AFailedSaveLeavesTheOldFile) {
    world().files[kPath] = "old";
    world().unwritable.insert(kPath);
    database.add(xmlElement(u"query"), u"h2");
    EXPECT_EQ(saved(), "old");
}

}  // namespace
