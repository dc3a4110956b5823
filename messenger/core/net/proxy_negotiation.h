// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QTimer>

#include "messenger/core/net/proxy_handshake.h"
#include "messenger/core/net/socket_ptr.h"

namespace oku::net {

/// Runs a handshake on a socket that is connected to the proxy.
class ProxyNegotiation : public QObject {
public:
    struct Result {
        SocketPtr socket;  ///< leads to the target; null when the handshake failed
        bool targetFailed = false;
        QString error;
    };

    /// `done` is called once, never from within the constructor. Deleting the negotiation gives up.
    ProxyNegotiation(SocketPtr socket, std::unique_ptr<ProxyHandshake> handshake, int timeout,
                     std::function<void(Result)> done, QObject* parent);

private:
    void advance();
    void finish(Result result);

    SocketPtr socket_;
    std::unique_ptr<ProxyHandshake> handshake_;
    QTimer limit_;
    std::function<void(Result)> done_;
};

}  // namespace oku::net
