// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/net/server.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/sockios.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>
#include <cstring>
#include <memory>
#include <QSslConfiguration>

namespace oku::net::test {

namespace {

struct Endpoint {
    sockaddr_storage storage{};
    socklen_t size = 0;

    sockaddr* raw() { return reinterpret_cast<sockaddr*>(&storage); }
};

Endpoint endpoint(const QHostAddress& address, quint16 port) {
    Endpoint end;
    if (address.protocol() == QAbstractSocket::IPv6Protocol) {
        sockaddr_in6 six{};
        six.sin6_family = AF_INET6;
        six.sin6_port = htons(port);
        const Q_IPV6ADDR bytes = address.toIPv6Address();
        std::memcpy(&six.sin6_addr, bytes.c, sizeof(bytes.c));
        std::memcpy(&end.storage, &six, sizeof(six));
        end.size = sizeof(six);
    } else {
        sockaddr_in four{};
        four.sin_family = AF_INET;
        four.sin_port = htons(port);
        four.sin_addr.s_addr = htonl(address.toIPv4Address());
        std::memcpy(&end.storage, &four, sizeof(four));
        end.size = sizeof(four);
    }
    return end;
}

}  // namespace

Server::Server(const QHostAddress& address) {
    if (!listen(address)) qFatal("the test's server cannot listen");
}

void Server::incomingConnection(qintptr descriptor) {
    auto* socket = new QSslSocket(this);
    socket->setSocketDescriptor(descriptor);
    const size_t index = clients_.size();
    clients_.push_back(socket);
    received_.emplace_back();
    connect(socket, &QSslSocket::readyRead, this, [this, socket, index] {
        const QByteArray bytes = socket->readAll();
        received_[index] += bytes;
        if (onData) onData(*socket, bytes);
    });
    if (onClient) onClient(*socket);
}

QByteArray Server::received(int index) const {
    if (received_.empty()) return {};
    return index < 0 ? received_.back() : received_[static_cast<size_t>(index)];
}

qint64 Server::undelivered() {
    int queued = 0;
    if (ioctl(static_cast<int>(client().socketDescriptor()), SIOCOUTQ, &queued) != 0) qFatal("no queue");
    return client().bytesToWrite() + queued;
}

void Server::startTls(const Identity& identity) {
    QSslConfiguration configuration = client().sslConfiguration();
    configuration.setLocalCertificate(identity.certificate);
    configuration.setPrivateKey(identity.key);
    configuration.setPeerVerifyMode(QSslSocket::VerifyNone);
    client().setSslConfiguration(configuration);
    client().startServerEncryption();
}

void Server::reset() {
    const linger now{1, 0};
    setsockopt(static_cast<int>(client().socketDescriptor()), SOL_SOCKET, SO_LINGER, &now, sizeof(now));
    client().abort();
}

void Server::fallSilent() {
    sock_filter dropAll{BPF_RET | BPF_K, 0, 0, 0};
    const sock_fprog program{1, &dropAll};
    const int failed = setsockopt(static_cast<int>(client().socketDescriptor()), SOL_SOCKET, SO_ATTACH_FILTER, &program,
                                  sizeof(program));
    if (failed) qFatal("the filter cannot be attached");
}

BlackHole::BlackHole(const QHostAddress& address, quint16 port) {
    Endpoint own = endpoint(address, port);
    const int family = own.raw()->sa_family;
    const int listener = socket(family, SOCK_STREAM, 0);
    descriptors_.push_back(listener);
    if (bind(listener, own.raw(), own.size) != 0 || listen(listener, 0) != 0) qFatal("no black hole");
    socklen_t size = sizeof(own.storage);
    getsockname(listener, own.raw(), &size);
    port_ = family == AF_INET6 ? ntohs(reinterpret_cast<sockaddr_in6*>(&own.storage)->sin6_port)
                               : ntohs(reinterpret_cast<sockaddr_in*>(&own.storage)->sin_port);
    for (int i = 0; i < 4; ++i) {  // one fills the queue; the others make sure of it
        const int filler = socket(family, SOCK_STREAM | SOCK_NONBLOCK, 0);
        descriptors_.push_back(filler);
        if (connect(filler, own.raw(), own.size) != 0 && errno != EINPROGRESS) qFatal("no black hole");
    }
    pollfd queue{listener, POLLIN, 0};
    if (::poll(&queue, 1, -1) != 1) qFatal("no black hole");
}

BlackHole::~BlackHole() {
    for (const int descriptor : descriptors_) ::close(descriptor);
}

quint16 deadPort() {
    static std::vector<std::unique_ptr<QTcpSocket>> held;  // bound, which takes the port; who dials it is refused
    held.push_back(std::make_unique<QTcpSocket>());
    if (!held.back()->bind(QHostAddress::LocalHost, 0, QAbstractSocket::DontShareAddress)) qFatal("no dead port");
    return held.back()->localPort();
}

}  // namespace oku::net::test
