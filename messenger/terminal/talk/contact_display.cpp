// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/contact_display.h"

#include <utility>

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/marks.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {

ContactDisplay::ContactDisplay(const Desk& desk) : desk_(desk) {
    const RosterFace& roster = desk.messenger.roster();
    connect(&roster, &RosterFace::rosterComplete, this, &ContactDisplay::onRosterComplete);
    connect(&roster, &RosterFace::contactChanged, this, &ContactDisplay::onChanged);
    connect(&roster, &RosterFace::contactRemoved, this, &ContactDisplay::onRemoved);
    connect(&roster, &RosterFace::authorizationRequested, this, &ContactDisplay::onAuthorizationRequested);
    connect(&desk.messenger.accounts(), &AccountsFace::connectionChanged, this, &ContactDisplay::onConnection);
    connect(&desk.messenger.accounts(), &AccountsFace::accountRemoved, this, [this](const QString& account) {
        known_.remove(account);
        online_.remove(account);
    });
}

void ContactDisplay::onConnection(const QString& account, ConnectionState state) {
    if (state == ConnectionState::online)
        online_.insert(account);
    else
        online_.remove(account);
    if (state == ConnectionState::offline) askedBy_.removeIf([&](const Peer& peer) { return peer.account == account; });
}

// Contacts that are new with a list are not told: after the first login that is all of them.
void ContactDisplay::onRosterComplete(const QString& account) {
    const QList<Contact> contacts = desk_.messenger.roster().contacts(account);
    QHash<QString, KnownContact> before = std::exchange(known_[account], {});
    QHash<QString, KnownContact>& known = known_[account];
    known.reserve(contacts.size());
    for (const Contact& contact : contacts) {
        known.insert(contact.jid, knownOf(contact));
        desk_.windows.befriend({account, contact.jid});
        if (const auto was = before.constFind(contact.jid); was != before.constEnd()) {
            tellChange(account, *was, contact);
            before.erase(was);
        }
        const Peer peer{account, contact.jid};
        if (contact.unread == 0 || desk_.windows.current() == peer) continue;
        desk_.windows.open(peer);
        desk_.windows.setUnread(peer, contact.unread);
    }
    for (auto gone = before.cbegin(); gone != before.cend(); ++gone) tellRemoved({account, gone.key()}, gone->name);
    desk_.display.contactsReset();
    desk_.display.changed();
}

void ContactDisplay::onChanged(const QString& account, const Contact& contact) {
    desk_.windows.befriend({account, contact.jid});
    QHash<QString, KnownContact>& known = known_[account];
    const auto before = known.constFind(contact.jid);
    if (before != known.constEnd())
        tellChange(account, *before, contact);
    else if (online_.contains(account))
        desk_.log.tellOf({account, contact.jid},
                         say(Text::ContactAdded, oneLine(contact.name), contact.jid, oneLine(contact.group)),
                         Style::Plain, QStringLiteral("+"));
    known.insert(contact.jid, knownOf(contact));
    desk_.display.contactTouched({account, contact.jid});
    desk_.display.changed();
}

void ContactDisplay::tellChange(const QString& account, const KnownContact& before, const Contact& now) {
    const Peer peer{account, now.jid};
    if (before.name != now.name)
        desk_.log.tellOf(peer, say(Text::ContactRenamed, oneLine(before.name), oneLine(now.name)), Style::Plain,
                         kInformation);
    if (before.group != now.group)
        desk_.log.tellOf(peer, say(Text::ContactMoved, oneLine(now.name), oneLine(now.group)), Style::Plain,
                         kInformation);
    if (before.subscription != now.subscription || before.waiting != now.waiting)
        desk_.log.tellOf(peer, say(Text::ContactSubscription, oneLine(now.name), subscriptionText(now)), Style::Plain,
                         kInformation);
    tellNews(peer, before, now);
}

// What ends with the contact's presence, or with the own connection, needs no words.
void ContactDisplay::tellNews(const Peer& peer, const KnownContact& before, const Contact& now) {
    const auto tell = [&](const QString& was, const QString& is, Text told, Text gone) {
        if (was == is || (is.isEmpty() && now.status == Status::offline)) return;
        const QString name = desk_.contacts.nameOf(peer);
        desk_.log.tellOf(peer, is.isEmpty() ? say(gone, name) : say(told, name, inOneLine(is)), Style::Plain,
                         kInformation);
    };
    tell(before.tune, now.tune, Text::ListensTo, Text::ListensNoMore);
    tell(before.mood, now.mood, Text::Feels, Text::FeelsNoMore);
}

void ContactDisplay::onRemoved(const QString& account, const QString& jid) {
    desk_.display.contactTouched({account, jid});
    tellRemoved({account, jid}, known_[account].take(jid).name);
}

void ContactDisplay::tellRemoved(const Peer& peer, const QString& name) {
    desk_.log.tellOf(peer, say(Text::ContactRemoved, oneLine(name.isEmpty() ? peer.jid : name), peer.jid), Style::Plain,
                     kInformation);
}

// Who asks again and again is told of once, until there is an answer or the next connection.
void ContactDisplay::onAuthorizationRequested(const QString& account, const QString& jid) {
    const qsizetype before = askedBy_.size();
    askedBy_.insert({account, jid});
    if (askedBy_.size() == before) return;
    desk_.log.tellOf({account, jid}, say(Text::WantsPresence, desk_.contacts.nameOf({account, jid}), jid),
                     Style::Question, kQuestion, Shown::InSight);
}

}  // namespace oku::terminal
