// What a session's display shows around the log.
#include <algorithm>
#include <utility>

#include "messenger/terminal/display_width.h"
#include "messenger/terminal/session.h"
#include "messenger/terminal/texts.h"
#include "messenger/terminal/wording.h"

namespace oku::terminal {
namespace {

Span bar(const QString& text) { return {text, Style::Bar}; }

QString resourceNames(const Contact& contact) {
    QStringList names;
    for (const Resource& resource : contact.resources)
        if (!resource.name.isEmpty()) names.append(oneLine(resource.name));
    return names.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(names.join(QStringLiteral(", ")));
}

QString described(const QString& description) {
    return description.isEmpty() ? QString() : QStringLiteral(" — ") + oneLine(description);
}

QString fullState(const Account& mine) {
    const bool between = mine.connection != ConnectionState::online && mine.connection != ConnectionState::offline;
    const QString state =
        between ? connectionText(mine.connection) + u'…' : statusText(mine.status) + described(mine.description);
    return QStringLiteral(" %1 %2 %3").arg(oneLine(mine.jid)).arg(statusMark(mine.status)).arg(state);
}

QString briefState(const Account& mine) {
    return QStringLiteral(" %1 %2").arg(oneLine(mine.jid.section(u'@', 0, 0))).arg(statusMark(mine.status));
}

}  // namespace

LogLayout Session::layout() const {
    LogLayout layout;
    layout.conversation = !windows_.current().none() && !options_.oneWindow;
    layout.manyAccounts = client_.accounts().size() > 1;
    layout.me = oneLine(account().section(u'@', 0, 0));
    return layout;
}

Line Session::title() const {
    const Peer peer = windows_.current();
    if (peer.none()) return {bar(u' ' + say(Text::MainTitle))};
    const auto contact = client_.contact(peer.account, peer.jid);
    if (!contact) return {bar(QStringLiteral(" %1 · %2").arg(oneLine(peer.jid), say(Text::NotOnRoster)))};
    return {bar(QStringLiteral(" %1 <%2> ").arg(nameOf(peer), oneLine(peer.jid))),
            bar(statusMark(contact->status) + QStringLiteral(" ") + statusText(contact->status) +
                resourceNames(*contact) + described(contact->description))};
}

// A narrow window shortens the account before it leaves windows out, and leaves out only those with nothing new.
Line Session::status() const {
    for (const auto& [briefAccount, fewWindows] : {std::pair{false, false}, {true, false}}) {
        const Line line = statusLine(briefAccount, fewWindows);
        if (lineWidth(line) <= columns()) return line;
    }
    return statusLine(true, true);
}

Line Session::statusLine(bool briefAccount, bool fewWindows) const {
    Line line;
    const QString chosen = account();
    const QList<Account> accounts = client_.accounts();
    const auto mine =
        std::find_if(accounts.begin(), accounts.end(), [&](const Account& one) { return one.jid == chosen; });
    if (mine == accounts.end())
        line.push_back(bar(u' ' + say(Text::NoAccount)));
    else
        line.push_back(bar(briefAccount ? briefState(*mine) : fullState(*mine)));
    for (const Peer& peer : windows_.typing())
        line.push_back(bar(QStringLiteral(" │ ") + say(Text::IsTyping, nameOf(peer))));
    line.push_back(bar(QStringLiteral(" │")));
    for (Span& span : windowNames(fewWindows)) line.push_back(std::move(span));
    return line;
}

Line Session::windowNames(bool few) const {
    Line line;
    const auto window = [&](int number, const QString& name, int unread) {
        const bool seen = number == windows_.currentNumber();
        if (few && !seen && unread == 0) return;
        QString text = QStringLiteral(" %1%2:%3%4").arg(seen ? "[" : "").arg(number).arg(name).arg(seen ? "]" : "");
        if (unread > 0) text += QStringLiteral("(%1)").arg(unread);
        line.push_back({text, unread > 0 ? Style::BarAlert : Style::Bar});
    };
    window(0, say(Text::MainWindow), 0);
    int number = 0;
    for (const Peer& peer : windows_.conversations()) {
        const QString name = nameOf(peer);
        window(++number, displayWidth(name) > 12 ? fitToWidth(name, 12) : name, windows_.unread(peer));
    }
    return line;
}

QString Session::prompt() const {
    if (secret_) return secret_->question + QStringLiteral(": ");
    const Peer peer = windows_.current();
    return (peer.none() ? oneLine(account().section(u'@', 0, 0)) : nameOf(peer)) + QStringLiteral("> ");
}

}  // namespace oku::terminal
