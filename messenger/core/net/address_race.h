// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QTimer>

#include "messenger/core/net/socket_ptr.h"

namespace oku::net {

/// Connects to the first address that answers (RFC 8305): each gets a head start before the next one is tried beside
/// it, and one that fails lets the next one start at once.
class AddressRace : public QObject {
public:
    struct Result {
        SocketPtr socket;  ///< connected; null when none could be reached
        QString error;
    };

    /// `done` is called once, never from within the constructor. Deleting the race gives up.
    AddressRace(const QList<QHostAddress>& addresses, quint16 port, int headStart, int timeout,
                std::function<void(Result)> done, QObject* parent);

private:
    void startNext();
    void onConnected(QSslSocket* socket);
    void onFailed(QSslSocket* socket);
    void finish(Result result);

    QList<QHostAddress> waiting_;
    QList<QSslSocket*> running_;
    quint16 port_;
    QTimer next_;
    QTimer limit_;
    QString error_;
    std::function<void(Result)> done_;
};

}  // namespace oku::net
