#include "messenger/core/connections/sessions.h"

#include "host/oku/message.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/connections/socket_bridge.h"
#include "messenger/core/roster/contact_service.h"
#include "messenger/core/talk/delivery.h"
#include "messenger/core/talk/history.h"
#include "messenger/core/talk/typing_notices.h"
#include "messenger/core/values/jid_text.h"
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
    connect(&parts_.watch, &StreamWatch::bounced, this,
            [this](AccountEntry* account, const QString& id, const QString& from) {
                parts_.delivery.bounced(*account, id, from);
            });
    connect(&parts_.watch, &StreamWatch::rosterItem, this,
            [this](AccountEntry* account, const QString& jid, const ContactDetails& details) {
                parts_.contacts.list(*account).setDetails(jid, details);
            });
    parts_.services.provide(u"OKU/PFAskForAuth", [this](OKU_WORD param, OKU_WORD) -> OKU_WORD {
        const auto* contact = recordAt<OKU_CONTACT_RECORD>(param);
        auto* account = contact ? parts_.accounts.byNetId(contact->netId) : nullptr;
        if (!account) return 0;
        askForAuthorization(*account, bareJid(wideText(contact->id)));
        return 1;
    });
}

void Sessions::askForAuthorization(AccountEntry& account, const QString& jid) {
    switch (account.authorizations.add(jid)) {
        case AuthorizationRequests::Taken::yes:
            emit authorizationRequested(account.jid(), jid);
            break;
        case AuthorizationRequests::Taken::first:
            emit noticed(
                account.jid(),
                QCoreApplication::translate(
                    "Sessions", "Na odpowiedź czeka tak wiele próśb o autoryzację, że dalsze nie są pokazywane."));
            break;
        case AuthorizationRequests::Taken::further:
            break;
    }
}

void Sessions::setStatus(AccountEntry& account, Status status, const QString& description) {
    choose(account,
           {status, description, [this, &account, status, description] { giveStatus(account, status, description); }});
}

void Sessions::choose(AccountEntry& account, AccountEntry::Choice choice) {
    account.keptChoice.reset();
    parts_.sockets.sockets().forgetFailures(account.socket);
    parts_.queue.post(account.key, [&account, choice = std::move(choice)] {
        if (choice.status != Status::offline && account.loggingIn()) {
            account.keptChoice = choice;
        } else {
            choice.give();
        }
    });
}

void Sessions::giveStatus(AccountEntry& account, Status status, const QString& description) {
    if (!account.registered) return;
    auto record = makeRecord<OKU_STATUS_SET>();
    record.status = static_cast<std::uint32_t>(status);
    record.description = widePointer(description);
    parts_.services.call(account.service(u"PFStatusSet"), wordOf(&record), 0);
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
    if (event.is(OKU_HOOK_MESSAGE_IN, OKU_PHASE_AFTER)) readMessage(event);
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

void Sessions::readMessage(ProtocolEvent& event) {
    const auto* data = recordAt<OKU_MESSAGE_DATA>(event.extra);
    if (!data) return;
    Message message;
    message.account = event.account.jid();
    message.contact = bareJid(wideText(data->id));
    const auto* resource =
        data->resource && data->resource->size >= sizeof(OKU_RESOURCE_INFO) ? data->resource : nullptr;
    if (resource) message.resource = wideText(resource->resource);
    message.subject = wideText(data->subject);
    message.body = wideText(data->body);
    message.failed = data->flags == OKU_MESSAGE_DELIVERY_FAILURE;
    message.kind = data->flags == OKU_MESSAGE_NORMAL ? MessageKind::normal : MessageKind::chat;
    message.time = QDateTime::currentDateTimeUtc();
    message.delayed = parts_.watch.takeDelay(event.account, message.contact, message.resource);
    parts_.typing.set(message.account, message.contact, false);
    parts_.history.add(message, [this, &account = event.account](const Message& told) {
        parts_.contacts.list(account).addUnread(told.contact);
        emit messageReceived(told.account, told);
    });
}

void Sessions::streamError(AccountEntry& account, const QString& condition, const QString& text) {
    account.reason = text.isEmpty() ? condition : text;
    if (condition == QStringLiteral("conflict")) {
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
        giveStatus(account, Status::offline, account.description);
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
        if (auto choice = std::exchange(account->keptChoice, std::nullopt)) {
            parts_.queue.post(key, std::move(choice->give));
        }
        parts_.delivery.loginComplete(*account);
    }
}

}  // namespace oku
