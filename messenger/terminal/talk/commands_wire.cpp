// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Commands about what contacts and servers say of themselves, the questions of the plugin, and the stream.
#include <array>

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/command_families.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

QString info(Session& session, Arguments& arguments) {
    Peer peer;
    if (const QString reason = takeContact(session, arguments, peer); !reason.isEmpty()) return reason;
    return session.messenger().roster().requestInfo(peer.account, peer.jid);
}

QString server(Session& session, Arguments&) {
    return session.messenger().roster().requestServerInfo(session.chosen().jid());
}

QString answer(Session& session, Arguments& arguments) {
    const QList<MessageBox> boxes = session.messenger().windows().openBoxes();
    QString word = arguments.word();
    int number = boxes.isEmpty() ? 0 : boxes.first().number;
    bool isNumber = false;
    const int given = word.toInt(&isNumber);
    if (isNumber) {
        number = given;
        word = arguments.word();
    }
    if (word.isEmpty()) return say(Text::Usage);
    const auto button = buttonFromWord(word);
    if (!button) return say(Text::BadButton, word);
    if (boxes.isEmpty()) return say(Text::NoQuestion);
    const QString reason = session.messenger().windows().answerBox(number, *button);
    if (reason.isEmpty()) session.log().tell(say(Text::Answered, number, word));
    return reason;
}

QString console(Session& session, Arguments& arguments) {
    const QString word = arguments.word();
    if (word != QLatin1String("on") && word != QLatin1String("off")) return say(Text::Usage);
    session.messenger().wire().setConsole(word == QLatin1String("on"));
    session.log().tell(say(word == QLatin1String("on") ? Text::ConsoleOn : Text::ConsoleOff));
    return {};
}

QString raw(Session& session, Arguments& arguments) {
    if (arguments.empty()) return say(Text::Usage);
    return session.messenger().wire().sendRaw(session.chosen().jid(), arguments.verbatim());
}

using Kind = ArgumentKind;

constexpr std::array kRows = std::to_array<CommandRow>({
    {"info", kAnyone, QT_TRANSLATE_NOOP("Commands", "program, wersja i możliwości kontaktu"), Kind::Contact, Kind::None,
     true, &info},
    {"server", kNothing, QT_TRANSLATE_NOOP("Commands", "możliwości serwera"), Kind::None, Kind::None, true, &server},
    {"answer", QT_TRANSLATE_NOOP("Commands", "[NUMER] ok|yes|no"),
     QT_TRANSLATE_NOOP("Commands", "odpowiada na pytanie"), Kind::Button, Kind::Button, false, &answer},
    {"console", QT_TRANSLATE_NOOP("Commands", "[on|off]"), QT_TRANSLATE_NOOP("Commands", "konsola XML"), Kind::Switch,
     Kind::None, false, &console},
    {"raw", QT_TRANSLATE_NOOP("Commands", "XML"), QT_TRANSLATE_NOOP("Commands", "wysyła XML"), Kind::None, Kind::None,
     true, &raw},
});

}  // namespace

std::span<const CommandRow> wireCommands() { return kRows; }

}  // namespace oku::terminal
