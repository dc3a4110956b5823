// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/talk/delivery.h"

#include <algorithm>
#include <utility>

#include "host/oku/message.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/talk/history.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/wire/iq_queries.h"
#include "messenger/core/wire/stanza_guard.h"

namespace oku {
namespace {

constexpr int kConfirmationDelay = 1000;  // milliseconds; what is sent meanwhile is confirmed together
constexpr int kConfirmationTimeout = 30000;
constexpr std::size_t kMostIds = 1000;

/// A message comes back from its recipient, from a server on the way, or without an address from the own one. Others
/// can only guess its id.
bool maySendBack(const AccountEntry& account, const QString& contact, const QString& from) {
    const std::string sender = from.toStdString();
    return isOwnAddress(account, sender) || sameAddress(bareAddress(sender), contact.toStdString()) ||
           sameAddress(sender, domainOf(contact).toStdString());
}

}  // namespace

Delivery::Delivery(ServiceRegistry& services, PluginQueue& queue, History& history, IqQueries& queries, QObject* parent)
    : QObject(parent), services_(services), queue_(queue), history_(history), queries_(queries) {
    connect(&history_, &History::retried, this, &Delivery::catchUp);
}

qint64 Delivery::send(AccountEntry& account, Message message) {
    message.state = DeliveryState::queued;
    message.number = history_.addNow(message);
    if (message.number) submit(account, message);
    return message.number;
}

void Delivery::resend(AccountEntry& account, Message message) {
    message.state = DeliveryState::queued;
    history_.setState(message.number, DeliveryState::queued);
    submit(account, message);
}

// One that was posted already is looked up again before it is handed over.
bool Delivery::cancel(const AccountEntry& account, Message message) {
    if (!history_.remove(message.number)) return false;
    message.state = DeliveryState::cancelled;
    history_.whenWritten([this, jid = account.jid(), message] { emit stateChanged(jid, message); });
    return true;
}

void Delivery::submit(AccountEntry& account, const Message& message) {
    const bool behind = behind_.contains(&account);
    catchUp();  // what was written before goes out before
    if (!account.ready() || behind_.contains(&account)) {
        tellQueued(account, message);
        return;
    }
    // Else it was among what was handed over now.
    if (!behind) queue_.post(account.key, [this, &account, message] { deliver(account, message); });
}

void Delivery::tellQueued(const AccountEntry& account, const Message& message) {
    history_.whenWritten([this, jid = account.jid(), message] { emit queued(jid, message); });
}

void Delivery::loginComplete(AccountEntry& account) {
    behind_.insert(&account);
    catchUp();
}

void Delivery::catchUp() {
    for (AccountEntry* account : std::exchange(behind_, {})) {
        if (!account->ready()) continue;  // its next login asks again
        const auto messages = history_.outgoing(account->jid(), DeliveryState::queued);
        if (!history_.readWhole()) behind_.insert(account);
        for (const Message& message : messages)
            queue_.post(account->key, [this, account, message] { deliver(*account, message); });
    }
}

void Delivery::deliver(AccountEntry& account, Message message) {
    // Asked again: the connection may have gone while the call waited, and a message may have been posted twice.
    const auto current = history_.message(message.number);
    if (!current && !history_.readWhole()) {
        behind_.insert(&account);
        tellQueued(account, message);
        return;
    }
    if (!current || current->state != DeliveryState::queued) return;
    if (!account.ready() || !hand(account, message)) {
        tellQueued(account, message);
        return;
    }
    message.state = DeliveryState::sent;
    history_.setState(message.number, DeliveryState::sent, true);
    Connection& connection = connections_[&account];
    connection.handed.push_back({message.number, handedId_, ++lastMark_});
    if (!handedId_.isEmpty()) {
        if (connection.returnable.size() >= kMostIds) connection.returnable.pop_front();
        connection.returnable.push_back({handedId_, message.contact, message.number});
    }
    history_.whenWritten([this, jid = account.jid(), message] { emit sent(jid, message); });
    scheduleConfirmation(account);
}

bool Delivery::hand(AccountEntry& account, const Message& message) {
    auto record = makeRecord<OKU_MESSAGE_SEND>();
    const std::u16string pfClass = account.pfClass.toStdU16String();
    record.contact.size = sizeof record.contact;
    record.contact.id = widePointer(message.contact);
    record.contact.pfClass = pfClass.c_str();
    record.contact.netId = account.netId;
    record.subject = widePointer(message.subject);
    record.body = widePointer(message.body);
    record.flags = OKU_MESSAGE_SEND_FLAG | (message.kind == MessageKind::chat ? OKU_MESSAGE_CHAT_FLAG : 0);
    const std::u16string name = account.service(u"PFMessageSend");
    if (!services_.has(name)) return false;
    handedId_.clear();
    letOut_ = false;
    handing_ = true;
    const OKU_WORD result = services_.call(name, wordOf(&record), static_cast<OKU_WORD>(record.flags));
    handing_ = false;
    // The plugin does not tell when a listener takes the text away.
    return result == 0 && letOut_;
}

bool Delivery::onProtocolEvent(ProtocolEvent& event) {
    if (!handing_ || !event.is(OKU_HOOK_STREAM_OUT, OKU_PHASE_AFTER)) return false;
    letOut_ = true;
    for (const Stanza& stanza : event.stanzas().stanzas) {
        if (stanza.tag.name == "message") handedId_ = QString::fromStdString(stanza.attribute("id"));
    }
    return false;
}

void Delivery::scheduleConfirmation(AccountEntry& account) {
    Connection& connection = connections_[&account];
    if (!connection.confirmation) {
        connection.confirmation = std::make_unique<QTimer>();
        connection.confirmation->setSingleShot(true);
        connection.confirmation->setInterval(kConfirmationDelay);
        connect(connection.confirmation.get(), &QTimer::timeout, this,
                [this, &account] { queue_.post(account.key, [this, &account] { askForConfirmation(account); }); });
    }
    if (!connection.confirmation->isActive() && !connection.asking) connection.confirmation->start();
}

void Delivery::askForConfirmation(AccountEntry& account) {
    Connection& connection = connections_[&account];
    if (connection.handed.empty() || connection.asking || !account.ready()) return;
    const quint64 mark = connection.handed.back().mark;
    const QString ping = QStringLiteral("<ping xmlns=\"urn:xmpp:ping\"/>");
    // Any answer will do, an error as well: it was read behind the messages.
    const auto answered = [this, &account, mark](const std::optional<QByteArray>& answer) {
        Connection& asked = connections_[&account];
        asked.asking = false;
        if (answer) confirm(account, mark);
        if (!asked.handed.empty() && account.ready()) scheduleConfirmation(account);
    };
    connection.asking =
        queries_.send(account, account.domain(), QStringLiteral("get"), ping, answered, kConfirmationTimeout);
}

void Delivery::confirm(AccountEntry& account, quint64 mark) {
    std::erase_if(connections_[&account].handed, [&](const Handed& handed) {
        if (handed.mark > mark) return false;
        history_.setState(handed.number, DeliveryState::sent);
        return true;
    });
}

void Delivery::connectionEnded(AccountEntry& account, bool answered) {
    Connection& connection = connections_[&account];
    if (connection.confirmation) connection.confirmation->stop();
    connection.asking = false;
    connection.returnable.clear();
    if (answered) confirm(account, lastMark_);
    for (const Handed& handed : std::exchange(connection.handed, {})) {
        changeState(account, handed.number, DeliveryState::unconfirmed);
    }
}

void Delivery::bounced(AccountEntry& account, const QString& id, const QString& from) {
    Connection& connection = connections_[&account];
    const auto found = std::find_if(
        connection.returnable.begin(), connection.returnable.end(),
        [&](const Returnable& message) { return message.id == id && maySendBack(account, message.contact, from); });
    if (id.isEmpty() || found == connection.returnable.end()) return;
    const qint64 number = found->number;
    connection.returnable.erase(found);
    std::erase_if(connection.handed, [=](const Handed& handed) { return handed.number == number; });
    changeState(account, number, DeliveryState::failed);
}

void Delivery::changeState(AccountEntry& account, qint64 number, DeliveryState state) {
    history_.setState(number, state);
    const auto message = history_.message(number);
    if (!message) return;
    history_.whenWritten([this, jid = account.jid(), message = *message] { emit stateChanged(jid, message); });
}

}  // namespace oku
