// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Commands about cards and pictures.
#include <algorithm>
#include <array>

#include "messenger/core/values/cards.h"
#include "messenger/terminal/talk/command_families.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/talk/typed_path.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

QString card(Session& session, Arguments& arguments) {
    Peer peer;
    if (const QString reason = takeContact(session, arguments, peer); !reason.isEmpty()) return reason;
    return session.messenger().cards().requestCard(peer.account, peer.jid);
}

QString ownCard(Session& session, Arguments& arguments) {
    const QString account = session.chosen().jid();
    const QString word = arguments.word().toLower();
    if (word.isEmpty()) return session.messenger().cards().requestOwnCard(account);
    if (word == QLatin1String("store")) return session.cards().store(account);
    if (word == QLatin1String("forget")) {
        session.cards().forget(account);
        session.log().tell(say(Text::OwnCardForgotten));
        return {};
    }
    if (std::none_of(kOwnCardFields.begin(), kOwnCardFields.end(),
                     [&](const char* field) { return word == QLatin1String(field); }))
        return say(Text::NoSuchField, word);
    session.cards().change(account, word, arguments.rest());
    session.log().tell(say(Text::OwnCardWaits));
    return {};
}

QString picture(Session& session, Arguments& arguments) {
    CardsFace& cards = session.messenger().cards();
    const QString account = session.chosen().jid();
    const QString word = arguments.word();
    if (word == QLatin1String("set") && !arguments.empty())
        return cards.setOwnPicture(wholePath(session.options().startDirectory, arguments.rest()));
    if (!arguments.empty()) return say(Text::Usage);
    if (word == QLatin1String("remove")) return cards.removeOwnPicture();
    if (word == QLatin1String("publish") || word == QLatin1String("fetch")) {
        if (account.isEmpty()) return say(Text::NoAccountYet);
        return word == QLatin1String("publish") ? cards.publishOwnPicture(account) : cards.fetchOwnPicture(account);
    }
    if (!word.isEmpty()) return say(Text::Usage);
    const OwnPicture own = cards.ownPicture();
    session.log().tell(own.hash.isEmpty() ? say(Text::OwnPictureNone) : say(Text::OwnPictureIs, own.path, own.hash));
    return {};
}

using Kind = ArgumentKind;

constexpr std::array kRows = std::to_array<CommandRow>({
    {"card", kAnyone, QT_TRANSLATE_NOOP("Commands", "wizytówka kontaktu"), Kind::Contact, Kind::None, true, &card},
    {"my-card", QT_TRANSLATE_NOOP("Commands", "[POLE TEKST | store | forget]"),
     QT_TRANSLATE_NOOP("Commands", "własna wizytówka na serwerze; zmienia pole, zapisuje albo porzuca zmiany"),
     Kind::CardField, Kind::None, true, &ownCard},
    {"picture", QT_TRANSLATE_NOOP("Commands", "[set PLIK | remove | publish | fetch]"),
     QT_TRANSLATE_NOOP("Commands", "własny obrazek: pokazuje, ustawia, usuwa, publikuje na serwerze, pobiera stamtąd"),
     Kind::PictureAct, Kind::File, false, &picture},
});

}  // namespace

std::span<const CommandRow> cardCommands() { return kRows; }

}  // namespace oku::terminal
