// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/socket_ptr.h"

#include <QTimer>

namespace oku::net {

void lingerAndClose(SocketPtr socket, QObject* parent, int grace) {
    if (socket->state() != QAbstractSocket::ConnectedState) return;
    QSslSocket* lingering = socket.release();
    lingering->disconnect();
    lingering->setParent(parent);
    QObject::connect(lingering, &QSslSocket::disconnected, lingering, &QObject::deleteLater);
    QTimer::singleShot(grace, lingering, [lingering] {
        lingering->abort();
        lingering->deleteLater();
    });
    lingering->flush();
    lingering->disconnectFromHost();
}

}  // namespace oku::net
