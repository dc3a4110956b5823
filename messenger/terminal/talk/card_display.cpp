// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/card_display.h"

#include <algorithm>
#include <QCoreApplication>

#include "messenger/core/values/setting_keys.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/marks.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

struct Word {
    const char* name;
    const char* text;
};

/// In the order of a form.
constexpr Word kFields[] = {
    {"nick", QT_TRANSLATE_NOOP("CardFields", "pseudonim")},   {"name", QT_TRANSLATE_NOOP("CardFields", "imię")},
    {"surname", QT_TRANSLATE_NOOP("CardFields", "nazwisko")}, {"email", QT_TRANSLATE_NOOP("CardFields", "e-mail")},
    {"www", QT_TRANSLATE_NOOP("CardFields", "strona WWW")},   {"title", QT_TRANSLATE_NOOP("CardFields", "tytuł")},
    {"role", QT_TRANSLATE_NOOP("CardFields", "rola")},        {"birth", QT_TRANSLATE_NOOP("CardFields", "urodziny")},
};

/// What a card may hold that is not among them.
constexpr Word kElements[] = {
    {"FN", QT_TRANSLATE_NOOP("CardFields", "nazwa")},
    {"PHOTO", QT_TRANSLATE_NOOP("CardFields", "zdjęcie")},
    {"N/MIDDLE", QT_TRANSLATE_NOOP("CardFields", "drugie imię")},
    {"ADR", QT_TRANSLATE_NOOP("CardFields", "adres")},
    {"TEL", QT_TRANSLATE_NOOP("CardFields", "telefon")},
    {"EMAIL", QT_TRANSLATE_NOOP("CardFields", "kolejny e-mail")},
    {"ORG", QT_TRANSLATE_NOOP("CardFields", "organizacja")},
    {"DESC", QT_TRANSLATE_NOOP("CardFields", "opis")},
};

QString translated(const Word& word) { return QCoreApplication::translate("CardFields", word.text); }

/// In words where there are some, else the element's name.
QString lossesText(const QStringList& lost) {
    QStringList words;
    for (const QString& one : lost) {
        const auto* found = std::find_if(std::begin(kElements), std::end(kElements),
                                         [&](const Word& word) { return one == QLatin1String(word.name); });
        words.append(found == std::end(kElements) ? oneLine(one) : translated(*found));
    }
    return words.join(QStringLiteral(", "));
}

}  // namespace

CardDisplay::CardDisplay(const Desk& desk) : desk_(desk) {
    const CardsFace& cards = desk.messenger.cards();
    const auto tellError = [this](const QString&, const QString& reason) { desk_.log.tellError(reason); };
    connect(&cards, &CardsFace::cardReceived, this, &CardDisplay::onCard);
    connect(&cards, &CardsFace::cardFailed, this,
            [this](const QString& account, const QString& jid, const QString& reason) {
                desk_.log.tellError(say(Text::CardFailed, desk_.contacts.nameOf({account, jid}), reason));
            });
    connect(&cards, &CardsFace::ownCardReceived, this, &CardDisplay::onOwnCard);
    connect(&cards, &CardsFace::ownCardWouldLose, this, &CardDisplay::onLosses);
    connect(&cards, &CardsFace::ownCardStored, this, &CardDisplay::onStored);
    connect(&cards, &CardsFace::ownCardFailed, this, tellError);
    connect(&cards, &CardsFace::ownPictureChanged, this, [this](const OwnPicture& picture) {
        desk_.log.tell(picture.hash.isEmpty() ? say(Text::OwnPictureGone) : say(Text::OwnPictureSet, picture.hash));
    });
    connect(&cards, &CardsFace::ownPictureFailed, this, [this](const QString& reason) { desk_.log.tellError(reason); });
    connect(&cards, &CardsFace::ownPicturePublished, this,
            [this](const QString& account) { desk_.log.tell(say(Text::OwnPicturePublished, account)); });
    connect(&cards, &CardsFace::ownPictureRefused, this, tellError);
    connect(&cards, &CardsFace::pictureChanged, this, &CardDisplay::onPicture);
    connect(&cards, &CardsFace::busyChanged, this, [this](bool busy) {
        if (busy) desk_.log.tell(say(Text::OwnCardBusy), Style::Faint);
    });
    connect(&cards, &CardsFace::progressed, this,
            [this](const QString&, const QString& text) { desk_.log.tell(text, Style::Faint); });
}

