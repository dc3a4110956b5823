// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/cards/contact_cards.h"

#include <algorithm>
#include <QPointer>
#include <QTimer>
#include <vector>

#include "host/oku/cards.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/cards/checked_pictures.h"
#include "messenger/core/cards/plugin_words.h"
#include "messenger/core/roster/roster_commands.h"
#include "messenger/core/values/jid_text.h"

namespace oku {
namespace {

constexpr std::size_t kMostRequests = 32;
// What a stranger's card may hold; the plugin reads the first of each element, so that none comes near.
constexpr qsizetype kMostRows = 64;
constexpr qsizetype kLongestRow = 4096;

CardRow rowOf(const OKU_CARD_ELEMENT& record) {
    const auto kind = record.kind == OKU_CARD_SECTION ? CardRow::Kind::section
                      : record.kind == OKU_CARD_IMAGE ? CardRow::Kind::picture
                                                      : CardRow::Kind::field;
    return {kind, wideText(record.label).left(kLongestRow), wideText(record.value).left(kLongestRow)};
}

}  // namespace

ContactCards::ContactCards(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, CheckedPictures& pictures,
                           QObject* parent)
    : QObject(parent), services_(services), accounts_(accounts), queue_(queue), pictures_(pictures) {
    services.provide(u"VCard/SetStatus", [this](OKU_WORD param, OKU_WORD) { return setStatus(param); });
    services.provide(u"VCard/AddElement", [this](OKU_WORD param, OKU_WORD) { return addElement(param); });
}

QString ContactCards::ask(AccountEntry& account, const QString& jid) {
    if (!account.loggedIn()) return notConnected();
    const QString bare = bareJid(jid);
    if (const QString fault = addressFault(bare); !fault.isEmpty()) return fault;
    const auto same = [&](const auto& one) { return one.second.key == account.key && one.second.card.jid == bare; };
    if (std::any_of(requests_.begin(), requests_.end(), same)) return {};
    if (requests_.size() >= kMostRequests)
        return QCoreApplication::translate("Cards", "Zbyt wiele wizytówek naraz; poczekaj na poprzednie.");
    const OKU_WORD token = ++lastToken_;
    requests_[token] = {account.key, {bare, {}}};
    QTimer::singleShot(kCardPatience, this, [this, token] { fail(token, serverSilent()); });
    queue_.post(account.key, [this, token] { call(token); });
    return {};
}

void ContactCards::call(OKU_WORD token) {
    const auto found = requests_.find(token);
    if (found == requests_.end()) return;
    const auto* account = accounts_.byKey(found->second.key);
    if (!account || !account->loggedIn()) return fail(token, notConnected());
    const QString jid = found->second.card.jid;
    auto record = makeRecord<OKU_CONTACT_CARD_REQUEST>();
    record.token = token;
    record.jid = widePointer(jid);
    services_.call(account->service(u"PFGetContactVCard"), wordOf(&record), 0);
}

OKU_WORD ContactCards::setStatus(OKU_WORD param) {
    const auto* record = recordAt<OKU_CARD_STATUS>(param);
    const auto found = record ? requests_.find(record->token) : requests_.end();
    if (found == requests_.end() || found->second.coming) return 0;
    const QString text = wideText(record->text);
    if (record->state == 1) {
        found->second.coming = true;
        // The rows come before the call that is on the stack returns.
        queue_.post(found->second.key, [this, token = record->token] { complete(token); });
    } else if (!tellsProgress(text)) {
        fail(record->token, text);
    } else if (const auto* account = accounts_.byKey(found->second.key)) {
        emit progressed(account->jid(), text);
    }
    return 1;
}

OKU_WORD ContactCards::addElement(OKU_WORD param) {
    const auto* record = recordAt<OKU_CARD_ELEMENT>(param);
    const auto found = record ? requests_.find(record->token) : requests_.end();
    if (found == requests_.end() || !found->second.coming) return 0;
    QList<CardRow>& rows = found->second.card.rows;
    // A picture is the last.
    if (rows.size() >= kMostRows || (!rows.isEmpty() && rows.last().kind == CardRow::Kind::picture)) return 0;
    rows.append(rowOf(*record));
    return 1;
}

// A picture is shown once it has been read apart, and its heading with it.
void ContactCards::complete(OKU_WORD token) {
    const auto found = requests_.find(token);
    if (found == requests_.end()) return;
    QList<CardRow>& rows = found->second.card.rows;
    if (rows.isEmpty() || rows.last().kind != CardRow::Kind::picture) return tell(token);
    pictures_.check(rows.last().value, [self = QPointer(this), token](const CheckedPicture& picture) {
        if (self) self->showPicture(token, picture.path);
    });
}

void ContactCards::showPicture(OKU_WORD token, const QString& file) {
    const auto found = requests_.find(token);
    if (found == requests_.end()) return;
    QList<CardRow>& rows = found->second.card.rows;
    rows.last().value = file;
    if (file.isEmpty()) rows.removeLast();
    if (!rows.isEmpty() && rows.last().kind == CardRow::Kind::section) rows.removeLast();
    tell(token);
}

void ContactCards::tell(OKU_WORD token) {
    const auto request = requests_.extract(token);
    const auto* account = request ? accounts_.byKey(request.mapped().key) : nullptr;
    if (account) emit received(account->jid(), request.mapped().card);
}

void ContactCards::fail(OKU_WORD token, const QString& reason) {
    const auto found = requests_.find(token);
    if (found == requests_.end()) return;
    const auto request = requests_.extract(found);
    const auto* account = accounts_.byKey(request.mapped().key);
    if (account) emit failed(account->jid(), request.mapped().card.jid, reason);
}

void ContactCards::connectionEnded(const AccountEntry& account) {
    std::vector<OKU_WORD> tokens;
    for (const auto& [token, request] : requests_)
        if (request.key == account.key && !request.coming) tokens.push_back(token);
    for (const OKU_WORD token : tokens) fail(token, notConnected());
}

}  // namespace oku
