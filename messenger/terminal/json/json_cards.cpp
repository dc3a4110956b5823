// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/json/json_cards.h"

#include <utility>

#include "messenger/terminal/json/json_line.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

// What commands wait for, beside the addresses that others do: none of these is one.
const QString kOwnCard = QStringLiteral("own card");
const QString kSetPicture = QStringLiteral("set picture");
const QString kFetchPicture = QStringLiteral("fetch picture");
const QString kPublishPicture = QStringLiteral("publish picture");
QString cardOf(const QString& jid) { return QStringLiteral("card ") + jid; }

QStringView kindWord(CardRow::Kind kind) {
    switch (kind) {
        case CardRow::Kind::section:
            return u"section";
        case CardRow::Kind::picture:
            return u"picture";
        case CardRow::Kind::field:
            break;
    }
    return u"field";
}

void answer(JsonDesk& desk, const QString& account, const QString& what, const QString& reason) {
    for (const JsonCommand& command : desk.waiting.take(account, what))
        desk.write(reason.isEmpty() ? jsonOk(command) : jsonError(command.name, command.id, reason));
}

// The picture is that of all accounts, whoever asked for another one.
void answerPicture(JsonDesk& desk, const QString& reason) {
    answer(desk, {}, kSetPicture, reason);
    for (const Account& one : desk.messenger.accounts().accounts()) answer(desk, one.jid, kFetchPicture, reason);
}

}  // namespace

JsonOutcome jsonCard(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    const QString jid = bareJid(command.text("jid"));
    return desk.waiting.ask(command, account, cardOf(jid),
                            [&] { return desk.messenger.cards().requestCard(account, jid); });
}

JsonOutcome jsonOwnCard(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return desk.waiting.ask(command, account, kOwnCard, [&] { return desk.messenger.cards().requestOwnCard(account); });
}

JsonOutcome jsonStoreCard(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    CardFields fields;
    const QJsonObject given = command.fields.value(QLatin1String("fields")).toObject();
    for (auto at = given.begin(); at != given.end(); ++at) {
        if (!at.value().isString()) return {say(Text::JsonFieldType, at.key(), say(Text::JsonTypeText))};
        fields.insert(at.key(), at.value().toString());
    }
    const bool agreed = command.flag("lose", false);
    return desk.waiting.ask(command, account, kOwnCard,
                            [&] { return desk.messenger.cards().storeOwnCard(account, fields, agreed); });
}

JsonOutcome jsonOwnPicture(JsonDesk& desk, const QString&, const JsonCommand&) {
    desk.write(ownPictureLine(desk.messenger.cards().ownPicture()));
    return {};
}

JsonOutcome jsonSetPicture(JsonDesk& desk, const QString&, const JsonCommand& command) {
    return desk.waiting.ask(command, {}, kSetPicture,
                            [&] { return desk.messenger.cards().setOwnPicture(command.text("path")); });
}

JsonOutcome jsonRemovePicture(JsonDesk& desk, const QString&, const JsonCommand&) {
    return {desk.messenger.cards().removeOwnPicture()};
}

JsonOutcome jsonPublishPicture(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return desk.waiting.ask(command, account, kPublishPicture,
                            [&] { return desk.messenger.cards().publishOwnPicture(account); });
}

JsonOutcome jsonFetchPicture(JsonDesk& desk, const QString& account, const JsonCommand& command) {
    return desk.waiting.ask(command, account, kFetchPicture,
                            [&] { return desk.messenger.cards().fetchOwnPicture(account); });
}

QByteArray cardLine(const QString& account, const ContactCard& card) {
    JsonLine line(u"card", account);
    line.put("jid", card.jid);
    line.beginList("rows");
    for (const CardRow& row : card.rows) {
        line.beginObject();
        line.put("kind", kindWord(row.kind));
        line.put("label", row.label);
        line.put("value", row.value);
        line.endObject();
    }
    line.endList();
    return std::move(line).take();
}

QByteArray ownCardLine(const QString& account, const OwnCard& card) {
    JsonLine line(u"own-card", account);
    QJsonObject fields;
    for (const char* key : kOwnCardFields) {
        const QString name = QString::fromLatin1(key);
        fields.insert(name, card.fields.value(name));
    }
    line.put("fields", QJsonValue(fields));
    line.put("lost", card.lost);
    return std::move(line).take();
}

QByteArray cardLossesLine(const QString& account, const QStringList& lost) {
    JsonLine line(u"card-losses", account);
    line.put("lost", lost);
    return std::move(line).take();
}

QByteArray ownPictureLine(const OwnPicture& picture) {
    JsonLine line(u"own-picture");
    line.put("path", picture.path);
    line.put("hash", picture.hash);
    return std::move(line).take();
}

QByteArray cardBusyLine(bool busy) {
    JsonLine line(u"own-card-busy");
    line.put("busy", busy);
    return std::move(line).take();
}

QByteArray pictureLine(const QString& account, const ContactPicture& picture) {
    JsonLine line(u"picture", account);
    line.put("jid", picture.jid);
    line.put("path", picture.path);
    line.put("hash", picture.hash);
    return std::move(line).take();
}

void answerCards(JsonDesk& desk, QObject* context) {
    const CardsFace& cards = desk.messenger.cards();
    QObject::connect(&cards, &CardsFace::cardReceived, context, [&](const QString& account, const ContactCard& card) {
        answer(desk, account, cardOf(card.jid), {});
    });
    QObject::connect(&cards, &CardsFace::cardFailed, context,
                     [&](const QString& account, const QString& jid, const QString& reason) {
                         answer(desk, account, cardOf(jid), reason);
                     });
    QObject::connect(&cards, &CardsFace::ownCardReceived, context,
                     [&](const QString& account) { answer(desk, account, kOwnCard, {}); });
    QObject::connect(&cards, &CardsFace::ownCardStored, context,
                     [&](const QString& account) { answer(desk, account, kOwnCard, {}); });
    QObject::connect(&cards, &CardsFace::ownCardFailed, context,
                     [&](const QString& account, const QString& reason) { answer(desk, account, kOwnCard, reason); });
    QObject::connect(&cards, &CardsFace::ownCardWouldLose, context,
                     [&](const QString& account, const QStringList& lost) {
                         answer(desk, account, kOwnCard, say(Text::JsonCardLosses, lost.join(QStringLiteral(", "))));
                     });
    QObject::connect(&cards, &CardsFace::ownPictureChanged, context, [&] { answerPicture(desk, {}); });
    QObject::connect(&cards, &CardsFace::ownPictureFailed, context,
                     [&](const QString& reason) { answerPicture(desk, reason); });
    QObject::connect(&cards, &CardsFace::ownPicturePublished, context,
                     [&](const QString& account) { answer(desk, account, kPublishPicture, {}); });
    QObject::connect(&cards, &CardsFace::ownPictureRefused, context,
                     [&](const QString& account, const QString& reason) {
                         answer(desk, account, kPublishPicture, reason);
                         answer(desk, account, kFetchPicture, reason);
                     });
}

}  // namespace oku::terminal