void CardDisplay::onCard(const QString& account, const ContactCard& card) {
    desk_.log.list(say(Text::CardOf, desk_.contacts.nameOf({account, card.jid}), card.jid), Style::Heading);
    if (card.rows.isEmpty()) desk_.log.list(QStringLiteral("  ") + say(Text::CardEmpty), Style::Faint);
    for (const CardRow& row : card.rows) {
        if (row.kind == CardRow::Kind::section)
            desk_.log.list(QStringLiteral("  ") + oneLine(row.value), Style::Heading);
        else
            desk_.log.list(QStringLiteral("    %1 %2").arg(oneLine(row.label), oneLine(row.value)), Style::Plain, 6);
    }
}

void CardDisplay::onOwnCard(const QString& account, const OwnCard& card) {
    const CardFields changes = changes_.value(account);
    desk_.log.list(say(Text::OwnCardOf, account), Style::Heading);
    for (const Word& field : kFields) {
        const QString key = QString::fromLatin1(field.name);
        const bool changed = changes.contains(key);
        QString line = QStringLiteral("  %1 (%2): %3")
                           .arg(key, translated(field), oneLine(changed ? changes.value(key) : card.fields.value(key)));
        if (changed) line += u' ' + say(Text::OwnCardChanged);
        desk_.log.list(line, changed ? Style::Notice : Style::Plain, 4);
    }
    if (!card.lost.isEmpty())
        desk_.log.list(QStringLiteral("  ") + say(Text::OwnCardHolds, lossesText(card.lost)), Style::Notice, 4);
    desk_.log.list(say(Text::OwnCardHint), Style::Faint);
}

// What was changed while the rest was on its way to the server waits on.
void CardDisplay::onStored(const QString& account) {
    warned_.remove(account);
    const CardFields sent = sent_.take(account);
    CardFields& changes = changes_[account];
    for (auto field = sent.begin(); field != sent.end(); ++field) {
        if (changes.value(field.key()) == field.value()) changes.remove(field.key());
    }
    if (changes.isEmpty()) changes_.remove(account);
    desk_.log.tell(say(Text::OwnCardStored));
}

void CardDisplay::onLosses(const QString& account, const QStringList& lost) {
    warned_.insert(account);
    desk_.log.tell(say(Text::OwnCardLosses, lossesText(lost)), Style::Question, kQuestion);
}

// Pictures come by the dozen after a login, so they are told to those who asked for it.
void CardDisplay::onPicture(const QString& account, const ContactPicture& picture) {
    const QString key = QString::fromUtf16(setting::tellPictures);
    if (desk_.messenger.accounts().settingValue(account, key).toInt() != 1) return;
    const Peer peer{account, picture.jid};
    desk_.log.tellOf(peer, say(Text::PictureChanged, desk_.contacts.nameOf(peer)), Style::Plain, kInformation);
}

void CardDisplay::change(const QString& account, const QString& field, const QString& text) {
    warned_.remove(account);
    changes_[account].insert(field, text);
}

void CardDisplay::forget(const QString& account) {
    warned_.remove(account);
    changes_.remove(account);
}

QString CardDisplay::store(const QString& account) {
    if (!changes_.contains(account)) return say(Text::OwnCardUnchanged);
    const CardFields changes = changes_.value(account);
    const QString reason = desk_.messenger.cards().storeOwnCard(account, changes, warned_.remove(account));
    // One that is refused leaves that which is under way.
    if (reason.isEmpty()) sent_.insert(account, changes);
    return reason;
}

}  // namespace oku::terminal
