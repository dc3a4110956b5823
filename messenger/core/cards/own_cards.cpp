// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/cards/own_cards.h"

#include <algorithm>
#include <QCoreApplication>
#include <QTimer>
#include <utility>

#include "host/oku/cards.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/cards/own_picture.h"
#include "messenger/core/cards/plugin_words.h"
#include "messenger/core/cards/stored_card.h"
#include "messenger/core/roster/roster_commands.h"
#include "messenger/core/windows/message_boxes.h"
#include "messenger/core/wire/iq_queries.h"

namespace oku {
namespace {

const QString kQuestion = QStringLiteral("<vCard xmlns=\"vcard-temp\"/>");

/// The plugin's services, in the order of the kinds.
constexpr const char16_t* kServices[] = {u"PFGetMyVCard", u"PFSetMyVCard", u"PFSetMyAvatar", u"PFGetMyAvatar"};

bool isField(const QString& key) {
    return std::any_of(kOwnCardFields.begin(), kOwnCardFields.end(),
                       [&](const char* field) { return key == QLatin1String(field); });
}

}  // namespace

OwnCards::OwnCards(Parts parts, QObject* parent) : QObject(parent), parts_(parts) {
    provideServices(parts_.services);
    connect(&parts_.boxes, &MessageBoxes::opened, this, &OwnCards::takeBox);
}

void OwnCards::provideServices(ServiceRegistry& services) {
    services.provide(u"MyVCard/SetFieldValue", [this](OKU_WORD param, OKU_WORD) { return setField(param); });
    services.provide(u"MyVCard/GetFieldValue", [this](OKU_WORD param, OKU_WORD) { return getField(param); });
    services.provide(u"MyVCard/SetStatus", [this](OKU_WORD param, OKU_WORD) { return setStatus(param); });
    services.provide(u"MyVCard/SignalBusyness", [this](OKU_WORD busy, OKU_WORD) { return signalBusyness(busy != 0); });
}

QString OwnCards::fetchCard(AccountEntry& account) { return begin(account, {account.key, Kind::fetchCard}); }

QString OwnCards::storeCard(AccountEntry& account, const CardFields& changes, bool agreed) {
    for (auto at = changes.begin(); at != changes.end(); ++at) {
        if (!isField(at.key())) return QCoreApplication::translate("Cards", "Wizytówka nie ma pola %1.").arg(at.key());
        if (at->size() > kLongestCardField)
            return QCoreApplication::translate("Cards", "Pole %1 jest za długie (najwyżej %2 znaków).")
                .arg(at.key())
                .arg(kLongestCardField);
    }
    return begin(account, {account.key, Kind::storeCard, {}, changes, agreed});
}

QString OwnCards::publishPicture(AccountEntry& account) {
    if (parts_.picture.picture().hash.isEmpty())
        return QCoreApplication::translate("Cards", "Nie ma własnego obrazka.");
    if (!parts_.picture.told())
        return QCoreApplication::translate("Cards", "Obrazek zmieni się, gdy skończy się logowanie; spróbuj potem.");
    return begin(account, {account.key, Kind::publishPicture});
}

QString OwnCards::fetchPicture(AccountEntry& account) { return begin(account, {account.key, Kind::fetchPicture}); }

QString OwnCards::begin(AccountEntry& account, Operation operation) {
    if (!account.loggedIn()) return notConnected();
    if (runningOf(account.key) != running_.end())
        return QCoreApplication::translate("Cards", "To konto zajmuje się jeszcze swoją wizytówką albo obrazkiem.");
    const OKU_WORD token = ++lastToken_;
    const bool aboutCard = operation.kind == Kind::fetchCard || operation.kind == Kind::storeCard;
    running_.emplace(token, std::move(operation));
    QTimer::singleShot(kCardPatience, this, [this, token] { fail(token, serverSilent()); });
    const auto inTurn = [this, token, aboutCard] { aboutCard ? askServer(token) : call(token); };
    // From the event loop: the plugin may open a box, which holds whoever called until it is answered.
    QMetaObject::invokeMethod(
        this, [this, key = account.key, inTurn] { parts_.queue.post(key, inTurn); }, Qt::QueuedConnection);
    return {};
}

// The plugin reads eight fields, and what it stores replaces the whole card: what else there is, the server must say.
void OwnCards::askServer(OKU_WORD token) {
    const auto found = running_.find(token);
    if (found == running_.end()) return;
    auto* account = parts_.accounts.byKey(found->second.key);
    const auto answered = [this, token](const std::optional<QByteArray>& answer) {
        const auto asked = running_.find(token);
        if (asked == running_.end()) return;
        const auto card = answer ? readStoredCard(*answer, accountOf(asked->second)) : std::nullopt;
        if (card) return takeStored(token, *card);
        fail(token, answer ? QCoreApplication::translate("Cards", "Serwer nie podał wizytówki.") : serverSilent());
    };
    if (!account || !parts_.queries.send(*account, {}, QStringLiteral("get"), kQuestion, answered, kCardPatience))
        fail(token, notConnected());
}

void OwnCards::takeStored(OKU_WORD token, const StoredCard& stored) {
    Operation& operation = running_.at(token);
    operation.card = stored.card;
    for (auto at = operation.changes.begin(); at != operation.changes.end(); ++at)
        operation.card.fields.insert(at.key(), cardFieldText(at.value()));
    if (operation.kind == Kind::storeCard && !stored.card.lost.isEmpty() && !operation.agreed) {
        const auto refused = running_.extract(token);
        emit cardWouldLose(accountOf(refused.mapped()), stored.card.lost);
        return;
    }
    // To the plugin a card that is not there is an error.
    if (operation.kind == Kind::fetchCard && !stored.there) return succeed(token);
    // This is a call of the plugin's; the next one has to wait for its end.
    parts_.queue.post(operation.key, [this, token] { call(token); });
}

void OwnCards::call(OKU_WORD token) {
    const auto found = running_.find(token);
    if (found == running_.end()) return;
    const auto* account = parts_.accounts.byKey(found->second.key);
    if (!account || !account->loggedIn()) return fail(token, notConnected());
    found->second.ending = true;  // a refusal comes at once, in a box
    auto record = makeRecord<OKU_OWN_CARD_REQUEST>();
    record.token = token;
    parts_.services.call(account->service(kServices[static_cast<int>(found->second.kind)]), wordOf(&record), 0);
    if (const auto waits = running_.find(token); waits != running_.end()) waits->second.ending = false;
}

OKU_WORD OwnCards::setField(OKU_WORD param) {
    const auto* record = recordAt<OKU_OWN_CARD_FIELD>(param);
    const auto found = record ? running_.find(record->token) : running_.end();
    if (found == running_.end()) return 0;
    const QString key = wideText(record->key);
    if (found->second.kind == Kind::fetchPicture && key == QLatin1String("avatar")) {
        takePicture(record->token, wideText(record->value));
    } else if (found->second.kind == Kind::fetchCard && isField(key)) {
        found->second.card.fields.insert(key, wideText(record->value).left(kLongestCardField));
    }
    return 1;
}

OKU_WORD OwnCards::getField(OKU_WORD param) {
    const auto* record = recordAt<OKU_OWN_CARD_FIELD_GET>(param);
    const auto found = record ? running_.find(record->token) : running_.end();
    if (found == running_.end() || found->second.kind != Kind::storeCard || !record->buffer) return 0;
    const QString value = found->second.card.fields.value(wideText(record->key));
    if (record->capacity <= static_cast<std::uint32_t>(value.size())) return 0;
    std::copy_n(widePointer(value), value.size() + 1, record->buffer);
    return 1;
}

OKU_WORD OwnCards::setStatus(OKU_WORD param) {
    const auto* record = recordAt<OKU_OWN_CARD_STATUS>(param);
    const auto found = record ? running_.find(record->token) : running_.end();
    if (found == running_.end()) return 0;
    const QString text = wideText(record->text);
    if (text == QLatin1String("OK"))
        succeed(record->token);
    else if (tellsProgress(text))
        emit progressed(accountOf(found->second), text);
    else
        fail(record->token, text);
    return 1;
}

// Nobody says whose: it is that of the account whose bytes the plugin is at.
OKU_WORD OwnCards::signalBusyness(bool busy) {
    emit busyChanged(busy);
    const auto found = busy ? running_.end() : runningOf(parts_.queue.owner());
    if (found != running_.end()) {
        found->second.ending = true;
        parts_.queue.post(found->second.key, [this, token = found->first] { callReturned(token); });
    }
    return 1;
}

void OwnCards::takeBox(const MessageBox& box) {
    const auto found = runningOf(parts_.queue.owner());
    if (found == running_.end() || !found->second.ending) return;
    if (box.style == BoxStyle::warning) fail(found->first, box.text);
    if (box.style == BoxStyle::information) succeed(found->first);
}

void OwnCards::takePicture(OKU_WORD token, const QString& path) {
    if (const QString reason = parts_.picture.setFromCache(path); !reason.isEmpty())
        fail(token, reason);
    else
        running_.erase(token);
}

// The plugin was done, and told nothing.
void OwnCards::callReturned(OKU_WORD token) { fail(token, serverSilent()); }

void OwnCards::succeed(OKU_WORD token) {
    const auto done = running_.extract(token);
    if (!done) return;
    const QString account = accountOf(done.mapped());
    switch (done.mapped().kind) {
        case Kind::fetchCard:
            emit cardFetched(account, done.mapped().card);
            break;
        case Kind::storeCard:
            emit cardStored(account);
            break;
        case Kind::publishPicture:
            emit picturePublished(account);
            break;
        case Kind::fetchPicture:
            break;
    }
}

void OwnCards::fail(OKU_WORD token, const QString& reason) {
    const auto done = running_.extract(token);
    if (!done) return;
    const bool aboutCard = done.mapped().kind == Kind::fetchCard || done.mapped().kind == Kind::storeCard;
    const QString account = accountOf(done.mapped());
    aboutCard ? emit cardFailed(account, reason) : emit pictureRefused(account, reason);
}

void OwnCards::connectionEnded(const AccountEntry& account) {
    if (const auto found = runningOf(account.key); found != running_.end()) fail(found->first, notConnected());
}

OwnCards::Running::iterator OwnCards::runningOf(const QString& key) {
    return std::find_if(running_.begin(), running_.end(), [&](const auto& one) { return one.second.key == key; });
}

QString OwnCards::accountOf(const Operation& operation) const {
    const auto* account = parts_.accounts.byKey(operation.key);
    return account ? account->jid() : QString();
}

}  // namespace oku
