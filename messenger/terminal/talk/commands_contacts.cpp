// Commands about contacts.
#include <algorithm>
#include <QMap>

#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/commands.h"
#include "messenger/terminal/talk/session.h"

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

}  // namespace

QString Commands::roster(Arguments& arguments) {
    const QString filter = arguments.rest();
    QMap<QString, QList<Contact>> groups;
    QMap<QString, int> reachable;
    for (const Contact& contact : session_.messenger().roster().contacts(session_.account())) {
        if (contact.status != Status::offline) ++reachable[contact.group];
        if (fits(contact, filter)) groups[contact.group].append(contact);
    }
    if (groups.isEmpty()) session_.tell(say(filter.isEmpty() ? Text::RosterEmpty : Text::RosterNoneFits));
    for (auto at = groups.begin(); at != groups.end(); ++at) {
        QList<Contact>& contacts = at.value();
        std::sort(contacts.begin(), contacts.end(), before);
        session_.list(say(Text::RosterGroup, at.key(), reachable.value(at.key()), contacts.size()), Style::Heading);
        for (const Contact& contact : contacts) listContact(contact);
    }
    return {};
}

QString Commands::contacts(Arguments& arguments) {
    if (session_.oneWindow()) return say(Text::PaneNeedsScreen);
    const QString word = arguments.word();
    const bool shown = word == QLatin1String("on") || word == QLatin1String("off");
    if (!shown && word != QLatin1String("online") && word != QLatin1String("all")) return say(Text::Usage);
    ContactView view = session_.contactView();
    if (shown)
        view.shown = word == QLatin1String("on");
    else
        view.reachableOnly = word == QLatin1String("online");
    session_.setContactView(view);
    return {};
}

void Commands::listContact(const Contact& contact) {
    const int columns = std::clamp(session_.columns() / 4, 10, 28);
    QString line = QStringLiteral("  %1 ").arg(statusMark(contact.status)) + fitToWidth(oneLine(contact.name), columns);
    line += u' ' + contact.jid + signsOf(contact);
    session_.list(line, statusStyle(contact.status));
    for (const Resource& resource : contact.resources) {
        QString text = QStringLiteral("      %1 %2 (%3): %4")
                           .arg(statusMark(resource.status))
                           .arg(resource.name.isEmpty() ? say(Text::NoResource) : oneLine(resource.name))
                           .arg(resource.priority)
                           .arg(statusText(resource.status));
        if (!resource.description.isEmpty()) text += QStringLiteral(" — ") + oneLine(resource.description);
        session_.list(text, statusStyle(resource.status));
    }
}

QString Commands::add(Arguments& arguments) {
    const QString jid = arguments.word();
    if (jid.isEmpty()) return say(Text::Usage);
    if (jid.indexOf(u'@') < 1) return say(Text::NotJid, jid);
    const QString name = arguments.word();
    return session_.messenger().roster().addContact(session_.account(), bareJid(jid), name, arguments.rest());
}

QString Commands::rename(Arguments& arguments) {
    Peer peer;
    if (arguments.empty()) return say(Text::Usage);
    if (const QString reason = takeContact(arguments, peer); !reason.isEmpty()) return reason;
    if (arguments.empty()) return say(Text::Usage);
    return session_.messenger().roster().renameContact(peer.account, peer.jid, arguments.rest());
}

QString Commands::group(Arguments& arguments) {
    Peer peer;
    if (arguments.empty()) return say(Text::Usage);
    if (const QString reason = takeContact(arguments, peer); !reason.isEmpty()) return reason;
    if (arguments.empty()) return say(Text::Usage);
    return session_.messenger().roster().moveContact(peer.account, peer.jid, arguments.rest());
}

QString Commands::remove(Arguments& arguments) {
    Peer peer;
    if (arguments.empty()) return say(Text::Usage);
    if (const QString reason = takeContact(arguments, peer); !reason.isEmpty()) return reason;
    return session_.messenger().roster().removeContact(peer.account, peer.jid);
}

QString Commands::subscribe(Arguments& arguments) {
    Peer peer;
    if (const QString reason = takeContact(arguments, peer); !reason.isEmpty()) return reason;
    const QString reason = session_.messenger().roster().subscribe(peer.account, peer.jid);
    if (reason.isEmpty()) session_.tell(say(Text::AskedForPresence, session_.nameOf(peer)));
    return reason;
}

// Without a name, the only one who asks.
QString Commands::takeRequest(Arguments& arguments, Peer& peer) {
    peer.account = session_.account();
    const QStringList requests = session_.messenger().roster().pendingAuthorizations(peer.account);
    const QString word = arguments.word();
    if (!word.isEmpty()) {
        if (!requests.contains(bareJid(word))) return session_.findContact(word, peer.jid);
        peer.jid = bareJid(word);
        return {};
    }
    if (requests.isEmpty()) return say(Text::NoRequests);
    if (requests.size() > 1) return say(Text::ManyRequests, requests.join(QStringLiteral(", ")));
    peer.jid = requests.first();
    return {};
}

QString Commands::authorize(Arguments& arguments) {
    Peer peer;
    // The word may also be the wish to ask in return, when only one request waits.
    Arguments look = arguments;
    const bool nobodyNamed = look.word() == QLatin1String("ask") && look.empty();
    Arguments nothing{QString()};
    if (const QString reason = takeRequest(nobodyNamed ? nothing : arguments, peer); !reason.isEmpty()) return reason;
    const QString word = arguments.word();
    if (!word.isEmpty() && word != QLatin1String("ask")) return say(Text::Usage);
    const bool ask = !word.isEmpty();
    const QString reason = session_.messenger().roster().authorize(peer.account, peer.jid, ask);
    if (reason.isEmpty()) session_.requestAnswered(peer);
    if (reason.isEmpty()) session_.tell(say(ask ? Text::AuthorizedAndAsked : Text::Authorized, session_.nameOf(peer)));
    return reason;
}

QString Commands::deny(Arguments& arguments) {
    Peer peer;
    if (const QString reason = takeRequest(arguments, peer); !reason.isEmpty()) return reason;
    const QString reason = session_.messenger().roster().deny(peer.account, peer.jid);
    if (reason.isEmpty()) session_.requestAnswered(peer);
    if (reason.isEmpty()) session_.tell(say(Text::Denied, session_.nameOf(peer)));
    return reason;
}

}  // namespace oku::terminal
