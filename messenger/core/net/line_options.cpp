// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/line_options.h"

#include <QAbstractSocket>

#include "messenger/core/net/texts.h"

#ifdef Q_OS_LINUX
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#endif

namespace oku::net {

void setLineOptions(QAbstractSocket& socket, const SocketSettings& settings) {
    socket.setSocketOption(QAbstractSocket::KeepAliveOption, 1);
    socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
#ifdef Q_OS_LINUX
    const int descriptor = static_cast<int>(socket.socketDescriptor());
    const auto set = [descriptor](int option, int value) {
        setsockopt(descriptor, IPPROTO_TCP, option, &value, sizeof(value));
    };
    set(TCP_KEEPIDLE, qMax(1, settings.keepaliveIdle / 1000));
    set(TCP_KEEPINTVL, qMax(1, settings.keepaliveInterval / 1000));
    set(TCP_KEEPCNT, settings.keepaliveCount);
    set(TCP_USER_TIMEOUT, settings.userTimeout);
#endif
}

QString lineError(const QAbstractSocket& socket) {
    switch (socket.error()) {
        case QAbstractSocket::ConnectionRefusedError:
            return text(Text::LineRefused);
        case QAbstractSocket::SocketTimeoutError:
            return text(Text::LineTimeout);
        case QAbstractSocket::NetworkError:
            return text(Text::LineNoRoute);
        default:
            return text(Text::LineOther, socket.errorString());
    }
}

}  // namespace oku::net
