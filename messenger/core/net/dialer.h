// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QStringList>

#include "messenger/core/net/resolver.h"
#include "messenger/core/net/socket_ptr.h"
#include "messenger/core/net/socket_settings.h"
#include "messenger/core/net/socket_types.h"

namespace oku::net {

class AddressRace;
class ProxyNegotiation;

/// Finds the way to a server: the SRV record's targets in their order (RFC 2782, RFC 6120 section 3.2), then the
/// domain itself, each by its addresses or through a proxy.
///
/// Behind a proxy that takes names nothing is looked up here, not even the SRV record: whoever uses such a proxy wants
/// no question about the domain to leave the machine beside it. SOCKS 4 takes addresses only.
class Dialer : public QObject {
public:
    struct Result {
        SocketPtr socket;  ///< connected, nothing read or written on it but a proxy's handshake
        EndCause cause = EndCause::Unreachable;
        QString error;  ///< a sentence, when there is no socket
    };

    /// `done` is called once, never from within start(). Deleting the dialer gives up.
    Dialer(const ConnectRequest& request, const SocketSettings& settings, Resolver& resolver,
           std::function<void(const QString&)> progress, std::function<void(Result)> done, QObject* parent);

    void start();

private:
    struct Target {
        QString host;
        quint16 port;
    };

    bool byProxy() const { return request_.proxy.type != ProxyType::None; }
    bool proxyTakesNames() const { return byProxy() && request_.proxy.type != ProxyType::Socks4; }

    /// Why nothing may be dialled for this request; no cause when it is sound.
    std::optional<Result> refusal() const;
    void takeTargets(const SrvAnswer& answer);
    void nextTarget();
    void lookUp(const QString& host, std::function<void(QList<QHostAddress>)> found);
    void dialDirectly(const Target& target, const QList<QHostAddress>& addresses);
    void dialByIpv4(const Target& target, const QList<QHostAddress>& addresses);
    void dialProxy(const Target& target, const QHostAddress& address);
    void raceToProxy(const Target& target, const QHostAddress& address, const QList<QHostAddress>& proxyAddresses);
    void negotiate(SocketPtr socket, const Target& target, const QHostAddress& address);
    void targetFailed(const Target& target, const QString& why);
    void proxyFailed(const QString& why);
    void finish(Result result);

    ConnectRequest request_;
    const SocketSettings& settings_;
    Resolver& resolver_;
    std::function<void(const QString&)> progress_;
    std::function<void(Result)> done_;
    QList<Target> targets_;
    QList<QHostAddress> ipv4_;  ///< of the present target, still to be tried through SOCKS 4
    QStringList failures_;
    bool anyAddress_ = false;
    std::unique_ptr<AddressRace, DeleteLater> race_;
    std::unique_ptr<ProxyNegotiation, DeleteLater> negotiation_;
};

}  // namespace oku::net
