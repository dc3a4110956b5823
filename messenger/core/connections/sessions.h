// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QSet>

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/net/socket_types.h"
#include "messenger/core/values/account.h"
#include "messenger/core/wire/hook_chain.h"

namespace oku {

class ContactService;
class Delivery;
class History;
class IqQueries;
class PluginQueue;
class SocketBridge;
class StatusChoices;
class StreamWatch;
class TypingNotices;

/// The life of the accounts' connections: what state each is in, what the plugin reports of the own status, and what
/// has to happen when a login is complete or a connection has ended.
class Sessions : public QObject, public ProtocolListener {
    Q_OBJECT

public:
    struct Parts {
        Accounts& accounts;
        PluginQueue& queue;
        ContactService& contacts;
        History& history;
        Delivery& delivery;
        IqQueries& queries;
        StreamWatch& watch;
        TypingNotices& typing;
        SocketBridge& sockets;
        StatusChoices& choices;
    };
    explicit Sessions(Parts parts, QObject* parent = nullptr);

    bool onProtocolEvent(ProtocolEvent& event) override;
    /// Looks at the accounts' flags, and tells what has changed.
    void update();

signals:
    void connectionChanged(const QString& account, oku::ConnectionState state, const QString& reason);
    void ownStatusChanged(const QString& account, oku::Status status, const QString& description);
    void rosterComplete(const QString& account);
    void noticed(const QString& account, const QString& text);

private:
    void readOwnStatus(ProtocolEvent& event);
    void connectionEnded(AccountEntry& account, const net::End& end, bool told);
    void streamError(AccountEntry& account, const QString& condition, const QString& text);
    void changeState(AccountEntry& account, ConnectionState state);
    void completeLogins();

    Parts parts_;
    QSet<QString> completed_;  ///< keys of accounts whose roster came in the call that is running
    QSet<QString> rebuilt_;    ///< those of them whose list was rebuilt
};

}  // namespace oku
