// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <QHostAddress>
#include <QList>
#include <QTimer>

#include "messenger/core/net/socket_settings.h"

namespace oku::net {

/// Notices what no packet tells: that the machine slept, and that the address a connection stands on is gone.
class SystemWatch : public QObject {
public:
    /// `resumed` is called after a sleep of some seconds, `lookAt` with the machine's addresses after other changes.
    SystemWatch(const SocketSettings& settings, std::function<void()> resumed,
                std::function<void(const QList<QHostAddress>&)> lookAt, QObject* parent);

    void setRunning(bool running);

private:
    void turn();

    const SocketSettings& settings_;
    std::function<void()> resumed_;
    std::function<void(const QList<QHostAddress>&)> lookAt_;
    std::unique_ptr<QObject> events_;
    QTimer timer_;
    bool running_ = false;
    qint64 slept_ = 0;
};

/// Milliseconds that the machine has slept since it was started; 0 where the system does not tell.
qint64 systemSleptTime();

/// Addresses of all interfaces that are up.
QList<QHostAddress> systemAddresses();

/// Whether the address is among those of the machine, whatever interface each names.
bool holdsAddress(const QList<QHostAddress>& addresses, QHostAddress address);

}  // namespace oku::net
