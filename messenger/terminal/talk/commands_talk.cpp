// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Commands about conversations and their history.
#include <algorithm>
#include <array>
#include <QDir>
#include <QFileInfo>
#include <utility>

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/command_families.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr int kUsualHistory = 20;
constexpr int kFoundMessages = 100;

QString historyLine(const Session& session, const Message& message) {
    const Peer peer{message.account, message.contact};
    const QString name = session.contacts().nameOf(peer);
    QString line = message.time.toLocalTime().toString(QStringLiteral("d.MM.yyyy HH:mm "));
    line += message.failed                       ? u'!' + QStringLiteral(" ") + name
            : message.direction == Direction::in ? name
                                                 : u'→' + name;
    line += QStringLiteral(": ") + oneLine(withSubjectAndDelay(message, message.body));
    switch (message.state) {
        case DeliveryState::queued:
        case DeliveryState::unconfirmed:
        case DeliveryState::failed:
            return line + QStringLiteral(" (%1)").arg(deliveryText(message, name));
        case DeliveryState::received:
        case DeliveryState::cancelled:
        case DeliveryState::sent:
            break;
    }
    return line;
}

QString message(Session& session, Arguments& arguments) {
    Peer peer;
    if (arguments.empty()) return say(Text::Usage);
    if (const QString reason = takeContact(session, arguments, peer); !reason.isEmpty()) return reason;
    if (arguments.empty()) return say(Text::Usage);
    return session.conversations().send(peer, arguments.verbatim());
}

QString me(Session& session, Arguments& arguments) {
    const Peer peer = session.windows().partner();
    if (peer.none()) return say(Text::NoConversation);
    if (arguments.empty()) return say(Text::Usage);
    return session.conversations().send(peer, QStringLiteral("/me ") + arguments.verbatim());
}

QString chatWith(Session& session, Arguments& arguments) {
    Peer peer;
    if (arguments.empty()) return say(Text::Usage);
    if (const QString reason = takeContact(session, arguments, peer); !reason.isEmpty()) return reason;
    session.conversations().open(peer);
    return arguments.empty() ? QString() : session.conversations().send(peer, arguments.verbatim());
}

QString close(Session& session, Arguments&) {
    if (session.windows().current().none()) return say(Text::NoConversation);
    session.conversations().close();
    return {};
}

QString window(Session& session, Arguments& arguments) {
    const QString word = arguments.word();
    if (word.isEmpty()) {
        const int next = session.windows().nextUnread();
        if (next < 0) return say(Text::NothingUnread);
        session.conversations().show(next);
        return {};
    }
    bool isNumber = false;
    const int number = word.toInt(&isNumber);
    return isNumber && session.conversations().show(number) ? QString() : say(Text::NoSuchWindow, word);
}

// In a conversation the first word is a number or part of the text that is looked for, elsewhere the contact.
QString history(Session& session, Arguments& arguments) {
    Peer peer = session.windows().partner();
    if (peer.none()) {
        if (arguments.empty()) return say(Text::Usage);
        if (const QString reason = takeContact(session, arguments, peer); !reason.isEmpty()) return reason;
    }
    const QString rest = arguments.rest();
    bool isNumber = false;
    const int number = rest.toInt(&isNumber);
    if (isNumber && number < 1) return say(Text::BadLimit);
    const QString search = isNumber ? QString() : rest;
    const int limit = isNumber ? number : search.isEmpty() ? kUsualHistory : kFoundMessages;
    const QList<Message> found = session.messenger().talk().history(peer.account, peer.jid, limit, search);
    if (found.isEmpty()) session.log().tell(say(Text::HistoryEmpty));
    for (const Message& message : found) session.log().list(historyLine(session, message));
    return {};
}

