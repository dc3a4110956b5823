// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// Contacts in the order in which a list shows them: by accounts and groups, those who can be reached first. A change
/// of one contact costs the logarithm of all, and walking on costs nothing for what lies elsewhere.
#pragma once

#include <map>
#include <optional>
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <set>
#include <utility>
#include <vector>

#include "messenger/core/values/account.h"
#include "messenger/core/values/contact.h"
#include "messenger/terminal/screen/log_entry.h"

namespace oku::terminal {

/// What a list shows of a contact.
struct ListedContact {
    Peer peer;
    QString name;
    QString group;
    Status status = Status::offline;
    bool stranger = false;  ///< a conversation with somebody who is on no list
    bool hidden = false;    ///< does not let us see the presence
    int unread = 0;
};

struct TreeRow {
    enum class Kind { Account, Group, Contact };

    Kind kind = Kind::Contact;
    ListedContact contact;  ///< of a heading: account and group only
    // Of a group's heading:
    int members = 0;
    int reachable = 0;
    int inFront = 0;  ///< who stands in front: reachable, or with something unread
    int unread = 0;
    bool folded = false;
};

class ContactTree {
public:
    struct Key {
        int account = 0;        ///< its place among the accounts
        int section = 0;        ///< its heading, its groups, its strangers
        QByteArray groupOrder;  ///< collation key
        QString group;
        int level = 0;  ///< the group's heading, those in front, the others
        QByteArray nameOrder;
        QString jid;

        bool operator<(const Key& other) const;
        bool operator==(const Key& other) const { return !(*this < other) && !(other < *this); }
    };
    using Rows = std::map<Key, TreeRow>;
    using Place = Rows::const_iterator;

    /// Empties the tree. The accounts get headings where they are several.
    void reset(const QStringList& accounts);
    /// Adds or changes a contact. Nothing for an account that is not there.
    void put(const ListedContact& contact);
    void remove(const Peer& peer);

    /// Groups stay folded through a reset.
    void fold(const Key& group, bool folded);
    void showReachableOnly(bool only) { reachableOnly_ = only; }

    bool empty() const { return rows_.empty(); }

    /// Rows that are shown, by order. `end` where there is none.
    Place end() const { return rows_.end(); }
    Place first() const { return shownFrom(rows_.begin()); }
    Place last() const { return before(rows_.end()); }
    Place next(Place place) const { return shownFrom(std::next(place)); }
    Place before(Place place) const;
    /// The row with this key, or the one that is shown behind its place.
    Place at(const Key& key) const { return shownFrom(rows_.lower_bound(key)); }
    /// A contact, also one that is not shown.
    Place find(const Peer& peer) const;
    static Key headingOf(const Key& key);

private:
    using Group = std::pair<QString, QString>;  ///< account and name

    Key groupKey(int account, const ListedContact& contact);
    bool isShown(Place place) const;
    Place shownFrom(Place place) const;
    void count(const Key& key, const ListedContact& contact, int change);

    Rows rows_;
    std::map<QString, int> accounts_;
    std::map<Group, Rows::iterator> contacts_;   ///< by account and JID
    std::map<QString, QByteArray> groupOrders_;  ///< made once a name, and shared by its contacts
    std::set<Group> folded_;
    bool reachableOnly_ = false;
};

}  // namespace oku::terminal
