// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Commands about the plugin's windows, its pages and its menu.
#include <array>

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/command_families.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

QString dialog(Session& session, Arguments& arguments) {
    const QString word = arguments.word();
    if (word.isEmpty()) {
        session.dialogs().list();
        return {};
    }
    bool isNumber = false;
    const int number = word.toInt(&isNumber);
    if (!isNumber) return say(Text::Usage);
    if (const QString reason = session.dialogs().enter(number); !reason.isEmpty() || arguments.empty()) return reason;
    return session.dialogs().submit(arguments.verbatim());
}

constexpr qsizetype kMostPages = 99;

/// The place from 1 that the word names among `count`; 0 for none.
qsizetype placeOf(const QString& word, qsizetype count) {
    bool isNumber = false;
    const qsizetype place = word.toLongLong(&isNumber);
    return isNumber && place >= 1 && place <= count ? place : 0;
}

QString options(Session& session, Arguments& arguments) {
    DialogsFace& dialogs = session.messenger().dialogs();
    const QList<DialogPage> pages = dialogs.optionPages();
    const QString word = arguments.word();
    if (word.isEmpty() && pages.size() > 1) {
        int number = 0;
        for (const DialogPage& page : pages)
            session.log().list(QStringLiteral("%1. %2").arg(++number).arg(oneLine(page.caption)));
        return {};
    }
    const qsizetype place = word.isEmpty() ? 1 : placeOf(word, pages.size());
    if (place < 1 || place > pages.size()) return say(Text::DialogNoPage);
    session.dialogs().expect();
    return dialogs.openOptions(pages.at(place - 1).id);
}

QString properties(Session& session, Arguments& arguments) {
    Arguments look = arguments;
    if (look.word() == QLatin1String("new")) {
        session.dialogs().expect();
        return session.messenger().dialogs().openProperties(session.chosen().jid(), {}, {});
    }
    Peer peer;
    if (const QString reason = takeContact(session, arguments, peer); !reason.isEmpty()) return reason;
    const QString word = arguments.word();
    const qsizetype place = placeOf(word, kMostPages);
    if (!word.isEmpty() && place == 0) return say(Text::DialogNoPage);
    return session.contactOffers().openPage(peer, place);
}

QString contactMenu(Session& session, Arguments& arguments) {
    Peer peer;
    if (const QString reason = takeContact(session, arguments, peer); !reason.isEmpty()) return reason;
    return session.contactOffers().tellMenu(peer);
}

bool isNumber(const QString& word) {
    bool whole = false;
    word.toLongLong(&whole);
    return whole;
}

QString menu(Session& session, Arguments& arguments) {
    Arguments look = arguments;
    const QString word = look.word();
    if (!word.isEmpty() && !isNumber(word)) return contactMenu(session, arguments);
    QList<MenuItem> items = session.messenger().windows().menu(programMenu());
    items.removeIf([](const MenuItem& item) { return item.separator; });
    if (word.isEmpty()) {
        int number = 0;
        for (const MenuItem& item : items)
            session.log().list(QStringLiteral("%1. %2").arg(++number).arg(oneLine(item.caption)));
        return {};
    }
    const qsizetype place = placeOf(word, items.size());
    if (place == 0) return say(Text::DialogNoRow, word);
    session.dialogs().expect();
    return session.messenger().windows().activateMenu(items.at(place - 1).id);
}

using Kind = ArgumentKind;

constexpr std::array kRows = std::to_array<CommandRow>({
    {"dialog", QT_TRANSLATE_NOOP("Commands", "[NUMER [WIERSZ]]"),
     QT_TRANSLATE_NOOP("Commands", "okna wtyczki: lista, albo wejście do jednego (? mówi, co w nim można)"),
     Kind::Dialog, Kind::None, false, &dialog},
    {"options", QT_TRANSLATE_NOOP("Commands", "[NUMER]"), QT_TRANSLATE_NOOP("Commands", "strona opcji konta"),
     Kind::None, Kind::None, false, &options},
    {"properties", QT_TRANSLATE_NOOP("Commands", "[KTO [NUMER] | new]"),
     QT_TRANSLATE_NOOP("Commands", "strona właściwości kontaktu, także nowego"), Kind::Contact, Kind::None, true,
     &properties},
    {"menu", QT_TRANSLATE_NOOP("Commands", "[NUMER | KTO]"),
     QT_TRANSLATE_NOOP("Commands", "menu wtyczki: lista, albo wybór pozycji; co wtyczka pozwala zrobić z kontaktem"),
     Kind::Contact, Kind::None, false, &menu},
});

}  // namespace

std::span<const CommandRow> dialogCommands() { return kRows; }

}  // namespace oku::terminal
