// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/json/json_events.h"

#include <QJsonObject>
#include <utility>

#include "messenger/terminal/json/json_answer.h"
#include "messenger/terminal/json/json_cards.h"
#include "messenger/terminal/json/json_dialogs.h"
#include "messenger/terminal/json/json_files.h"
#include "messenger/terminal/json/json_line.h"
#include "messenger/terminal/json/json_pages.h"
#include "messenger/terminal/screen/wording.h"

namespace oku::terminal {
namespace {

QStringView kindWord(MessageKind kind) { return kind == MessageKind::chat ? u"chat" : u"normal"; }

QByteArray accountRemovedLine(const QString& account) {
    JsonLine line(u"account-removed", account);
    line.put("jid", account);
    return std::move(line).take();
}

QByteArray accountLine(const QString& account) {
    JsonLine line(u"account", account);
    line.put("jid", account);
    return std::move(line).take();
}

QByteArray connectionLine(const QString& account, ConnectionState state, bool encrypted, const QString& reason) {
    JsonLine line(u"connection", account);
    line.put("state", connectionStateWord(state));
    line.put("encrypted", encrypted);
    line.put("reason", reason);
    return std::move(line).take();
}

QByteArray statusLine(const QString& account, Status status, const QString& description) {
    JsonLine line(u"status", account);
    line.put("status", statusWord(status));
    line.put("description", description);
    return std::move(line).take();
}

QByteArray contactLine(const QString& account, const Contact& contact) {
    JsonLine line(u"contact", account);
    putContact(line, contact);
    return std::move(line).take();
}

QByteArray removedLine(const QString& account, const QString& jid) {
    JsonLine line(u"removed", account);
    line.put("jid", jid);
    return std::move(line).take();
}

QByteArray presenceLine(const QString& account, const QString& jid, const Resource& resource) {
    JsonLine line(u"presence", account);
    line.put("jid", jid);
    putResource(line, resource);
    return std::move(line).take();
}

QByteArray messageLine(const QString& account, const Message& message) {
    JsonLine line(u"message", account);
    line.put("from", message.contact);
    line.put("resource", message.resource);
    line.put("body", message.body);
    line.put("subject", message.subject);
    line.put("kind", kindWord(message.kind));
    line.put("time", message.time);
    line.put("delayed", message.delayed);
    line.put("failed", message.failed);
    return std::move(line).take();
}

QByteArray outgoingLine(const QString& account, const Message& message) {
    JsonLine line(deliveryStateWord(message.state), account);
    line.put("to", message.contact);
    line.put("body", message.body);
    line.put("message", message.number);
    return std::move(line).take();
}

QByteArray typingLine(const QString& account, const QString& jid, bool composing) {
    JsonLine line(u"typing", account);
    line.put("from", jid);
    line.put("composing", composing);
    return std::move(line).take();
}

QByteArray authorizationLine(const QString& account, const QString& jid) {
    JsonLine line(u"authorization", account);
    line.put("jid", jid);
    return std::move(line).take();
}

QByteArray questionLine(const MessageBox& box) {
    JsonLine line(u"question");
    line.put("box", box.number);
    line.put("text", box.text);
    line.put("title", box.title);
    line.put("style", boxStyleWord(box.style));
    line.put("holds", box.holds);
    line.put("seconds", box.seconds);
    return std::move(line).take();
}

QByteArray tuneLine(const QString& account, const QString& from, const Tune& tune) {
    JsonLine line(u"tune", account);
    line.put("from", from);
    line.put("artist", tune.artist);
    line.put("title", tune.title);
    line.put("source", tune.source);
    line.put("track", tune.track);
    line.put("uri", tune.uri);
    line.put("length", tune.length);
    return std::move(line).take();
}

QByteArray moodLine(const QString& account, const QString& from, const Mood& mood) {
    JsonLine line(u"mood", account);
    line.put("from", from);
    line.put("mood", mood.name);
    line.put("text", mood.text);
    return std::move(line).take();
}

QByteArray locationLine(const QString& account, const QString& from, const Location& location) {
    QJsonObject fields;
    for (auto at = location.begin(); at != location.end(); ++at) fields.insert(at.key(), at.value());
    JsonLine line(u"location", account);
    line.put("from", from);
    line.put("fields", fields);
    return std::move(line).take();
}

QByteArray popupLine(const Popup& popup) {
    JsonLine line(u"popup");
    line.put("popup", popup.number);
    line.put("kind", popupKindWord(popup.kind));
    line.put("title", popup.title);
    line.put("text", popup.text);
    line.put("stays", popup.stays);
    line.put("opens", popup.opens);
    return std::move(line).take();
}

QByteArray popupGoneLine(int number) {
    JsonLine line(u"popup-gone");
    line.put("popup", number);
    return std::move(line).take();
}

QByteArray logLine(const LogLine& logged) {
    JsonLine line(u"log");
    line.put("level", logged.level);
    line.put("tag", logged.tag);
    line.put("text", logged.text);
    return std::move(line).take();
}

QByteArray xmlLine(const QString& account, bool incoming, const QString& data) {
    JsonLine line(u"xml", account);
    line.put("direction", directionWord(incoming));
    line.put("data", data);
    return std::move(line).take();
}

QByteArray infoLine(const QString& account, const ContactInfo& info) {
    JsonLine line(u"info", account);
    line.put("jid", info.jid);
    putResource(line, info.resource);
    line.put("changed", info.resource.changed);
    line.put("client", info.client);
    line.put("version", info.version);
    line.put("os", info.os);
    line.put("features", info.features);
    return std::move(line).take();
}

QByteArray serverLine(const QString& account, const ServerInfo& info) {
    JsonLine line(u"server", account);
    line.put("domain", info.domain);
    line.put("identities", info.identities);
    line.put("features", info.features);
    return std::move(line).take();
}

}  // namespace

JsonEvents::JsonEvents(MessengerFace& messenger, Writer write, bool verbose) : write_(std::move(write)) {
    hearAccounts(messenger.accounts());
    hearRoster(messenger.roster());
    hearTalk(messenger.talk());
    hearDialogs(messenger.dialogs());
    hearCards(messenger.cards());
    hearTransfers(messenger.transfers());
    hearNews(messenger.news());
    hear(messenger.windows(), &WindowsFace::boxOpened, questionLine);
    hear(messenger.windows(), &WindowsFace::contactMenuTold, contactMenuLine);
    hear(messenger.windows(), &WindowsFace::noticed, jsonNotice);
    hear(messenger.wire(), &WireFace::xmlSeen, xmlLine);
    if (verbose) hear(messenger.wire(), &WireFace::logged, logLine);
}

void JsonEvents::hearAccounts(AccountsFace& accounts) {
    hear(accounts, &AccountsFace::accountChanged, accountLine);
    hear(accounts, &AccountsFace::accountRemoved, accountRemovedLine);
    hear(accounts, &AccountsFace::ownStatusChanged, statusLine);
    hear(accounts, &AccountsFace::connectionChanged,
         [&accounts](const QString& account, ConnectionState state, const QString& reason) {
             return connectionLine(account, state, accounts.encrypted(account), reason);
         });
    hear(accounts, &AccountsFace::certificateRefused, [](const QString& account, const CertificateProblem& problem) {
        return jsonNotice(account, certificateText(problem));
    });
}

void JsonEvents::hearRoster(RosterFace& roster) {
    hear(roster, &RosterFace::rosterComplete,
         [&roster](const QString& account) { return jsonRoster(account, roster.contacts(account)); });
    hear(roster, &RosterFace::contactChanged, contactLine);
    hear(roster, &RosterFace::contactRemoved, removedLine);
    hear(roster, &RosterFace::presenceReceived, presenceLine);
    hear(roster, &RosterFace::authorizationRequested, authorizationLine);
    hear(roster, &RosterFace::infoReceived, infoLine);
    hear(roster, &RosterFace::serverInfoReceived, serverLine);
}

void JsonEvents::hearCards(CardsFace& cards) {
    hear(cards, &CardsFace::cardReceived, cardLine);
    hear(cards, &CardsFace::ownCardReceived, ownCardLine);
    hear(cards, &CardsFace::ownCardWouldLose, cardLossesLine);
    hear(cards, &CardsFace::ownPictureChanged, ownPictureLine);
    hear(cards, &CardsFace::pictureChanged, pictureLine);
    hear(cards, &CardsFace::progressed, jsonNotice);
    hear(cards, &CardsFace::busyChanged, cardBusyLine);
}

void JsonEvents::hearTransfers(TransfersFace& transfers) {
    hear(transfers, &TransfersFace::offerReceived, jsonFileOffer);
    hear(transfers, &TransfersFace::offerClosed, jsonFileOfferClosed);
    hear(transfers, &TransfersFace::fileAsked, jsonFileQuestion);
    hear(transfers, &TransfersFace::fileQuestionClosed, jsonFileQuestionClosed);
    hear(transfers, &TransfersFace::transferChanged, jsonTransfer);
}

void JsonEvents::hearDialogs(DialogsFace& dialogs) {
    hear(dialogs, &DialogsFace::opened, [&dialogs](int window) { return windowLine(dialogs, window); });
    hear(dialogs, &DialogsFace::closed, windowClosedLine);
    hear(dialogs, &DialogsFace::changed, [&dialogs](int window) { return windowChangedLine(dialogs, window); });
    hear(dialogs, &DialogsFace::controlChanged,
         [&dialogs](int window, quint32 control) { return windowControlLine(dialogs, window, control); });
    hear(dialogs, &DialogsFace::itemAdded, windowItemLine);
    hear(dialogs, &DialogsFace::itemsCleared, windowNoItemsLine);
    hear(dialogs, &DialogsFace::rowAdded,
         [](int window, quint32 list, const DialogRow& row) { return windowRowLine(window, list, row, true); });
    hear(dialogs, &DialogsFace::rowChanged,
         [](int window, quint32 list, const DialogRow& row) { return windowRowLine(window, list, row, false); });
    hear(dialogs, &DialogsFace::rowsCleared, windowNoRowsLine);
    hear(dialogs, &DialogsFace::menuOpened, windowMenuLine);
    hear(dialogs, &DialogsFace::focused, windowFocusLine);
    hear(dialogs, &DialogsFace::applied, pageAppliedLine);
    hear(dialogs, &DialogsFace::refused, windowRefusedLine);
    hear(dialogs, &DialogsFace::propertyPagesTold,
         [&dialogs](const QString& account, const QString& jid, const QList<DialogPage>& pages) {
             return pagesLine(dialogs, account, jid, pages);
         });
}

void JsonEvents::hearTalk(TalkFace& talk) {
    hear(talk, &TalkFace::messageReceived, messageLine);
    hear(talk, &TalkFace::messageSent, outgoingLine);
    hear(talk, &TalkFace::messageQueued, outgoingLine);
    hear(talk, &TalkFace::messageStateChanged, outgoingLine);
    hear(talk, &TalkFace::typingReceived, typingLine);
    // Once for programs, and in words for the people behind them.
    hear(talk, &TalkFace::messageStateChanged, [](const QString& account, const Message& message) {
        return jsonNotice(account, deliveryText(message, message.contact));
    });
}

void JsonEvents::hearNews(NewsFace& news) {
    hear(news, &NewsFace::tuneReceived, tuneLine);
    hear(news, &NewsFace::moodReceived, moodLine);
    hear(news, &NewsFace::locationReceived, locationLine);
    hear(news, &NewsFace::popupShown, popupLine);
    hear(news, &NewsFace::popupGone, popupGoneLine);
}

}  // namespace oku::terminal
