// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/talk/contact_tree.h"

#include <gtest/gtest.h>
#include <random>

namespace oku::terminal::test {
namespace {

const QString kAla = QStringLiteral("ala@localhost");

ListedContact listed(const char* name, const char* group, Status status = Status::offline, int unread = 0) {
    ListedContact contact;
    contact.peer = {kAla, QString::fromUtf8(name).toLower() + "@localhost"};
    contact.name = QString::fromUtf8(name);
    contact.group = QString::fromUtf8(group);
    contact.status = status;
    contact.unread = unread;
    return contact;
}

class ContactTreeTest : public testing::Test {
protected:
    ContactTreeTest() { tree.reset({kAla}); }

    static std::string nameOf(const TreeRow& row) {
        if (row.kind == TreeRow::Kind::Account) return '<' + row.contact.peer.account.toStdString() + '>';
        if (row.kind == TreeRow::Kind::Contact) return row.contact.name.toStdString();
        return QStringLiteral("[%1 %2/%3]").arg(row.contact.group).arg(row.reachable).arg(row.members).toStdString();
    }

    // The rows from the first to the last, which are the same backwards.
    std::string rows() const {
        std::string forwards, backwards;
        for (auto place = tree.first(); place != tree.end(); place = tree.next(place))
            forwards += (forwards.empty() ? "" : " ") + nameOf(place->second);
        for (auto place = tree.last(); place != tree.end(); place = tree.before(place))
            backwards = nameOf(place->second) + (backwards.empty() ? "" : " ") + backwards;
        EXPECT_EQ(forwards, backwards);
        return forwards;
    }

    ContactTree tree;
};

TEST_F(ContactTreeTest, OrdersByGroupsAndReachAndNames) {
    for (const auto& contact : {listed("zenon", "Praca"), listed("Żaneta", "Praca", Status::away),
                                listed("Ola", "praca"), listed("Łukasz", "Praca"), listed("Ewa 10", "Dom"),
                                listed("Ewa 9", "Dom"), listed("Adam", "Praca", Status::dnd)})
        tree.put(contact);
    EXPECT_EQ(rows(), "[Dom 0/2] Ewa 9 Ewa 10 [praca 0/1] Ola [Praca 2/4] Adam Żaneta Łukasz zenon");
}

TEST_F(ContactTreeTest, FollowsWhatChanges) {
    tree.put(listed("Ewa", "Dom"));
    tree.put(listed("Ola", "Dom"));
    tree.put(listed("Ola", "Dom", Status::online));
    EXPECT_EQ(rows(), "[Dom 1/2] Ola Ewa");
    tree.put(listed("Ewa", "Praca", Status::offline, 3));
    EXPECT_EQ(rows(), "[Dom 1/1] Ola [Praca 0/1] Ewa");
    EXPECT_EQ(tree.at(ContactTree::headingOf(tree.find({kAla, "ewa@localhost"})->first))->second.unread, 3);
    tree.remove({kAla, "ola@localhost"});
    tree.remove({kAla, "nobody@localhost"});
    EXPECT_EQ(rows(), "[Praca 0/1] Ewa");
    ListedContact renamed = listed("Ewa", "Praca");
    renamed.name = QStringLiteral("Ewelina");
    tree.put(renamed);
    EXPECT_EQ(rows(), "[Praca 0/1] Ewelina");
    tree.reset({kAla});
    EXPECT_EQ(rows(), "");
    EXPECT_EQ(tree.last(), tree.end());
}

TEST_F(ContactTreeTest, FoldsGroupsAndKeepsThemFolded) {
    for (const auto& contact : {listed("Ewa", "Dom"), listed("Ola", "Praca", Status::online), listed("Adam", "Praca")})
        tree.put(contact);
    const auto heading = ContactTree::headingOf(tree.find({kAla, "ola@localhost"})->first);
    tree.fold(heading, true);
    EXPECT_EQ(rows(), "[Dom 0/1] Ewa [Praca 1/2]");
    EXPECT_EQ(tree.at(tree.find({kAla, "adam@localhost"})->first), tree.end()) << "nothing is shown behind it";
    tree.reset({kAla});
    tree.put(listed("Ola", "Praca", Status::online));
    tree.put(listed("Zyta", "Szkoła"));
    EXPECT_EQ(rows(), "[Praca 1/1] [Szkoła 0/1] Zyta");
    EXPECT_EQ(nameOf(tree.at(tree.find({kAla, "ola@localhost"})->first)->second), "[Szkoła 0/1]");
    tree.fold(heading, false);
    EXPECT_EQ(rows(), "[Praca 1/1] Ola [Szkoła 0/1] Zyta");
}

TEST_F(ContactTreeTest, LeavesOutWhoCannotBeReached) {
    for (const auto& contact : {listed("Ewa", "Dom"), listed("Ola", "Praca", Status::online), listed("Adam", "Praca"),
                                listed("Iza", "Praca", Status::offline, 1), listed("Zyta", "Szkoła")})
        tree.put(contact);
    tree.showReachableOnly(true);
    EXPECT_EQ(rows(), "[Praca 1/3] Iza Ola") << "and keeps what was not read";
    tree.showReachableOnly(false);
    EXPECT_EQ(rows(), "[Dom 0/1] Ewa [Praca 1/3] Iza Ola Adam [Szkoła 0/1] Zyta");
}

TEST_F(ContactTreeTest, PutsStrangersLastAndNamesAccounts) {
    tree.reset({kAla, "ala@praca"});
    ListedContact other = listed("Olek", "Dom");
    other.peer.account = QStringLiteral("ala@praca");
    ListedContact stranger = listed("obcy@localhost", "");
    stranger.stranger = true;
    ListedContact nowhere = listed("x", "y");
    nowhere.peer.account = QStringLiteral("ewa@localhost");
    for (const auto& contact : {other, stranger, listed("Zyta", "Żaby"), nowhere}) tree.put(contact);
    EXPECT_EQ(rows(), "<ala@localhost> [Żaby 0/1] Zyta [ 0/1] obcy@localhost <ala@praca> [Dom 0/1] Olek");
}

// Whatever happens, the rows are those of a tree that was built anew.
TEST_F(ContactTreeTest, StaysWhatAnewOneWouldBe) {
    std::mt19937 random(11);
    std::map<QString, ListedContact> all;
    const char* groups[] = {"Dom", "Praca", "Szkoła"};
    for (int round = 0; round < 3000; ++round) {
        ListedContact contact = listed(("k" + std::to_string(random() % 40)).c_str(), groups[random() % 3],
                                       static_cast<Status>(1 + random() % 8), random() % 3 == 0);
        if (random() % 4 == 0) {
            tree.remove(contact.peer);
            all.erase(contact.peer.jid);
        } else {
            tree.put(contact);
            all.insert_or_assign(contact.peer.jid, contact);
        }
        tree.showReachableOnly(random() % 2 == 0);
        if (!all.empty() && random() % 5 == 0) tree.fold(tree.find(all.begin()->second.peer)->first, random() % 2 == 0);
        if (round % 50 != 0) continue;
        const std::string changed = rows();
        tree.reset({kAla});
        for (const auto& [jid, one] : all) tree.put(one);
        EXPECT_EQ(rows(), changed);
    }
}

}  // namespace
}  // namespace oku::terminal::test