QString exportTo(Session& session, Arguments& arguments) {
    const QString file = arguments.word();
    if (file.isEmpty()) return say(Text::Usage);
    Peer peer = session.windows().partner();
    if (!arguments.empty())
        if (const QString reason = takeContact(session, arguments, peer); !reason.isEmpty()) return reason;
    const QString path = QDir(session.options().startDirectory).absoluteFilePath(file);
    const QString account = peer.none() ? session.chosen().jid() : peer.account;
    const bool agreed = std::exchange(session.offeredExport(), {}) == path;
    if (!agreed && QFileInfo::exists(path)) {
        session.offeredExport() = path;
        return say(Text::ExportExists, path);
    }
    const QString reason = session.messenger().talk().exportHistory(account, peer.jid, path, agreed);
    if (reason.isEmpty()) session.log().tell(say(Text::Exported, path));
    return reason;
}

QString resend(Session& session, Arguments& arguments) {
    const QString word = arguments.word();
    bool isNumber = false;
    const qint64 number = word.toLongLong(&isNumber);
    if (!isNumber) return word.isEmpty() ? say(Text::Usage) : say(Text::BadNumber, word);
    return session.messenger().talk().resendMessage(number);
}

// In a conversation, without a number: the last one that waits.
QString cancel(Session& session, Arguments& arguments) {
    const QString word = arguments.word();
    bool isNumber = false;
    const qint64 number = word.toLongLong(&isNumber);
    if (isNumber) return session.messenger().talk().cancelMessage(number);
    const Peer peer = session.windows().current();
    if (!word.isEmpty()) return say(Text::BadNumber, word);
    if (peer.none()) return say(Text::Usage);
    const QList<Message> recent = session.messenger().talk().history(peer.account, peer.jid, kFoundMessages, {});
    const auto waiting = std::find_if(recent.rbegin(), recent.rend(),
                                      [](const Message& message) { return message.state == DeliveryState::queued; });
    return waiting == recent.rend() ? say(Text::NothingWaits)
                                    : session.messenger().talk().cancelMessage(waiting->number);
}

using Kind = ArgumentKind;

constexpr std::array kRows = std::to_array<CommandRow>({
    {"msg", QT_TRANSLATE_NOOP("Commands", "KTO TEKST"), QT_TRANSLATE_NOOP("Commands", "wysyła jedną wiadomość"),
     Kind::Contact, Kind::None, true, &message},
    {"me", QT_TRANSLATE_NOOP("Commands", "TEKST"), QT_TRANSLATE_NOOP("Commands", "wysyła w rozmowie, co robisz"),
     Kind::None, Kind::None, true, &me},
    {"chat-with", QT_TRANSLATE_NOOP("Commands", "KTO [TEKST]"),
     QT_TRANSLATE_NOOP("Commands", "otwiera rozmowę; zwykłe wiersze idą odtąd do niej"), Kind::Contact, Kind::None,
     true, &chatWith},
    {"close", kNothing, QT_TRANSLATE_NOOP("Commands", "zamyka rozmowę"), Kind::None, Kind::None, false, &close},
    {"window", QT_TRANSLATE_NOOP("Commands", "[NUMER]"),
     QT_TRANSLATE_NOOP("Commands", "pokazuje okno; bez numeru następne nieprzeczytane"), Kind::None, Kind::None, false,
     &window},
    {"history", QT_TRANSLATE_NOOP("Commands", "[KTO] [LICZBA | TEKST]"),
     QT_TRANSLATE_NOOP("Commands", "ostatnie wiadomości albo te z tekstem"), Kind::Contact, Kind::None, true, &history},
    {"export", QT_TRANSLATE_NOOP("Commands", "PLIK [KTO]"),
     QT_TRANSLATE_NOOP("Commands", "zapisuje historię do pliku (.json: jako JSON)"), Kind::None, Kind::Contact, true,
     &exportTo},
    {"resend", QT_TRANSLATE_NOOP("Commands", "NUMER"),
     QT_TRANSLATE_NOOP("Commands", "wysyła ponownie wiadomość bez potwierdzenia"), Kind::None, Kind::None, false,
     &resend},
    {"cancel", QT_TRANSLATE_NOOP("Commands", "[NUMER]"),
     QT_TRANSLATE_NOOP("Commands", "wycofuje wiadomość, która czeka; bez numeru ostatnią w rozmowie"), Kind::None,
     Kind::None, false, &cancel},
});

}  // namespace

std::span<const CommandRow> talkCommands() { return kRows; }

}  // namespace oku::terminal
