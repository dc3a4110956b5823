// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/connections/sessions.h"

#include "host/oku/protocol.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/connections/socket_bridge.h"
#include "messenger/core/connections/status_choices.h"
#include "messenger/core/roster/contact_service.h"
#include "messenger/core/talk/delivery.h"
#include "messenger/core/talk/history.h"
#include "messenger/core/talk/typing_notices.h"
#include "messenger/core/wire/iq_queries.h"
#include "messenger/core/wire/stream_watch.h"

namespace oku {

Sessions::Sessions(Parts parts, QObject* parent) : QObject(parent), parts_(parts) {
    connect(&parts_.queue, &PluginQueue::callFinished, this, &Sessions::update);
    connect(&parts_.sockets, &SocketBridge::ended, this,
            [this](AccountEntry* account, const net::End& end, bool told) { connectionEnded(*account, end, told); });
    connect(&parts_.contacts, &ContactService::rebuilt, this, [this](const QString& key) { rebuilt_.insert(key); });
    connect(&parts_.watch, &StreamWatch::streamError, this,
            [this](AccountEntry* account, const QString& condition, const QString& text) {
                streamError(*account, condition, text);
            });
}

bool Sessions::onProtocolEvent(ProtocolEvent& event) {
    AccountEntry& account = event.account;
    if (event.kind == OKU_HOOK_SESSION_BOUND) {
        account.line.bound = true;
        parts_.sockets.sockets().sessionBound(account.socket);
    }
    if (event.kind == OKU_HOOK_CONNECTION_ENDED) parts_.sockets.sockets().streamEnded(account.socket);
    if (event.kind == OKU_HOOK_ROSTER_COMPLETE) completed_.insert(account.key);
    if (event.is(OKU_HOOK_OWN_STATUS, OKU_PHASE_AFTER)) readOwnStatus(event);
    return false;
}

void Sessions::readOwnStatus(ProtocolEvent& event) {
    const auto* data = recordAt<OKU_STATUS_DATA>(event.extra);
    if (!data) return;
    const Status status = static_cast<Status>(data->status);
    const QString description = wideText(data->description);
    if (event.account.status == status && event.account.description == description) return;
    event.account.status = status;
    event.account.description = description;
    emit ownStatusChanged(event.account.jid(), status, description);
}

void Sessions::streamError(AccountEntry& account, const QString& condition, const QString& text) {
    account.reason = text.isEmpty() ? condition : text;
    if (condition == QStringLiteral("conflict") && (account.line.bound || account.line.encrypted)) {
        parts_.sockets.sockets().conflictSeen(account.socket);
        account.reason =
            QCoreApplication::translate("Sessions", "To konto zalogowało się w innym miejscu z tym samym zasobem.");
    }
}

void Sessions::connectionEnded(AccountEntry& account, const net::End& end, bool told) {
    if (!told) {
        if (account.reason.isEmpty() && end.cause != net::EndCause::ClosedByPlugin) account.reason = end.text;
        parts_.queries.connectionEnded(account);
        parts_.delivery.connectionEnded(account, end.answered);
        return;
    }
    // These count as asked for, but the plugin dials again all the same unless the account is taken offline.
    if (end.cause == net::EndCause::Conflict || end.cause == net::EndCause::CertificateRefused) {
        parts_.choices.give(account, Status::offline, account.description);
    }
}

void Sessions::update() {
    for (const auto& entry : parts_.accounts.all()) {
        AccountEntry& account = *entry;
        if (!account.loggedIn()) account.rosterComplete = false;
        if (account.loggedIn() && completed_.contains(account.key)) account.rosterComplete = true;
        const ConnectionState state = account.currentState();
        if (state != account.connection) changeState(account, state);
    }
    completeLogins();
}

void Sessions::changeState(AccountEntry& account, ConnectionState state) {
    parts_.history.flush();  // what came before is told before
    account.connection = state;
    if (state == ConnectionState::connecting) {
        // A connection that was replaced ends without a word.
        parts_.queries.connectionEnded(account);
        parts_.delivery.connectionEnded(account, false);
        account.reason.clear();
    }
    if (state == ConnectionState::offline) parts_.typing.clear(account.jid());
    emit connectionChanged(account.jid(), state, state == ConnectionState::offline ? account.reason : QString());
}

void Sessions::completeLogins() {
    const auto completed = std::exchange(completed_, {});
    const auto rebuilt = std::exchange(rebuilt_, {});
    for (const QString& key : completed) {
        auto* account = parts_.accounts.byKey(key);
        if (!account || !account->ready()) continue;
        if (!rebuilt.contains(key)) {
            emit noticed(account->jid(),
                         QCoreApplication::translate(
                             "Sessions", "Serwer nie podał listy kontaktów; pokazana jest ostatnia znana."));
        }
        parts_.contacts.list(*account).dropChanges();
        emit rosterComplete(account->jid());
        parts_.choices.loginComplete(*account);
        parts_.delivery.loginComplete(*account);
    }
}

}  // namespace oku
