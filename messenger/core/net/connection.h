// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <QObject>

#include "messenger/core/net/dialer.h"
#include "messenger/core/net/pausable_timer.h"
#include "messenger/core/net/socket_settings.h"
#include "messenger/core/net/socket_types.h"
#include "messenger/core/net/stream_reader.h"

namespace oku::net {

/// What the socket that a connection belongs to knows and has to learn.
struct ConnectionHooks {
    std::function<bool(const QByteArray& fingerprint)> isPinned;
    std::function<bool(const QByteArray& fingerprint)> wasRefused;
    std::function<void(const QByteArray& fingerprint, CertificateDecision)> decided;
    /// Called just before SocketEvents::closed(). `loginFailed`: the socket had opened, the session was not bound.
    std::function<void(const End&, bool loginFailed)> ended;
};

/// One connection from its dial to its end, which it reports exactly once.
///
/// Waiting (paced) -> Dialling -> Open -> Ended. Bytes and the end are reported from pump() alone, so that nothing
/// overtakes anything, whatever nested event loop they come from.
///
/// Long, because it is one state machine: each of its events may come in each state, and what may follow is decided
/// here.
class Connection : public QObject {
public:
    Connection(const ConnectionId& id, const ConnectRequest& request, const SocketSettings& settings,
               Resolver& resolver, SocketEvents& events, ConnectionHooks hooks, QObject* parent);
    ~Connection() override;

    const ConnectionId& id() const { return id_; }
    bool active() const { return state_ != State::Ended; }
    QString domain() const;
    qsizetype pieceLimit() const;

    /// TLS was asked for: what was read before that was read in clear.
    bool tlsStarted() const { return tlsStarted_; }

    /// Null unless open.
    QHostAddress localAddress() const;

    /// Dials after `delay` milliseconds.
    void start(int delay);
    /// Dials now if it still waits.
    void hurry();
    /// Lets go without any event; what was written still goes out.
    void abandon();
    /// Ends it, once what has arrived is reported. One that still waits to be dialled stays.
    void end(EndCause cause, const QString& sentence);

    qint32 send(QByteArrayView bytes);
    bool initSsl();
    bool close();
    void streamEnded();
    void conflictSeen() { conflict_ = true; }
    void sessionBound();
    void setBusy(bool busy);

    void answerCertificate(bool overridden);
    void decideCertificate(CertificateDecision decision);

private:
    enum class State { Waiting, Dialling, Open, Ended };
    enum class Asked { Nobody, Plugin, Person };

    void dial();
    void dialled(Dialer::Result result);
    void open(SocketPtr socket);
    void watchSocket();
    void lineError();
    void lineDown();

    void pump();
    bool reportNext();
    void readMore();
    void note(const Piece& piece);
    void releaseHeld();

    bool readable() const;

    void handshakeDone();
    void checkCertificate(const QList<QSslError>& errors);
    void acceptCertificate();
    void refuseCertificate();

    void updateStall() { stall_.setPaused(busy_ || asked_ == Asked::Person); }
    void finish(EndCause cause, const QString& sentence);
    bool answeredOurEnd(EndCause cause) const;

    ConnectionId id_;
    ConnectRequest request_;
    const SocketSettings& settings_;
    Resolver& resolver_;
    SocketEvents& events_;
    ConnectionHooks hooks_;

    State state_ = State::Waiting;
    SocketPtr socket_;
    std::unique_ptr<Dialer, DeleteLater> dialer_;
    StreamReader reader_;
    std::deque<Piece> ready_;
    struct Reason {
        EndCause cause;
        QString sentence;
    };
    std::optional<Reason> lineError_;   ///< what the socket last complained about
    std::optional<Reason> pendingEnd_;  ///< to be reported when all that arrived is
    std::optional<StreamFault> fault_;
    BadCertificate certificate_;
    Asked asked_ = Asked::Nobody;

    QTimer wait_;
    PausableTimer stall_;
    PausableTimer hold_;
    QTimer grace_;

    bool busy_ = false;
    bool pumping_ = false;
    bool bound_ = false;
    bool tlsStarted_ = false;
    bool tlsUp_ = false;
    bool tlsToReport_ = false;
    bool certificateAccepted_ = false;  ///< though it did not pass
    bool compressed_ = false;
    bool closingSent_ = false;
    bool serverEnded_ = false;
    bool endAnswered_ = false;         ///< the server's closing tag came behind ours
    bool heardBehindClosing_ = false;  ///< compressed bytes came behind our closing tag
    bool conflict_ = false;
};

}  // namespace oku::net
