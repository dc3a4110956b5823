// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <QHostAddress>
#include <QObject>
#include <QSet>

#include "messenger/core/net/socket_settings.h"
#include "messenger/core/net/socket_types.h"

namespace oku::net {

class Connection;
struct ConnectionHooks;
class Resolver;
class SystemWatch;

/// The named sockets behind "NetLib/...": a name is the handle, and holds at most one connection at a time.
///
/// All of it runs on the thread of the object. Every method may be called from within an event.
class SocketService : public QObject {
    Q_OBJECT

public:
    /// `events` must outlive the service. Without a resolver the system's is used.
    explicit SocketService(SocketEvents& events, SocketSettings settings = {},
                           std::shared_ptr<Resolver> resolver = nullptr, QObject* parent = nullptr);
    ~SocketService() override;

    /// False when the name is taken.
    bool create(const QString& name);

    /// Starts a connection and drops the one that is there, with no event for that one. The outcome comes as an
    /// event. The number is 0 for a name that was not created.
    ConnectionId connect(const QString& name, const ConnectRequest& request);

    /// Number of bytes taken, -1 when there is no open connection, our closing tag was sent, or too much waits: then
    /// the connection ends.
    qint32 send(const QString& name, QByteArrayView bytes);

    /// Starts TLS, both as the first thing on the line and after STARTTLS. False when it cannot start.
    bool initSsl(const QString& name);

    /// What was sent still goes out. False when there is no connection; then no event comes either.
    bool close(const QString& name);

    /// Closes as close() does, but reports destroyed() and nothing else.
    bool destroy(const QString& name);

    /// Largest piece that the plugin gets: settings.clearPiece, or compressedPiece once the stream is compressed.
    qsizetype pieceLimit(const QString& name) const;

    /// False for an event of a connection that was replaced or destroyed meanwhile.
    bool isCurrent(const ConnectionId& id) const;

    /// Of the computer itself on the connection; null without one.
    QHostAddress localAddress(const QString& name) const;

    /// TLS was asked for on this connection. What it reported before that was read in clear, and must not reach the
    /// plugin any more.
    bool tlsStarted(const ConnectionId& id) const;

    /// The plugin's answer to event 10. True goes on, and the user is told; false asks the person.
    void answerCertificate(const ConnectionId& id, bool overridden);
    void decideCertificate(const ConnectionId& id, CertificateDecision decision);

    /// Certificates (SHA-256) that the person accepted for good, for this account and domain.
    void setPins(const QString& name, const QString& domain, const QSet<QByteArray>& fingerprints);

    /// The session is bound (hook kind 8): the login is no longer timed, and counts as good.
    void sessionBound(const QString& name);

    /// The plugin ended its stream (hook kind 9). Needed under compression, where the sockets cannot read along.
    void streamEnded(const QString& name);

    /// A `conflict` stream error was seen. Needed under compression only.
    void conflictSeen(const QString& name);

    /// The user did something himself (set a status, changed a password): the next dial, or the one that is being
    /// held back, goes at once.
    void forgetFailures(const QString& name);

    /// While true (a call into the plugin is held up by a message box) nothing is read and no clock of a login runs:
    /// what arrives waits in the system's buffers. Back at false, all that waits is reported before this returns.
    void setPluginBusy(bool busy);

    /// The system told that the network is gone, or that it slept. SystemWatch calls these as well.
    void networkGone();
    void resumedFromSleep();

private:
    struct Socket;

    Socket* find(const QString& name) const;
    Connection* connectionOf(const ConnectionId& id) const;
    QList<ConnectionId> activeIds() const;
    ConnectionHooks hooksFor(Socket& socket, const ConnectRequest& request);
    void endAll(EndCause cause, const QString& sentence);
    void lookAtAddresses(const QList<QHostAddress>& addresses);

    SocketEvents& events_;
    SocketSettings settings_;
    std::shared_ptr<Resolver> resolver_;
    std::map<QString, std::unique_ptr<Socket>> sockets_;
    std::unique_ptr<SystemWatch> watch_;
    quint64 lastNumber_ = 0;
    bool busy_ = false;
};

}  // namespace oku::net
