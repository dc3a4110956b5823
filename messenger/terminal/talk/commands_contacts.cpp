// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Commands about contacts.
#include <algorithm>
#include <array>
#include <QMap>

#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/command_families.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

// Those who can be reached stand first, then by name.
bool before(const Contact& one, const Contact& other) {
    const bool oneGone = one.status == Status::offline;
    const bool otherGone = other.status == Status::offline;
    if (oneGone != otherGone) return otherGone;
    return one.name.compare(other.name, Qt::CaseInsensitive) < 0;
}

bool fits(const Contact& contact, const QString& filter) {
    if (filter.isEmpty()) return true;
    if (filter == QLatin1String("online")) return contact.status != Status::offline;
    return contact.group.contains(filter, Qt::CaseInsensitive) || contact.name.contains(filter, Qt::CaseInsensitive) ||
           contact.jid.contains(filter, Qt::CaseInsensitive);
}

QString signsOf(const Contact& contact) {
    QString signs;
    if (contact.unread > 0) signs += QStringLiteral(" (%1)").arg(contact.unread);
    if (contact.subscription != QLatin1String("both")) signs += QStringLiteral(" [%1]").arg(subscriptionText(contact));
    return signs;
}

void listContact(Session& session, const Contact& contact) {
    const int columns = std::clamp(session.display().logColumns() / 4, 10, 28);
    QString line = QStringLiteral("  %1 ").arg(statusMark(contact.status)) + fitToWidth(oneLine(contact.name), columns);
    line += u' ' + contact.jid + signsOf(contact);
    session.log().list(line, statusStyle(contact.status));
    for (const Resource& resource : contact.resources) {
        QString text = QStringLiteral("      %1 %2 (%3): %4")
                           .arg(statusMark(resource.status))
                           .arg(resource.name.isEmpty() ? say(Text::NoResource) : oneLine(resource.name))
                           .arg(resource.priority)
                           .arg(statusText(resource.status));
        if (!resource.description.isEmpty()) text += QStringLiteral(" — ") + oneLine(resource.description);
        session.log().list(text, statusStyle(resource.status));
    }
    for (const QString& news : {contact.tune, contact.mood})
        if (!news.isEmpty()) session.log().list(QStringLiteral("      ") + inOneLine(news), Style::Faint);
}

QString roster(Session& session, Arguments& arguments) {
    const QString filter = arguments.rest();
    QMap<QString, QList<Contact>> groups;
    QMap<QString, int> reachable;
    for (const Contact& contact : session.messenger().roster().contacts(session.chosen().jid())) {
        if (contact.status != Status::offline) ++reachable[contact.group];
        if (fits(contact, filter)) groups[contact.group].append(contact);
    }
    if (groups.isEmpty()) session.log().tell(say(filter.isEmpty() ? Text::RosterEmpty : Text::RosterNoneFits));
    for (auto at = groups.begin(); at != groups.end(); ++at) {
        QList<Contact>& contacts = at.value();
        std::sort(contacts.begin(), contacts.end(), before);
        session.log().list(say(Text::RosterGroup, at.key(), reachable.value(at.key()), contacts.size()),
                           Style::Heading);
        for (const Contact& contact : contacts) listContact(session, contact);
    }
    return {};
}

QString contacts(Session& session, Arguments& arguments) {
    if (session.options().oneWindow) return say(Text::PaneNeedsScreen);
    const QString word = arguments.word();
    const bool shown = word == QLatin1String("on") || word == QLatin1String("off");
    if (!shown && word != QLatin1String("online") && word != QLatin1String("all")) return say(Text::Usage);
    if (shown)
        session.contactView().setShown(word == QLatin1String("on"));
    else
        session.contactView().setReachableOnly(word == QLatin1String("online"));
    return {};
}

QString add(Session& session, Arguments& arguments) {
    const QString jid = arguments.word();
    if (jid.isEmpty()) return say(Text::Usage);
    if (jid.indexOf(u'@') < 1) return say(Text::NotJid, jid);
    const QString name = arguments.word();
    return session.messenger().roster().addContact(session.chosen().jid(), bareJid(jid), name, arguments.rest());
}

QString rename(Session& session, Arguments& arguments) {
    Peer peer;
    if (arguments.empty()) return say(Text::Usage);
    if (const QString reason = takeContact(session, arguments, peer); !reason.isEmpty()) return reason;
    if (arguments.empty()) return say(Text::Usage);
    return session.messenger().roster().renameContact(peer.account, peer.jid, arguments.rest());
}

QString group(Session& session, Arguments& arguments) {
    Peer peer;
    if (arguments.empty()) return say(Text::Usage);
    if (const QString reason = takeContact(session, arguments, peer); !reason.isEmpty()) return reason;
    if (arguments.empty()) return say(Text::Usage);
    return session.messenger().roster().moveContact(peer.account, peer.jid, arguments.rest());
}

