// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QByteArray>
#include <QByteArrayView>
#include <QHostAddress>
#include <QString>

#include "messenger/core/net/socket_types.h"

namespace oku::net {

/// What one step of a handshake came to.
struct ProxyStep {
    enum class State {
        Waiting,       ///< for more bytes
        Done,          ///< the line now leads to the target
        TargetFailed,  ///< the proxy cannot reach this target; another one may do
        Failed         ///< the proxy itself will not do
    };
    State state = State::Waiting;
    qsizetype consumed = 0;  ///< bytes of the input that are done with; what follows belongs to the target
    QByteArray send;
    QString error;
};

/// The client's side of a proxy protocol, without a socket.
class ProxyHandshake {
public:
    virtual ~ProxyHandshake() = default;

    /// `received` is all that was received and not consumed; empty at the first call. Call again while something was
    /// consumed.
    virtual ProxyStep step(QByteArrayView received) = 0;
};

struct ProxyTarget {
    QString host;  ///< as asciiName() gives it
    quint16 port = 0;
    QHostAddress address;  ///< IPv4, for SOCKS 4 only

    QString toString() const;
};

std::unique_ptr<ProxyHandshake> makeSocks4Handshake(const Proxy& proxy, const ProxyTarget& target);  // 4 and 4A
std::unique_ptr<ProxyHandshake> makeSocks5Handshake(const Proxy& proxy, const ProxyTarget& target);  // RFC 1928, 1929
std::unique_ptr<ProxyHandshake> makeHttpHandshake(const Proxy& proxy, const ProxyTarget& target);    // RFC 9110, 9.3.6

std::unique_ptr<ProxyHandshake> makeHandshake(const Proxy& proxy, const ProxyTarget& target);

/// A port as the SOCKS protocols want it: two bytes, the high one first.
QByteArray networkPort(quint16 port);

/// What the steps return.
inline ProxyStep proxyWaits(QByteArray send = {}, qsizetype consumed = 0) {
    return {ProxyStep::State::Waiting, consumed, std::move(send), {}};
}
inline ProxyStep proxyDone(qsizetype consumed) { return {ProxyStep::State::Done, consumed, {}, {}}; }
inline ProxyStep proxyFailed(QString error) { return {ProxyStep::State::Failed, 0, {}, std::move(error)}; }
inline ProxyStep targetFailed(QString error) { return {ProxyStep::State::TargetFailed, 0, {}, std::move(error)}; }

}  // namespace oku::net
