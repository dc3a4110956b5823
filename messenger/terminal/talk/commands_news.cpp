// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Commands about what one tells of oneself, and about news of mail.
#include <array>

#include "messenger/terminal/talk/command_families.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

bool isOff(const QString& word) { return word == QLatin1String("off"); }

QString told(Session& session, const QString& reason, bool takenBack) {
    if (reason.isEmpty()) session.log().tell(say(takenBack ? Text::NewsTakenBack : Text::NewsSent));
    return reason;
}

QString mood(Session& session, Arguments& arguments) {
    const QString name = arguments.word().toLower();
    if (name.isEmpty() || (isOff(name) && !arguments.empty())) return say(Text::Usage);
    const Mood mood = isOff(name) ? Mood{} : Mood{name, arguments.rest()};
    return told(session, session.messenger().news().publishMood(session.chosen().jid(), mood), mood.isEmpty());
}

QString tune(Session& session, Arguments& arguments) {
    Tune tune;
    tune.title = arguments.word();
    if (tune.title.isEmpty()) return say(Text::Usage);
    if (isOff(tune.title) && arguments.empty()) tune.title.clear();
    tune.artist = arguments.word();
    tune.source = arguments.rest();
    return told(session, session.messenger().news().publishTune(session.chosen().jid(), tune), tune.isEmpty());
}

QString location(Session& session, Arguments& arguments) {
    Location location;
    QString field = arguments.word();
    if (field.isEmpty()) return say(Text::Usage);
    if (isOff(field) && arguments.empty()) field.clear();
    for (; !field.isEmpty(); field = arguments.word()) {
        if (arguments.empty()) return say(Text::Usage);
        location.insert(field, arguments.word());
    }
    return told(session, session.messenger().news().publishLocation(session.chosen().jid(), location),
                location.isEmpty());
}

// The newest one.
QString mail(Session& session, Arguments& arguments) {
    const QString word = arguments.word();
    if (!word.isEmpty() && !isOff(word)) return say(Text::Usage);
    int number = 0;
    for (const Popup& popup : session.messenger().news().popups())
        if (popup.kind == PopupKind::mail) number = popup.number;
    if (number == 0) return say(Text::NoMail);
    NewsFace& news = session.messenger().news();
    return isOff(word) ? news.closePopup(number) : news.openPopup(number);
}

using Kind = ArgumentKind;

constexpr std::array kRows = std::to_array<CommandRow>({
    {"mood", QT_TRANSLATE_NOOP("Commands", "NASTRÓJ [TEKST] | off"),
     QT_TRANSLATE_NOOP("Commands", "pokazuje kontaktom Twój nastrój (nazwy podpowiada Tab)"), Kind::Mood, Kind::None,
     true, &mood},
    {"tune", QT_TRANSLATE_NOOP("Commands", "TYTUŁ [WYKONAWCA [ALBUM]] | off"),
     QT_TRANSLATE_NOOP("Commands", "pokazuje kontaktom, czego słuchasz"), Kind::Off, Kind::None, true, &tune},
    {"location", QT_TRANSLATE_NOOP("Commands", "POLE WARTOŚĆ [POLE WARTOŚĆ]... | off"),
     QT_TRANSLATE_NOOP("Commands", "pokazuje kontaktom, gdzie jesteś, na przykład: locality Łódź country Polska"),
     Kind::Field, Kind::None, true, &location},
    {"mail", "[off]", QT_TRANSLATE_NOOP("Commands", "otwiera stronę poczty z powiadomienia, off: zamyka je"), Kind::Off,
     Kind::None, false, &mail},
});

}  // namespace

std::span<const CommandRow> newsCommands() { return kRows; }

}  // namespace oku::terminal