QString remove(Session& session, Arguments& arguments) {
    Peer peer;
    if (arguments.empty()) return say(Text::Usage);
    if (const QString reason = takeContact(session, arguments, peer); !reason.isEmpty()) return reason;
    return session.messenger().roster().removeContact(peer.account, peer.jid);
}

QString subscribe(Session& session, Arguments& arguments) {
    Peer peer;
    if (const QString reason = takeContact(session, arguments, peer); !reason.isEmpty()) return reason;
    const QString reason = session.messenger().roster().subscribe(peer.account, peer.jid);
    if (reason.isEmpty()) session.log().tell(say(Text::AskedForPresence, session.contacts().nameOf(peer)));
    return reason;
}

// Without a name, the only one who asks.
QString takeRequest(Session& session, Arguments& arguments, Peer& peer) {
    peer.account = session.chosen().jid();
    const QStringList requests = session.messenger().roster().pendingAuthorizations(peer.account);
    const QString word = arguments.word();
    if (!word.isEmpty()) {
        if (!requests.contains(bareJid(word))) return session.contacts().find(peer.account, word, peer.jid);
        peer.jid = bareJid(word);
        return {};
    }
    if (requests.isEmpty()) return say(Text::NoRequests);
    if (requests.size() > 1) return say(Text::ManyRequests, requests.join(QStringLiteral(", ")));
    peer.jid = requests.first();
    return {};
}

QString authorize(Session& session, Arguments& arguments) {
    Peer peer;
    // The word may also be the wish to ask in return, when only one request waits.
    Arguments look = arguments;
    const bool nobodyNamed = look.word() == QLatin1String("ask") && look.empty();
    Arguments nothing{QString()};
    if (const QString reason = takeRequest(session, nobodyNamed ? nothing : arguments, peer); !reason.isEmpty())
        return reason;
    const QString word = arguments.word();
    if (!word.isEmpty() && word != QLatin1String("ask")) return say(Text::Usage);
    const bool ask = !word.isEmpty();
    const QString reason = session.messenger().roster().authorize(peer.account, peer.jid, ask);
    if (reason.isEmpty()) session.contactDisplay().requestAnswered(peer);
    if (reason.isEmpty())
        session.log().tell(say(ask ? Text::AuthorizedAndAsked : Text::Authorized, session.contacts().nameOf(peer)));
    return reason;
}

QString deny(Session& session, Arguments& arguments) {
    Peer peer;
    if (const QString reason = takeRequest(session, arguments, peer); !reason.isEmpty()) return reason;
    const QString reason = session.messenger().roster().deny(peer.account, peer.jid);
    if (reason.isEmpty()) session.contactDisplay().requestAnswered(peer);
    if (reason.isEmpty()) session.log().tell(say(Text::Denied, session.contacts().nameOf(peer)));
    return reason;
}

using Kind = ArgumentKind;

constexpr std::array kRows = std::to_array<CommandRow>({
    {"roster", QT_TRANSLATE_NOOP("Commands", "[online | GRUPA | TEKST]"),
     QT_TRANSLATE_NOOP("Commands", "kontakty według grup, z każdym zasobem"), Kind::Group, Kind::None, true, &roster},
    {"contacts", "on|off|online|all",
     QT_TRANSLATE_NOOP("Commands", "lista kontaktów obok rozmów: jest czy nie, tylko dostępni czy wszyscy"), Kind::View,
     Kind::None, false, &contacts},
    {"add", QT_TRANSLATE_NOOP("Commands", "JID [NAZWA [GRUPA]]"),
     QT_TRANSLATE_NOOP("Commands", "dodaje kontakt i prosi o jego obecność"), Kind::Request, Kind::None, true, &add},
    {"rename", QT_TRANSLATE_NOOP("Commands", "KTO NAZWA"), QT_TRANSLATE_NOOP("Commands", "zmienia nazwę kontaktu"),
     Kind::Contact, Kind::None, true, &rename},
    {"group", QT_TRANSLATE_NOOP("Commands", "KTO GRUPA"), QT_TRANSLATE_NOOP("Commands", "przenosi kontakt do grupy"),
     Kind::Contact, Kind::Group, true, &group},
    {"remove", kWho, QT_TRANSLATE_NOOP("Commands", "usuwa kontakt z listy"), Kind::Contact, Kind::None, true, &remove},
    {"subscribe", kWho, QT_TRANSLATE_NOOP("Commands", "prosi o obecność kontaktu"), Kind::Contact, Kind::None, true,
     &subscribe},
    {"authorize", QT_TRANSLATE_NOOP("Commands", "[KTO] [ask]"),
     QT_TRANSLATE_NOOP("Commands", "pozwala widzieć Twoją obecność; ask: i prosi o wzajemność"), Kind::Request,
     Kind::None, true, &authorize},
    {"deny", kAnyone, QT_TRANSLATE_NOOP("Commands", "odmawia prośbie o obecność"), Kind::Request, Kind::None, true,
     &deny},
});

}  // namespace

std::span<const CommandRow> contactCommands() { return kRows; }

}  // namespace oku::terminal
