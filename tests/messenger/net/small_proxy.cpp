// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/net/small_proxy.h"

#include <memory>
#include <QHostAddress>
#include <QTcpSocket>
#include <QtEndian>

namespace oku::net::test {

namespace {

#define BYTES(literal) QByteArray(literal, sizeof(literal) - 1)

QString at(const QString& host, const QByteArray& port) {
    return QStringLiteral("%1:%2").arg(host).arg(qFromBigEndian<quint16>(port.constData()));
}

QString dotted(const QByteArray& four) { return QHostAddress(qFromBigEndian<quint32>(four.constData())).toString(); }

}  // namespace

SmallProxy::SmallProxy(ProxyType type) : type_(type) {
    if (!listen(QHostAddress::LocalHost)) qFatal("the test's proxy cannot listen");
}

Proxy SmallProxy::settings(const QString& withUser, const QString& withPassword) const {
    return {type_, "proxy.test", serverPort(), withUser, withPassword};
}

void SmallProxy::incomingConnection(qintptr descriptor) {
    auto client = std::make_shared<Client>();
    client->socket = new QTcpSocket(this);
    client->socket->setSocketDescriptor(descriptor);
    connect(client->socket, &QTcpSocket::readyRead, client->socket, [this, client] {
        if (silent || client->stage < 0) return;
        client->input += client->socket->readAll();
        advance(*client);
    });
}

void SmallProxy::advance(Client& client) {
    if (type_ == ProxyType::Http) return advanceHttp(client);
    if (type_ == ProxyType::Socks5) return advanceSocks5(client);
    advanceSocks4(client);
}

void SmallProxy::advanceSocks4(Client& client) {
    const qsizetype userEnd = client.input.indexOf('\0', 8);
    if (userEnd < 0) return;
    QString host = dotted(client.input.mid(4, 4));
    if (type_ == ProxyType::Socks4A && client.input.mid(4, 3) == BYTES("\0\0\0")) {
        const qsizetype hostEnd = client.input.indexOf('\0', userEnd + 1);
        if (hostEnd < 0) return;
        host = QString::fromLatin1(client.input.mid(userEnd + 1, hostEnd - userEnd - 1));
    }
    if (client.input.mid(8, userEnd - 8) != user.toUtf8()) return hangUp(client, BYTES("\0\x5d\0\0\0\0\0\0"));
    relay(client, at(host, client.input.mid(2, 2)), BYTES("\0\x5a\0\0\0\0\0\0"), BYTES("\0\x5b\0\0\0\0\0\0"));
}

void SmallProxy::advanceSocks5(Client& client) {
    if (client.stage == 0) {
        if (client.input.size() < 2 || client.input.size() < 2 + client.input[1]) return;
        const char method = user.isEmpty() ? 0 : 2;
        if (!client.input.mid(2).contains(method)) return hangUp(client, BYTES("\5\xff"));
        client.socket->write(QByteArray(1, 5) + method);
        client.input.clear();
        client.stage = user.isEmpty() ? 2 : 1;
    } else if (client.stage == 1) {
        const QByteArray name = client.input.mid(2, client.input.size() > 1 ? client.input[1] : 0);
        const QByteArray word = client.input.mid(3 + name.size());
        if (client.input.size() < 3 + name.size() || word.size() < client.input[2 + name.size()]) return;
        if (name != user.toUtf8() || word != password.toUtf8()) return hangUp(client, BYTES("\1\1"));
        client.socket->write(BYTES("\1\0"));
        client.input.clear();
        client.stage = 2;
    } else {
        if (client.input.size() < 5) return;
        const bool byName = client.input[3] == 3;
        const qsizetype size = byName ? 5 + client.input[4] : 8;
        if (client.input.size() < size + 2) return;
        const QString host =
            byName ? QString::fromLatin1(client.input.mid(5, size - 5)) : dotted(client.input.mid(4, 4));
        relay(client, at(host, client.input.mid(size, 2)), BYTES("\5\0\0\1\0\0\0\0\0\0"),
              BYTES("\5\4\0\1\0\0\0\0\0\0"));
    }
}

void SmallProxy::advanceHttp(Client& client) {
    if (!client.input.contains("\r\n\r\n")) return;
    const QString target = QString::fromLatin1(client.input.split(' ').value(1));
    const QByteArray login = (user + ':' + password).toUtf8().toBase64();
    if (!user.isEmpty() && !client.input.contains("Proxy-Authorization: Basic " + login + "\r\n"))
        return hangUp(client, "HTTP/1.1 407 Login\r\n\r\n");
    relay(client, target, "HTTP/1.1 200 OK\r\n\r\n", "HTTP/1.1 502 Bad Gateway\r\n\r\n");
}

void SmallProxy::relay(Client& client, const QString& target, const QByteArray& yes, const QByteArray& no) {
    asked.append(target);
    const auto found = targets.find(target);
    if (found == targets.end()) return hangUp(client, no);
    client.stage = -1;
    QTcpSocket* near = client.socket;
    auto* far = new QTcpSocket(near);
    near->disconnect(near);
    connect(near, &QTcpSocket::readyRead, far, [near, far] { far->write(near->readAll()); });
    connect(far, &QTcpSocket::readyRead, near, [near, far] { near->write(far->readAll()); });
    connect(far, &QTcpSocket::connected, near, [this, near, yes] { near->write(yes + slipped); });
    connect(near, &QTcpSocket::disconnected, far, [far] { far->disconnectFromHost(); });
    connect(far, &QTcpSocket::disconnected, near, [near] { near->disconnectFromHost(); });
    far->connectToHost(QHostAddress::LocalHost, found->second);
}

void SmallProxy::hangUp(Client& client, const QByteArray& lastWords) {
    client.stage = -1;
    client.socket->write(lastWords);
    client.socket->disconnectFromHost();
}

}  // namespace oku::net::test
