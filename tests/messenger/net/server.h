// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QSslSocket>
#include <QTcpServer>
#include <vector>

#include "tests/messenger/net/authority.h"

namespace oku::net::test {

/** A server on loopback that does what the test says, byte by byte. */
class Server : public QTcpServer {
public:
    explicit Server(const QHostAddress& address = QHostAddress::LocalHost);

    /** Called with each piece that a client sent, after it was added to received(). */
    std::function<void(QSslSocket&, const QByteArray&)> onData;
    /** Called with each new client. */
    std::function<void(QSslSocket&)> onClient;

    int clientCount() const { return static_cast<int>(clients_.size()); }
    /** The latest client. */
    QSslSocket& client() { return *clients_.back(); }
    QSslSocket& client(int index) { return *clients_[static_cast<size_t>(index)]; }
    QByteArray received(int index = -1) const;

    void send(const QByteArray& bytes) {
        client().write(bytes);
        client().flush();
    }
    /** Bytes for the latest client that its system has not taken yet. */
    qint64 undelivered();
    /** Answers the latest client's handshake, when it comes. */
    void startTls(const Identity& identity);
    /** Ends the latest client's connection with RST. */
    void reset();
    /** From now on the latest client gets no answer, not even an acknowledgement. */
    void fallSilent();

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    std::vector<QSslSocket*> clients_;
    std::vector<QByteArray> received_;
};

/** An address and port on which connecting hangs: a listener whose queue is full. */
class BlackHole {
public:
    explicit BlackHole(const QHostAddress& address, quint16 port = 0);
    ~BlackHole();
    BlackHole(const BlackHole&) = delete;
    BlackHole& operator=(const BlackHole&) = delete;

    quint16 port() const { return port_; }

private:
    std::vector<int> descriptors_;
    quint16 port_ = 0;
};

/** A port on loopback on which nothing listens, nor will before the program ends. */
quint16 deadPort();

}  // namespace oku::net::test
