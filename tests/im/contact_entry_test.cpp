// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Contacts by address, and their resources in order of first appearance.
#include "im/contact_entry.h"

#include <gtest/gtest.h>

using namespace protolink;

namespace {

ResourceEntry named(std::u16string name) {
    ResourceEntry entry;
    entry.resource = std::move(name);
    return entry;
}

std::u16string namesOf(const ResourceList& list) {
    std::u16string names;
    for (const auto& entry : list) names += entry.resource + u" ";
    return names;
}

TEST(ResourceList, KeepsTheOrderOfFirstAppearance) {
    ResourceList list;
    for (const auto* name : {u"z", u"a", u"m", u"b"}) list.append(named(name));
    EXPECT_EQ(namesOf(list), u"z a m b ");
}

TEST(ResourceList, AnErasedOneLeavesTheOrderOfTheOthers) {
    ResourceList list;
    for (const auto* name : {u"z", u"a", u"m", u"b"}) list.append(named(name));
    list.erase(u"a");
    list.erase(u"never");
    EXPECT_EQ(namesOf(list), u"z m b ");
    list.append(named(u"a"));
    EXPECT_EQ(namesOf(list), u"z m b a ");
}

TEST(ResourceList, FindsTheExactNameOnly) {
    ResourceList list;
    list.append(named(u"Desk"));
    EXPECT_NE(list.find(u"Desk"), nullptr);
    EXPECT_EQ(list.find(u"desk"), nullptr);
    EXPECT_EQ(list.find(u"Des"), nullptr);
    EXPECT_EQ(list.find(u""), nullptr);
    list.append(named(u""));
    EXPECT_NE(list.find(u""), nullptr);
}

TEST(ResourceList, ANewOneKnowsNothingOfItsClient) {
    ResourceList list;
    const auto& entry = list.append(named(u"desk"));
    EXPECT_EQ(entry.resChatStates + entry.resCaps + entry.resPing + entry.resDiscoDone + entry.resFileTransfer, 0u);
    EXPECT_TRUE(entry.resCapsVer.empty());
}

TEST(ResourceList, MovesWithItsContact) {
    ResourceList list;
    list.append(named(u"a-name-that-is-longer-than-any-short-string-buffer"));
    list.append(named(u"b"));
    const ResourceList moved = std::move(list);
    ResourceList again = ResourceList();
    again.append(named(u"c"));
    EXPECT_EQ(namesOf(moved), u"a-name-that-is-longer-than-any-short-string-buffer b ");
    EXPECT_NE(again.find(u"c"), nullptr);
}

TEST(Contacts, LookingUpMakesAnEmptyEntry) {
    Contacts contacts;
    EXPECT_TRUE(contacts.inOrder().empty());
    EXPECT_TRUE(contacts.entry(u"bob@example.org").jid.empty());
    EXPECT_EQ(contacts.inOrder().size(), 1u);
    contacts.entry(u"bob@example.org").name = u"Bob";
    EXPECT_EQ(contacts.entry(u"bob@example.org").name, u"Bob");
    EXPECT_EQ(contacts.inOrder().size(), 1u);
}

TEST(Contacts, FindingAResourceMakesTheEntryToo) {
    Contacts contacts;
    EXPECT_EQ(contacts.findResource(u"bob@example.org", u"desk"), nullptr);
    EXPECT_EQ(contacts.inOrder().size(), 1u);
    contacts.entry(u"bob@example.org").resources.append(named(u"desk"));
    EXPECT_NE(contacts.findResource(u"bob@example.org", u"desk"), nullptr);
    EXPECT_EQ(contacts.findResource(u"eve@example.org", u"desk"), nullptr);
}

TEST(Contacts, AreOrderedByTheirKey) {
    Contacts contacts;
    for (const auto* jid : {u"b@x", u"a@x", u"c@x", u"ą@x", u""}) contacts.entry(jid).jid = jid;
    std::u16string order;
    for (const auto* entry : contacts.inOrder()) order += entry->jid + u" ";
    EXPECT_EQ(order, u" a@x b@x c@x ą@x ");
}

TEST(Contacts, AreGoneAfterClearing) {
    Contacts contacts;
    contacts.entry(u"bob@example.org").jid = u"bob@example.org";
    contacts.clear();
    EXPECT_TRUE(contacts.inOrder().empty());
    EXPECT_TRUE(contacts.entry(u"bob@example.org").jid.empty());
}

TEST(Contacts, AreCalledByTheirNameOrTheirAddress) {
    Contacts contacts;
    contacts.entry(u"bob@example.org").name = u"Bob";
    contacts.entry(u"eve@example.org");
    EXPECT_EQ(contacts.displayName(u"bob@example.org"), u"Bob");
    EXPECT_EQ(contacts.displayName(u"eve@example.org"), u"eve@example.org");
}

TEST(Contacts, AskingHowAStrangerIsCalledKeepsNothing) {
    Contacts contacts;
    EXPECT_EQ(contacts.displayName(u"bob@example.org"), u"bob@example.org");
    EXPECT_TRUE(contacts.inOrder().empty());
}

}  // namespace
