// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// What passes between the sockets and the core that carries their events into the plugin.
namespace oku::net {

/// Numbered as in NL_CONNECT_RECORD::proxyType. Unknown: a proxy is wanted, but there is no such kind.
enum class ProxyType { Unknown = -1, None = 0, Socks4 = 1, Socks4A = 2, Socks5 = 3, Http = 4 };

/// As it was asked for: what does not fit a port must be told, and not be cut to one that does.
using AskedPort = quint32;

struct Proxy {
    ProxyType type = ProxyType::None;
    QString host;
    AskedPort port = 0;
    QString user;  ///< empty: no login. SOCKS 4 and 4A know only a user, no password.
    QString password;
};

struct ConnectRequest {
    QString host;  ///< dialled when there is no SRV name, or when its targets all failed
    AskedPort port = 5222;
    QString serviceName;  ///< SRV name, empty: none. Not looked up behind a proxy that resolves names itself.
    QString domain;       ///< the account's domain: the certificate must be valid for it. Empty: the host
    Proxy proxy;
};

/// One connection of one named socket. Each connect() gives a new number, so that an event that still waits in the
/// core's queue when its connection is replaced can be told from those of the new one.
struct ConnectionId {
    QString name;
    quint64 number = 0;
    bool operator==(const ConnectionId&) const = default;
};

enum class EndCause {
    ClosedByPlugin,      ///< close(), or the end that follows our own closing tag
    Conflict,            ///< another client took the resource; counts as asked for
    CertificateRefused,  ///< the person said no; counts as asked for, and the core should set the account offline
    NameNotFound,
    ServiceRefused,  ///< the domain's SRV record says that there is no such service
    Unreachable,     ///< refused, no route, time-out: no target could be reached
    ProxyFailed,
    TlsFailed,
    ClosedByServer,
    Reset,
    LineDead,     ///< keepalive or user time-out of the system
    Stalled,      ///< the login did not come to its end in time
    BacklogFull,  ///< more waited to be sent than is kept
    NetworkGone,
    Resumed,        ///< the machine slept
    ProtocolBroken  ///< the server sent clear text behind its answer to STARTTLS
};

struct End {
    EndCause cause = EndCause::ClosedByServer;
    bool askedFor = false;  ///< true: the data word of event 3 is null
    QString text;           ///< one sentence for the user, with what the server said if it said something
    bool answered = false;  ///< the server closed its stream behind our closing tag: it has read all that was sent
};

/// A certificate that did not pass, as the person is asked about it.
struct BadCertificate {
    QString domain;
    QString reason;          ///< one sentence for each fault, separated by blanks
    QByteArray fingerprint;  ///< SHA-256 of the certificate, 32 bytes; fingerprintText() makes it readable
    QString subject;
    QString issuer;
};

enum class CertificateDecision {
    Once,   ///< for this connection
    Pin,    ///< from now on, for this account and domain
    Refuse  ///< ends the connection; the same certificate is not asked about again until forgetFailures()
};

/// "AB:CD:..."
QString fingerprintText(const QByteArray& fingerprint);

/// Where the events of all sockets go. Each call may come from within a call into SocketService (close() reports
/// closed() before it returns), so that the core has to queue them. Before a queued event reaches the plugin the core
/// asks SocketService::isCurrent(); an event of a replaced connection is dropped.
class SocketEvents {
public:
    virtual ~SocketEvents() = default;

    virtual void connected(const ConnectionId& id) = 0;
    /// Exactly once for each connect(), unless it is replaced or destroyed. Also without connected() before it.
    virtual void closed(const ConnectionId& id, const End& end) = 0;
    /// `bytes.data()[bytes.size()]` is NUL. In clear: whole elements.
    virtual void received(const ConnectionId& id, QByteArray bytes) = 0;
    virtual void tlsUp(const ConnectionId& id) = 0;
    /// The certificate is bad: ask the plugin (event 10), then call SocketService::answerCertificate().
    virtual void certificateCheck(const ConnectionId& id) = 0;
    /// The plugin did not override: ask the person, then call SocketService::decideCertificate().
    virtual void certificateQuestion(const ConnectionId& id, const BadCertificate& certificate) = 0;
    /// The person chose to pin: to be saved, and given to SocketService::setPins() at the next start.
    virtual void certificatePinned(const ConnectionId& id, const QString& domain, const QByteArray& fingerprint) = 0;
    virtual void destroyed(const QString& name) = 0;
    /// A sentence for the user: dials are being paced, a bad certificate was overridden by the plugin.
    virtual void notice(const ConnectionId& id, const QString& text) = 0;
    /// What is going on ("dialling a.example.org, port 5222"), for a status line.
    virtual void progress(const ConnectionId&, const QString&) {}
};

}  // namespace oku::net
