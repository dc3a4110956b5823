// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QObject>
#include <QSet>

#include "messenger/terminal/talk/desk.h"

namespace oku::terminal {

/// What the messenger tells of the contacts on the accounts' lists, in words.
class ContactDisplay : public QObject {
public:
    explicit ContactDisplay(const Desk& desk);

    /// The list as it is now: what is different from the one that was told last is told.
    void onRosterComplete(const QString& account);
    /// Somebody's request for authorization has its answer: the next one is told again.
    void requestAnswered(const Peer& peer) { askedBy_.remove(peer); }

private:
    /// What of a contact is told when it changes.
    struct KnownContact {
        QString name;
        QString group;
        QString subscription;
        bool waiting = false;
        QString tune;
        QString mood;
    };
    static KnownContact knownOf(const Contact& contact) {
        return {contact.name, contact.group, contact.subscription, contact.waiting, contact.tune, contact.mood};
    }

    void onChanged(const QString& account, const Contact& contact);
    void onRemoved(const QString& account, const QString& jid);
    void onAuthorizationRequested(const QString& account, const QString& jid);
    void onConnection(const QString& account, ConnectionState state);
    void tellChange(const QString& account, const KnownContact& before, const Contact& now);
    void tellNews(const Peer& peer, const KnownContact& before, const Contact& now);
    void tellRemoved(const Peer& peer, const QString& name);

    Desk desk_;
    QHash<QString, QHash<QString, KnownContact>> known_;  ///< contacts as they were told last, by account and JID
    QSet<QString> online_;                                ///< the accounts that are
    QSet<Peer> askedBy_;                                  ///< whose request for authorization was told
};

}  // namespace oku::terminal
