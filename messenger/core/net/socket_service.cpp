// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/socket_service.h"

#include "messenger/core/net/connection.h"
#include "messenger/core/net/login_pacer.h"
#include "messenger/core/net/system_resolver.h"
#include "messenger/core/net/system_watch.h"
#include "messenger/core/net/texts.h"

namespace oku::net {

struct SocketService::Socket {
    Socket(const SocketSettings& settings) : pacer(settings.paceAfter, settings.paceFirst, settings.paceMost) {}

    LoginPacer pacer;
    QString lastEnd;                           ///< why the last login failed
    std::map<QString, QSet<QByteArray>> pins;  ///< by domain
    QSet<QByteArray> refused;
    std::unique_ptr<Connection, DeleteLater> connection;
};

SocketService::SocketService(SocketEvents& events, SocketSettings settings, std::shared_ptr<Resolver> resolver,
                             QObject* parent)
    : QObject(parent),
      events_(events),
      settings_(std::move(settings)),
      resolver_(resolver ? std::move(resolver) : std::make_shared<SystemResolver>()),
      watch_(std::make_unique<SystemWatch>(
          settings_, [this] { resumedFromSleep(); },
          [this](const QList<QHostAddress>& addresses) { lookAtAddresses(addresses); }, nullptr)) {}

SocketService::~SocketService() {
    for (auto& [name, socket] : sockets_)
        if (socket->connection) socket->connection->abandon();
}

bool SocketService::create(const QString& name) {
    return !find(name) && sockets_.emplace(name, std::make_unique<Socket>(settings_)).second;
}

ConnectionId SocketService::connect(const QString& name, const ConnectRequest& request) {
    Socket* socket = find(name);
    if (!socket) return {name, 0};
    if (socket->connection) socket->connection->abandon();
    const ConnectionId id{name, ++lastNumber_};
    socket->connection.reset(
        new Connection(id, request, settings_, *resolver_, events_, hooksFor(*socket, request), this));
    socket->connection->setBusy(busy_);
    watch_->setRunning(true);
    const int delay = socket->pacer.delay();
    if (delay > 0) {
        const QString waits =
            text(Text::Paced, QString::number(socket->pacer.failures()), QString::number((delay + 999) / 1000));
        events_.notice(id, (waits + u' ' + socket->lastEnd).trimmed());
    }
    if (Connection* connection = connectionOf(id)) connection->start(delay);
    return id;
}

ConnectionHooks SocketService::hooksFor(Socket& socket, const ConnectRequest& request) {
    const QString domain = request.domain.isEmpty() ? request.host : request.domain;
    ConnectionHooks hooks;
    hooks.isPinned = [&socket, domain](const QByteArray& fingerprint) {
        return socket.pins[domain].contains(fingerprint);
    };
    hooks.wasRefused = [&socket](const QByteArray& fingerprint) { return socket.refused.contains(fingerprint); };
    hooks.decided = [&socket, domain](const QByteArray& fingerprint, CertificateDecision decision) {
        if (decision == CertificateDecision::Pin) socket.pins[domain].insert(fingerprint);
        if (decision == CertificateDecision::Refuse) socket.refused.insert(fingerprint);
    };
    hooks.ended = [&socket](const End& end, bool loginFailed) {
        if (loginFailed) socket.pacer.failed();
        socket.lastEnd = end.text;
    };
    return hooks;
}

qint32 SocketService::send(const QString& name, QByteArrayView bytes) {
    Socket* socket = find(name);
    return socket && socket->connection ? socket->connection->send(bytes) : -1;
}

bool SocketService::initSsl(const QString& name) {
    Socket* socket = find(name);
    return socket && socket->connection && socket->connection->initSsl();
}

bool SocketService::close(const QString& name) {
    Socket* socket = find(name);
    return socket && socket->connection && socket->connection->close();
}

bool SocketService::destroy(const QString& name) {
    const auto found = sockets_.find(name);
    if (found == sockets_.end()) return false;
    if (found->second->connection) found->second->connection->abandon();
    sockets_.erase(found);
    events_.destroyed(name);
    return true;
}

qsizetype SocketService::pieceLimit(const QString& name) const {
    const Socket* socket = find(name);
    if (socket && socket->connection) return socket->connection->pieceLimit();
    return settings_.compressed(name) ? settings_.compressedPiece : settings_.clearPiece;
}

bool SocketService::isCurrent(const ConnectionId& id) const { return connectionOf(id) != nullptr; }

QHostAddress SocketService::localAddress(const QString& name) const {
    const Socket* socket = find(name);
    return socket && socket->connection ? socket->connection->localAddress() : QHostAddress();
}

bool SocketService::tlsStarted(const ConnectionId& id) const {
    const Connection* connection = connectionOf(id);
    return connection && connection->tlsStarted();
}

void SocketService::answerCertificate(const ConnectionId& id, bool overridden) {
    if (Connection* connection = connectionOf(id)) connection->answerCertificate(overridden);
}

void SocketService::decideCertificate(const ConnectionId& id, CertificateDecision decision) {
    if (Connection* connection = connectionOf(id)) connection->decideCertificate(decision);
}

void SocketService::setPins(const QString& name, const QString& domain, const QSet<QByteArray>& fingerprints) {
    if (Socket* socket = find(name)) socket->pins[domain] = fingerprints;
}

void SocketService::sessionBound(const QString& name) {
    Socket* socket = find(name);
    if (!socket || !socket->connection) return;
    socket->pacer.reset();
    socket->connection->sessionBound();
}

void SocketService::streamEnded(const QString& name) {
    if (Socket* socket = find(name); socket && socket->connection) socket->connection->streamEnded();
}

void SocketService::conflictSeen(const QString& name) {
    if (Socket* socket = find(name); socket && socket->connection) socket->connection->conflictSeen();
}

void SocketService::forgetFailures(const QString& name) {
    Socket* socket = find(name);
    if (!socket) return;
    socket->pacer.reset();
    socket->refused.clear();
    if (socket->connection) socket->connection->hurry();
}

void SocketService::setPluginBusy(bool busy) {
    busy_ = busy;
    for (const ConnectionId& id : activeIds())
        if (Connection* connection = connectionOf(id)) connection->setBusy(busy_);
}

void SocketService::networkGone() { endAll(EndCause::NetworkGone, text(Text::NetworkGone)); }

void SocketService::resumedFromSleep() { endAll(EndCause::Resumed, text(Text::Resumed)); }

void SocketService::endAll(EndCause cause, const QString& sentence) {
    for (const ConnectionId& id : activeIds())
        if (Connection* connection = connectionOf(id)) connection->end(cause, sentence);
}

void SocketService::lookAtAddresses(const QList<QHostAddress>& addresses) {
    const QList<ConnectionId> ids = activeIds();
    if (ids.isEmpty()) watch_->setRunning(false);
    for (const ConnectionId& id : ids) {
        Connection* connection = connectionOf(id);
        if (!connection || connection->localAddress().isNull()) continue;
        if (!holdsAddress(addresses, connection->localAddress()))
            connection->end(EndCause::NetworkGone, text(Text::NetworkGone));
    }
}

SocketService::Socket* SocketService::find(const QString& name) const {
    const auto found = sockets_.find(name);
    return found == sockets_.end() ? nullptr : found->second.get();
}

Connection* SocketService::connectionOf(const ConnectionId& id) const {
    const Socket* socket = find(id.name);
    if (!socket || !socket->connection || socket->connection->id() != id) return nullptr;
    return socket->connection.get();
}

QList<ConnectionId> SocketService::activeIds() const {
    QList<ConnectionId> ids;
    for (const auto& [name, socket] : sockets_)
        if (socket->connection && socket->connection->active()) ids.append(socket->connection->id());
    return ids;
}

}  // namespace oku::net
