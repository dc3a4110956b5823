// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <QObject>
#include <QTimer>
#include <set>
#include <vector>

#include "messenger/core/values/message.h"
#include "messenger/core/wire/hook_chain.h"

namespace oku {

class History;
class IqQueries;
class PluginQueue;
class ServiceRegistry;

/// Outgoing messages. Each is in the history before anything else. One that is written while offline waits for the next
/// complete login. One that was handed over counts as arrived at the server when the server has answered a request that
/// was sent after it (what goes in order comes in order); when the connection dies before that, it is unconfirmed.
class Delivery : public QObject, public ProtocolListener {
    Q_OBJECT

public:
    Delivery(ServiceRegistry& services, PluginQueue& queue, History& history, IqQueries& queries,
             QObject* parent = nullptr);

    /// Takes a new message (without a number); returns its number, 0 when the history could not take it.
    qint64 send(AccountEntry& account, Message message);
    /// Sends one that is in the history once more.
    void resend(AccountEntry& account, Message message);
    /// Takes one back that waits; false when the history could not give it up.
    bool cancel(const AccountEntry& account, Message message);
    /// The account's login is complete: what waits goes out, or once the history can be read.
    void loginComplete(AccountEntry& account);
    /// `answered`: the server answered our closing tag, so that it has read all that was sent.
    void connectionEnded(AccountEntry& account, bool answered);
    /// A message with this id came back from this address. Nothing happens when that one could not send it back.
    void bounced(AccountEntry& account, const QString& id, const QString& from);

    bool onProtocolEvent(ProtocolEvent& event) override;

signals:
    void sent(const QString& account, const oku::Message& message);
    void queued(const QString& account, const oku::Message& message);
    void stateChanged(const QString& account, const oku::Message& message);

private:
    struct Handed {
        qint64 number;
        QString id;
        quint64 mark;
    };
    struct Returnable {
        QString id;  ///< on the wire
        QString contact;
        qint64 number;
    };
    struct Connection {
        std::vector<Handed> handed;         ///< not confirmed yet
        std::deque<Returnable> returnable;  ///< the last of this connection's messages, oldest first
        std::unique_ptr<QTimer> confirmation;
        bool asking = false;
    };

    void submit(AccountEntry& account, const Message& message);
    /// Hands over what waits for the accounts that are behind.
    void catchUp();
    void tellQueued(const AccountEntry& account, const Message& message);
    void deliver(AccountEntry& account, Message message);
    bool hand(AccountEntry& account, const Message& message);
    void scheduleConfirmation(AccountEntry& account);
    void askForConfirmation(AccountEntry& account);
    void confirm(AccountEntry& account, quint64 mark);
    void changeState(AccountEntry& account, qint64 number, DeliveryState state);

    ServiceRegistry& services_;
    PluginQueue& queue_;
    History& history_;
    IqQueries& queries_;
    std::map<const AccountEntry*, Connection> connections_;
    std::set<AccountEntry*> behind_;  ///< logged in, but what waits for them could not be read
    bool handing_ = false;
    bool letOut_ = false;  ///< no listener has taken away what is being handed over
    QString handedId_;
    quint64 lastMark_ = 0;
};

}  // namespace oku
