// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/talk/contact_tree.h"

#include <unicode/ucol.h>
#include <array>
#include <memory>
#include <tuple>

namespace oku::terminal {
namespace {

enum Section { kAccountHeading, kGroups, kStrangers };
enum Level { kHeading, kInFront, kOthers, kBehindAll };

// A key by whose bytes texts are in the order of a dictionary, whatever their language, and numbers in theirs.
QByteArray collationKey(const QString& text) {
    struct Close {
        void operator()(UCollator* collator) const { ucol_close(collator); }
    };
    static const std::unique_ptr<UCollator, Close> collator = [] {
        UErrorCode error = U_ZERO_ERROR;
        std::unique_ptr<UCollator, Close> root(ucol_open("root", &error));
        ucol_setAttribute(root.get(), UCOL_NUMERIC_COLLATION, UCOL_ON, &error);
        return root;
    }();
    std::array<uint8_t, 256> bytes;
    const int32_t length =
        ucol_getSortKey(collator.get(), reinterpret_cast<const UChar*>(text.constData()),
                        static_cast<int32_t>(text.size()), bytes.data(), static_cast<int32_t>(bytes.size()));
    const auto used = std::min<std::size_t>(bytes.size(), static_cast<std::size_t>(std::max(length, 0)));
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(used));
}

bool isReachable(const ListedContact& contact) {
    return contact.status != Status::offline && contact.status != Status::error;
}
bool isInFront(const ListedContact& contact) { return isReachable(contact) || contact.unread > 0; }

}  // namespace

bool ContactTree::Key::operator<(const Key& other) const {
    const auto fields = [](const Key& key) {
        return std::tie(key.account, key.section, key.groupOrder, key.group, key.level, key.nameOrder, key.jid);
    };
    return fields(*this) < fields(other);
}

void ContactTree::reset(const QStringList& accounts) {
    rows_.clear();
    contacts_.clear();
    accounts_.clear();
    groupOrders_.clear();
    for (int place = 0; place < accounts.size(); ++place) {
        accounts_.emplace(accounts.at(place), place);
        if (accounts.size() < 2) continue;
        TreeRow heading;
        heading.kind = TreeRow::Kind::Account;
        heading.contact.peer.account = accounts.at(place);
        Key key;
        key.account = place;
        rows_.emplace(std::move(key), std::move(heading));
    }
}

ContactTree::Key ContactTree::groupKey(int account, const ListedContact& contact) {
    Key key;
    key.account = account;
    key.section = contact.stranger ? kStrangers : kGroups;
    QByteArray& order = groupOrders_[contact.group];
    if (order.isEmpty()) order = collationKey(contact.group);
    key.groupOrder = order;
    key.group = contact.group;
    return key;
}

void ContactTree::put(const ListedContact& contact) {
    const auto account = accounts_.find(contact.peer.account);
    if (account == accounts_.end()) return;
    const auto known = contacts_.find({contact.peer.account, contact.peer.jid});
    Rows::node_type node;
    if (known != contacts_.end()) {
        count(known->second->first, known->second->second.contact, -1);
        node = rows_.extract(known->second);
    }
    Key key = groupKey(account->second, contact);
    key.level = isInFront(contact) ? kInFront : kOthers;
    key.nameOrder = collationKey(contact.name);
    key.jid = contact.peer.jid;
    count(key, contact, 1);
    Rows::iterator place;
    if (node) {
        node.key() = std::move(key);
        node.mapped().contact = contact;
        place = rows_.insert(std::move(node)).position;
    } else {
        place = rows_.emplace(std::move(key), TreeRow{TreeRow::Kind::Contact, contact}).first;
    }
    contacts_.insert_or_assign({contact.peer.account, contact.peer.jid}, place);
}

void ContactTree::remove(const Peer& peer) {
    const auto known = contacts_.find({peer.account, peer.jid});
    if (known == contacts_.end()) return;
    count(known->second->first, known->second->second.contact, -1);
    rows_.erase(known->second);
    contacts_.erase(known);
}

// Keeps the heading of the contact's group, which is there as long as somebody is in it.
void ContactTree::count(const Key& key, const ListedContact& contact, int change) {
    const auto heading = rows_.try_emplace(headingOf(key)).first;
    TreeRow& row = heading->second;
    if (row.members == 0) {
        row.kind = TreeRow::Kind::Group;
        row.contact.peer.account = contact.peer.account;
        row.contact.group = contact.group;
        row.contact.stranger = contact.stranger;
        row.folded = folded_.contains({contact.peer.account, contact.group});
    }
    row.members += change;
    row.unread += change * contact.unread;
    if (isReachable(contact)) row.reachable += change;
    if (isInFront(contact)) row.inFront += change;
    if (row.members == 0) rows_.erase(heading);
}

void ContactTree::fold(const Key& group, bool folded) {
    const auto heading = rows_.find(headingOf(group));
    if (heading == rows_.end() || heading->second.kind != TreeRow::Kind::Group) return;
    heading->second.folded = folded;
    const ListedContact& named = heading->second.contact;
    if (folded)
        folded_.insert({named.peer.account, named.group});
    else
        folded_.erase({named.peer.account, named.group});
}

ContactTree::Place ContactTree::find(const Peer& peer) const {
    const auto known = contacts_.find({peer.account, peer.jid});
    return known == contacts_.end() ? rows_.end() : Place(known->second);
}

ContactTree::Key ContactTree::headingOf(const Key& key) {
    Key heading = key;
    heading.level = kHeading;
    heading.nameOrder.clear();
    heading.jid.clear();
    return heading;
}

bool ContactTree::isShown(Place place) const {
    const auto& [key, row] = *place;
    if (row.kind == TreeRow::Kind::Account) return true;
    if (row.kind == TreeRow::Kind::Group) return !reachableOnly_ || row.inFront > 0;
    if (reachableOnly_ && key.level == kOthers) return false;
    return !rows_.find(headingOf(key))->second.folded;
}

// What is not shown ends with its group.
ContactTree::Place ContactTree::shownFrom(Place place) const {
    while (place != rows_.end() && !isShown(place)) {
        Key behind = headingOf(place->first);
        behind.level = kBehindAll;
        place = rows_.lower_bound(behind);
    }
    return place;
}

ContactTree::Place ContactTree::before(Place place) const {
    while (place != rows_.begin()) {
        --place;
        if (isShown(place)) return place;
        if (place->second.kind != TreeRow::Kind::Contact) continue;
        // All of the group that stand above are hidden too when it is folded, else those of the same level.
        Key above = headingOf(place->first);
        above.level = rows_.find(above)->second.folded ? kInFront : place->first.level;
        place = rows_.lower_bound(above);
    }
    return rows_.end();
}

}  // namespace oku::terminal
