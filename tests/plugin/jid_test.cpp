// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/jid.h"

#include <gtest/gtest.h>

using namespace protolink;

namespace {

TEST(Jid, LettersAreLoweredInAllButTheResourceAndTheWhole) {
    const auto jid = parseJID(u"Alice@Example.ORG/Home");
    EXPECT_EQ(jid.node, u"alice");
    EXPECT_EQ(jid.domain, u"example.org");
    EXPECT_EQ(jid.resource, u"Home");
    EXPECT_EQ(jid.bare, u"alice@example.org");
    EXPECT_EQ(jid.full, u"Alice@Example.ORG/Home");
    EXPECT_EQ(jid.hasNode, 1u);
    EXPECT_EQ(jid.hasResource, 1u);
}

TEST(Jid, NeitherSeparatorGivesADomain) {
    const auto jid = parseJID(u"Example.ORG");
    EXPECT_EQ(jid.domain, u"example.org");
    EXPECT_EQ(jid.bare, jid.domain);
    EXPECT_EQ(jid.full, u"Example.ORG");
    EXPECT_EQ(jid.node, u"");
    EXPECT_EQ(jid.hasNode, 0u);
    EXPECT_EQ(jid.hasResource, 0u);
}

TEST(Jid, SlashAloneGivesDomainAndResource) {
    const auto jid = parseJID(u"Example.ORG/Res");
    EXPECT_EQ(jid.domain, u"example.org");
    EXPECT_EQ(jid.resource, u"Res");
    EXPECT_EQ(jid.bare, u"example.org");
    EXPECT_EQ(jid.full, u"Example.ORG/Res");
    EXPECT_EQ(jid.hasNode, 0u);
    EXPECT_EQ(jid.hasResource, 1u);
}

TEST(Jid, AtSignAloneGivesNodeAndDomain) {
    const auto jid = parseJID(u"Bob@Example.ORG");
    EXPECT_EQ(jid.node, u"bob");
    EXPECT_EQ(jid.bare, u"bob@example.org");
    EXPECT_EQ(jid.full, u"Bob@Example.ORG");
    EXPECT_EQ(jid.hasResource, 0u);
}

TEST(Jid, SlashAtTheEndIsAnEmptyResource) {
    const auto jid = parseJID(u"bob@example.org/");
    EXPECT_EQ(jid.hasResource, 1u);
    EXPECT_EQ(jid.resource, u"");
    EXPECT_EQ(jid.full, u"bob@example.org/");
}

TEST(Jid, OnlyTheFirstAtSignCounts) {
    const auto jid = parseJID(u"a@b@c");
    EXPECT_EQ(jid.node, u"a");
    EXPECT_EQ(jid.domain, u"b@c");
}

TEST(Jid, OnlyTheFirstSlashCounts) {
    const auto jid = parseJID(u"a@b/c/d");
    EXPECT_EQ(jid.domain, u"b");
    EXPECT_EQ(jid.resource, u"c/d");
}

TEST(Jid, AtSignBehindTheSlashLeavesNoDomain) {
    const auto jid = parseJID(u"room/me@home");
    EXPECT_EQ(jid.domain, u"");
    EXPECT_EQ(jid.node, u"room/me");
    EXPECT_EQ(jid.resource, u"me@home");
    EXPECT_EQ(jid.bare, u"room/me@");
    EXPECT_EQ(jid.full, u"room/me@/me@home");
}

TEST(Jid, EmptyInputGivesNothing) {
    const auto jid = parseJID(u"");
    EXPECT_EQ(jid.bare, u"");
    EXPECT_EQ(jid.full, u"");
    EXPECT_EQ(jid.hasNode, 0u);
    EXPECT_EQ(jid.hasResource, 0u);
}

TEST(Jid, EmptyNodeIsThere) {
    const auto jid = parseJID(u"@x");
    EXPECT_EQ(jid.hasNode, 1u);
    EXPECT_EQ(jid.node, u"");
    EXPECT_EQ(jid.bare, u"@x");
}

TEST(Jid, PolishLettersAreLoweredToo) { EXPECT_EQ(parseJID(u"ŻÓŁĆ@Ł.pl").bare, u"żółć@ł.pl"); }

}  // namespace
