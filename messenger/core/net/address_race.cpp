// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/address_race.h"

#include <QNetworkProxy>
#include <utility>

#include "messenger/core/net/line_options.h"
#include "messenger/core/net/srv_order.h"
#include "messenger/core/net/texts.h"

namespace oku::net {

AddressRace::AddressRace(const QList<QHostAddress>& addresses, quint16 port, int headStart, int timeout,
                         std::function<void(Result)> done, QObject* parent)
    : QObject(parent), waiting_(interleaveFamilies(addresses)), port_(port), done_(std::move(done)) {
    next_.setInterval(headStart);
    QObject::connect(&next_, &QTimer::timeout, this, &AddressRace::startNext);
    limit_.setSingleShot(true);
    // Queued as what is connected is: what has come before the limit is looked at counts.
    QObject::connect(
        &limit_, &QTimer::timeout, this,
        [this] {
            finish({nullptr, error_.isEmpty() ? text(Text::LineTimeout) : error_});
        },
        Qt::QueuedConnection);
    limit_.start(timeout);
    QMetaObject::invokeMethod(this, &AddressRace::startNext, Qt::QueuedConnection);
}

void AddressRace::startNext() {
    if (!done_) return;
    if (waiting_.isEmpty()) {
        next_.stop();
        if (running_.isEmpty()) finish({nullptr, error_});
        return;
    }
    auto* socket = new QSslSocket(this);
    running_.append(socket);
    socket->setProxy(QNetworkProxy::NoProxy);
    // Queued, so that nothing of ours runs, or deletes a socket, under the feet of the socket's own code.
    QObject::connect(
        socket, &QSslSocket::connected, this, [this, socket] { onConnected(socket); }, Qt::QueuedConnection);
    QObject::connect(
        socket, &QSslSocket::errorOccurred, this, [this, socket] { onFailed(socket); }, Qt::QueuedConnection);
    next_.start();
    socket->connectToHost(waiting_.takeFirst(), port_);
}

void AddressRace::onConnected(QSslSocket* socket) {
    if (!done_ || !running_.removeOne(socket)) return;
    socket->disconnect(this);
    socket->setParent(nullptr);
    finish({SocketPtr(socket), {}});
}

void AddressRace::onFailed(QSslSocket* socket) {
    if (!done_ || !running_.removeOne(socket)) return;
    if (error_.isEmpty()) error_ = lineError(*socket);
    socket->deleteLater();
    startNext();
}

void AddressRace::finish(Result result) {
    if (!done_) return;
    next_.stop();
    limit_.stop();
    for (QSslSocket* socket : std::exchange(running_, {})) {
        socket->disconnect(this);
        socket->abort();
        socket->deleteLater();
    }
    std::exchange(done_, nullptr)(std::move(result));
}

}  // namespace oku::net
