// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Commands about accounts and the own status.
#include <array>

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/command_families.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

// The whole address is asked for, so that nothing goes by a slip.
QString removeAccount(Session& session, Arguments& arguments) {
    const QString jid = arguments.word();
    const QString more = arguments.word();
    const bool withHistory = more == QLatin1String("history");
    if (jid.isEmpty() || (!more.isEmpty() && !withHistory)) return say(Text::Usage);
    return session.messenger().accounts().removeAccount(jid, withHistory);
}

void listAccounts(Session& session) {
    const QList<Account> accounts = session.messenger().accounts().accounts();
    if (accounts.isEmpty()) session.log().tell(say(Text::NoAccountYet));
    int number = 0;
    for (const Account& one : accounts) {
        const QChar mark = one.jid == session.chosen().jid() ? u'>' : u' ';
        session.log().list(
            QStringLiteral("%1 %2. %3 %4 %5, %6")
                .arg(mark)
                .arg(++number)
                .arg(statusMark(one.status))
                .arg(oneLine(one.jid), statusText(one.status), connectionText(one.connection, one.encrypted)),
            statusStyle(one.status));
    }
}

QString pickAccount(Session& session, const QString& text) {
    const QList<Account> accounts = session.messenger().accounts().accounts();
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    for (qsizetype at = 0; at < accounts.size(); ++at) {
        if (isNumber ? number != at + 1 : accounts.at(at).jid != bareJid(text)) continue;
        session.chosen().choose(accounts.at(at).jid);
        session.log().tell(say(Text::AccountChosen, accounts.at(at).jid));
        return {};
    }
    return say(Text::NoSuchAccount, text);
}

QString account(Session& session, Arguments& arguments) {
    const QString word = arguments.word();
    if (word.isEmpty() || word == QLatin1String("list")) {
        listAccounts(session);
        return {};
    }
    if (word == QLatin1String("add")) {
        const QString jid = arguments.word();
        if (jid.indexOf(u'@') < 1) return jid.isEmpty() ? say(Text::Usage) : say(Text::NotJid, jid);
        session.chosen().add(jid, arguments.word());
        return {};
    }
    if (word == QLatin1String("password")) {
        if (session.chosen().jid().isEmpty()) return say(Text::NoAccountYet);
        session.chosen().add(session.chosen().jid(), {});
        return {};
    }
    if (word == QLatin1String("remove")) return removeAccount(session, arguments);
    return pickAccount(session, word);
}

template <Status status>
QString chooseStatus(Session& session, Arguments& arguments) {
    return session.chosen().setStatus(status, arguments.verbatim());
}

using Kind = ArgumentKind;

constexpr std::array kRows = std::to_array<CommandRow>({
    {"account",
     QT_TRANSLATE_NOOP("Commands", "[add JID [SERWER[:PORT]] | password | remove JID [history] | JID | NUMER]"),
     QT_TRANSLATE_NOOP("Commands", "lista kont; dodaje i usuwa konto, zmienia hasło, wybiera konto poleceń"),
     Kind::Account, Kind::None, false, &account},
    {"online", kDescription, QT_TRANSLATE_NOOP("Commands", "status: dostępny (łączy z serwerem)"), Kind::None,
     Kind::None, true, &chooseStatus<Status::online>},
    {"chat", kDescription, QT_TRANSLATE_NOOP("Commands", "status: chętny do rozmowy"), Kind::None, Kind::None, true,
     &chooseStatus<Status::chat>},
    {"away", kDescription, QT_TRANSLATE_NOOP("Commands", "status: zaraz wracam"), Kind::None, Kind::None, true,
     &chooseStatus<Status::away>},
    {"xa", kDescription, QT_TRANSLATE_NOOP("Commands", "status: wrócę później"), Kind::None, Kind::None, true,
     &chooseStatus<Status::xa>},
    {"dnd", kDescription, QT_TRANSLATE_NOOP("Commands", "status: zajęty"), Kind::None, Kind::None, true,
     &chooseStatus<Status::dnd>},
    {"invisible", kDescription, QT_TRANSLATE_NOOP("Commands", "status: niewidoczny"), Kind::None, Kind::None, true,
     &chooseStatus<Status::invisible>},
    {"offline", kDescription, QT_TRANSLATE_NOOP("Commands", "rozłącza"), Kind::None, Kind::None, true,
     &chooseStatus<Status::offline>},
});

}  // namespace

std::span<const CommandRow> accountCommands() { return kRows; }

}  // namespace oku::terminal
