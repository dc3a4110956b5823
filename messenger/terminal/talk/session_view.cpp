// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/session_view.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/talk/transfer_wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr int kShortestName = 6;  // columns of the names in a narrow window bar

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

// A login in clear is told wherever its state is.
QString warning(const Account& mine) {
    const bool clear = mine.connection == ConnectionState::online && !mine.encrypted;
    return clear ? QStringLiteral(" (%1)").arg(say(Text::NotEncrypted)) : QString();
}

QString fullState(const Account& mine) {
    const bool between = mine.connection != ConnectionState::online && mine.connection != ConnectionState::offline;
    const QString state = between ? connectionText(mine.connection, mine.encrypted) + u'…'
                                  : statusText(mine.status) + warning(mine) + described(mine.description);
    return QStringLiteral(" %1 %2 %3").arg(oneLine(mine.jid)).arg(statusMark(mine.status)).arg(state);
}

QString briefState(const Account& mine, bool wholeAddress) {
    const QString address = oneLine(wholeAddress ? mine.jid : mine.jid.section(u'@', 0, 0));
    return QStringLiteral(" %1 %2").arg(address).arg(statusMark(mine.status)) + warning(mine);
}

QString atMost(const QString& text, int columns) {
    return displayWidth(text) > columns ? fitToWidth(text, columns) : text;
}

QString briefProgress(const Transfer& transfer, int nameColumns) {
    constexpr int cells = 8;
    const QChar arrow = transfer.direction == Direction::out ? u'↑' : u'↓';
    return QStringLiteral("%1%2 %3").arg(arrow).arg(atMost(oneLine(transfer.name), nameColumns),
                                                    progressText(transfer, cells));
}

}  // namespace

LogLayout SessionView::layout() const {
    LogLayout layout;
    layout.conversation = !session_.windows().partner().none() && !session_.options().oneWindow;
    layout.manyAccounts = session_.messenger().accounts().accounts().size() > 1;
    layout.me = oneLine(session_.chosen().jid().section(u'@', 0, 0));
    return layout;
}

Line SessionView::title() const {
    const Peer peer = session_.windows().current();
    if (peer.none()) return {bar(u' ' + say(Text::MainTitle))};
    if (peer == Windows::strangers()) return {bar(u' ' + say(Text::StrangersTitle))};
    const auto contact = session_.messenger().roster().contact(peer.account, peer.jid);
    if (!contact) return {bar(QStringLiteral(" %1 · %2").arg(oneLine(peer.jid), say(Text::NotOnRoster)))};
    // A long name leaves room for the address and the status.
    const QString name =
        atMost(session_.contacts().nameOf(peer), std::max(kShortestName, session_.display().columns() / 3));
    return {bar(QStringLiteral(" %1 <%2> ").arg(name, oneLine(peer.jid))),
            bar(statusMark(contact->status) + QStringLiteral(" ") + statusText(contact->status) +
                resourceNames(*contact) + described(contact->description) + described(inOneLine(contact->tune)) +
                described(inOneLine(contact->mood)))};
}

// A narrow window leaves out the words of the own status, then windows with nothing new, then parts of names; the own
// address goes last.
Line SessionView::status() const {
    static constexpr std::array kinds = std::to_array<StatusLineKind>({{},
                                                                       {.words = false},
                                                                       {.words = false, .allWindows = false},
                                                                       {false, false, kShortestName},
                                                                       {false, false, kShortestName, false}});
    Line line;
    for (const StatusLineKind& kind : kinds) {
        line = statusLine(kind);
        if (lineWidth(line) <= session_.display().columns()) break;
    }
    return line;
}

Line SessionView::statusLine(const StatusLineKind& kind) const {
    Line line;
    line.push_back(ownState(kind));
    int room = columns();  // what does not fit is not shown, however many are typing
    for (const auto& [place, peer] : session_.windows().typing()) {
        if (room < 0) break;
        line.push_back(bar(QStringLiteral(" │ ") +
                           say(Text::IsTyping, atMost(session_.contacts().nameOf(peer), kind.nameColumns))));
        room -= displayWidth(line.back().text);
    }
    for (const Transfer& transfer : session_.transferDisplay().underWay()) {
        if (room < 0) break;
        line.push_back(bar(QStringLiteral(" │ ") + briefProgress(transfer, kind.nameColumns)));
        room -= displayWidth(line.back().text);
    }
    line.push_back(bar(QStringLiteral(" │")));
    for (Span& span : windowNames(kind)) line.push_back(std::move(span));
    return line;
}

Span SessionView::ownState(const StatusLineKind& kind) const {
    const auto mine = session_.messenger().accounts().account(session_.chosen().jid());
    if (!mine) return bar(u' ' + say(Text::NoAccount));
    return bar(kind.words ? fullState(*mine) : briefState(*mine, kind.wholeAddress));
}

int SessionView::columns() const { return session_.display().logColumns(); }

std::vector<int> SessionView::numbersInBar(bool all) const {
    const auto most = static_cast<std::size_t>(std::max(1, columns()));
    std::vector<int> numbers;
    if (all) {
        numbers.resize(std::min(most, session_.windows().conversations().size()));
        std::iota(numbers.begin(), numbers.end(), 1);
        return numbers;
    }
    for (const auto& [number, count] : session_.windows().unreadWindows()) {
        if (numbers.size() >= most) break;
        numbers.push_back(number);
    }
    const int seen = session_.windows().currentNumber();
    const auto place = std::lower_bound(numbers.begin(), numbers.end(), seen);
    if (seen != 0 && (place == numbers.end() || *place != seen)) numbers.insert(place, seen);
    return numbers;
}

Line SessionView::windowNames(const StatusLineKind& kind) const {
    Line line;
    int room = columns();
    const auto window = [&](int number, const QString& name, int unread) {
        const bool seen = number == session_.windows().currentNumber();
        QString text = QStringLiteral(" %1%2:%3%4").arg(seen ? "[" : "").arg(number).arg(name).arg(seen ? "]" : "");
        if (unread > 0) text += QStringLiteral("(%1)").arg(unread);
        room -= displayWidth(text);
        line.push_back({text, unread > 0 ? Style::BarAlert : Style::Bar});
    };
    if (kind.allWindows || session_.windows().currentNumber() == 0) window(0, say(Text::MainWindow), 0);
    // What does not fit is not shown, however many conversations are open.
    for (const int number : numbersInBar(kind.allWindows)) {
        if (room < 0) break;
        const Peer& peer = session_.windows().conversations()[static_cast<std::size_t>(number - 1)];
        window(number, atMost(session_.contacts().nameOf(peer), kind.nameColumns), session_.windows().unread(peer));
    }
    return line;
}

QString SessionView::prompt() const {
    if (session_.secret().wanted()) return session_.secret().question() + QStringLiteral(": ");
    if (session_.dialogs().active()) {
        const int room = std::max(kShortestName, session_.display().columns() / 3);
        return atMost(session_.dialogs().title(), room) + QStringLiteral("> ");
    }
    const Peer peer = session_.windows().current();
    return (peer.none() ? oneLine(session_.chosen().jid().section(u'@', 0, 0)) : session_.contacts().nameOf(peer)) +
           QStringLiteral("> ");
}

}  // namespace oku::terminal
