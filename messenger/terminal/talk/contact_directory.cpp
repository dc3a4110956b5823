// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/contact_directory.h"

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {

QString ContactDirectory::nameOf(const Peer& peer) const {
    if (peer == Windows::strangers()) return say(Text::Strangers);
    const auto contact = messenger_.roster().contact(peer.account, peer.jid);
    return oneLine(contact && !contact->name.isEmpty() ? contact->name : peer.jid);
}

bool ContactDirectory::isContact(const Peer& peer) const {
    return messenger_.roster().contact(peer.account, peer.jid).has_value();
}

QString ContactDirectory::find(const QString& account, const QString& text, QString& jid) const {
    const QList<Contact> contacts = messenger_.roster().contacts(account);
    QStringList exact;
    QStringList beginning;
    for (const Contact& contact : contacts) {
        if (contact.jid == bareJid(text) || contact.name.compare(text, Qt::CaseInsensitive) == 0)
            exact.append(contact.jid);
        else if (contact.name.startsWith(text, Qt::CaseInsensitive) ||
                 contact.jid.startsWith(text, Qt::CaseInsensitive))
            beginning.append(contact.jid);
    }
    const QStringList& found = exact.isEmpty() ? beginning : exact;
    if (exact.isEmpty() && text.contains(u'@')) {
        jid = bareJid(text);
        return {};
    }
    if (found.isEmpty()) return say(Text::NoSuchContact, text);
    if (found.size() > 1) return say(Text::ManyContacts, text, found.join(QStringLiteral(", ")));
    jid = found.first();
    return {};
}

QStringList ContactDirectory::accountNames() const {
    QStringList names;
    for (const Account& one : messenger_.accounts().accounts()) names.append(one.jid);
    return names;
}

ListedContact ContactDirectory::listedOf(const QString& account, const Contact& contact) const {
    ListedContact listed;
    listed.peer = {account, contact.jid};
    listed.name = contact.name.isEmpty() ? contact.jid : contact.name;
    listed.group = contact.group;
    listed.status = contact.status;
    listed.hidden = contact.subscription == QLatin1String("none") || contact.subscription == QLatin1String("from");
    listed.unread = windows_.unread(listed.peer);
    return listed;
}

void ContactDirectory::eachListed(const std::function<void(const ListedContact&)>& take) const {
    for (const Account& one : messenger_.accounts().accounts())
        for (const Contact& contact : messenger_.roster().contacts(one.jid)) take(listedOf(one.jid, contact));
    for (const Peer& peer : windows_.conversations())
        if (const auto contact = listed(peer); contact && contact->stranger) take(*contact);
}

std::optional<ListedContact> ContactDirectory::listed(const Peer& peer) const {
    if (const auto contact = messenger_.roster().contact(peer.account, peer.jid))
        return listedOf(peer.account, *contact);
    if (!windows_.isOpen(peer)) return std::nullopt;
    ListedContact stranger;
    stranger.peer = peer;
    stranger.name = nameOf(peer);
    stranger.stranger = true;
    stranger.hidden = true;
    stranger.unread = windows_.unread(peer);
    return stranger;
}

}  // namespace oku::terminal
