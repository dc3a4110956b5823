// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <QStringList>
#include <QTcpServer>

#include "messenger/core/net/socket_types.h"

class QTcpSocket;

namespace oku::net::test {

/** A proxy of one kind that knows its targets by the names the test gives, and DNS not at all. */
class SmallProxy : public QTcpServer {
public:
    explicit SmallProxy(ProxyType type);

    std::map<QString, quint16> targets;  ///< "host:port" as it was asked for, and the loopback port that it stands for
    QString user;                        ///< empty: no login is asked for
    QString password;
    bool silent = false;
    QByteArray slipped;  ///< goes to the client in one piece with the answer, as if the target had said it
    QStringList asked;   ///< "host:port" of each request

    Proxy settings(const QString& withUser = {}, const QString& withPassword = {}) const;

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    struct Client {
        QTcpSocket* socket = nullptr;
        QByteArray input;
        int stage = 0;
    };

    void advance(Client& client);
    void advanceSocks4(Client& client);
    void advanceSocks5(Client& client);
    void advanceHttp(Client& client);
    /** Asks for a target: answers and relays, or refuses and hangs up. */
    void relay(Client& client, const QString& target, const QByteArray& yes, const QByteArray& no);
    void hangUp(Client& client, const QByteArray& lastWords);

    ProxyType type_;
};

}  // namespace oku::net::test
