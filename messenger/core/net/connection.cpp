// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/connection.h"

#include <QPointer>
#include <QSslConfiguration>
#include <utility>

#include "messenger/core/net/line_options.h"
#include "messenger/core/net/system_resolver.h"
#include "messenger/core/net/texts.h"

namespace oku::net {

Connection::Connection(const ConnectionId& id, const ConnectRequest& request, const SocketSettings& settings,
                       Resolver& resolver, SocketEvents& events, ConnectionHooks hooks, QObject* parent)
    : QObject(parent),
      id_(id),
      request_(request),
      settings_(settings),
      resolver_(resolver),
      events_(events),
      hooks_(std::move(hooks)),
      reader_(settings.holdBytes, true),
      stall_(this),
      hold_(this) {
    wait_.setSingleShot(true);
    grace_.setSingleShot(true);
    QObject::connect(&wait_, &QTimer::timeout, this, &Connection::dial);
    QObject::connect(&hold_, &QTimer::timeout, this, &Connection::releaseHeld);
    QObject::connect(&grace_, &QTimer::timeout, this, [this] {
        if (serverEnded_) return end(EndCause::ClosedByServer, text(Text::ClosedByServer));
        end(EndCause::ClosedByPlugin, text(Text::ClosedByPlugin));
    });
    QObject::connect(&stall_, &QTimer::timeout, this,
                     [this] { end(EndCause::Stalled, text(Text::Stalled, QString::number(settings_.stall / 1000))); });
}

Connection::~Connection() = default;

QString Connection::domain() const { return request_.domain.isEmpty() ? request_.host : request_.domain; }

qsizetype Connection::pieceLimit() const {
    return compressed_ || settings_.compressed(id_.name) ? settings_.compressedPiece : settings_.clearPiece;
}

QHostAddress Connection::localAddress() const { return socket_ ? socket_->localAddress() : QHostAddress(); }

void Connection::start(int delay) {
    if (delay > 0) return wait_.start(delay);
    dial();
}

void Connection::hurry() {
    if (state_ != State::Waiting) return;
    wait_.stop();
    dial();
}

void Connection::dial() {
    state_ = State::Dialling;
    stall_.begin(settings_.stall);
    dialer_.reset(new Dialer(
        request_, settings_, resolver_,
        [this](const QString& progress) {
            if (state_ == State::Dialling) events_.progress(id_, progress);
        },
        [this](Dialer::Result result) { dialled(std::move(result)); }, this));
    dialer_->start();
}

void Connection::dialled(Dialer::Result result) {
    if (state_ != State::Dialling) return;
    dialer_.reset();
    if (!result.socket) return finish(result.cause, result.error);
    open(std::move(result.socket));
}

void Connection::open(SocketPtr socket) {
    state_ = State::Open;
    socket_ = std::move(socket);
    setLineOptions(*socket_, settings_);
    socket_->setReadBufferSize(settings_.clearPiece);
    socket_->setPeerVerifyName(asciiName(domain()));
    socket_->setPauseMode(QAbstractSocket::PauseOnSslErrors);
    if (!settings_.extraCa.isEmpty()) {
        QSslConfiguration configuration = socket_->sslConfiguration();
        configuration.setCaCertificates(QSslConfiguration::systemCaCertificates() + settings_.extraCa);
        socket_->setSslConfiguration(configuration);
    }
    watchSocket();
    const QPointer<Connection> self(this);
    events_.connected(id_);
    if (self) pump();
}

/// All of it comes queued, but for the certificate's errors, which have to be answered at once.
void Connection::watchSocket() {
    QSslSocket* socket = socket_.get();
    QObject::connect(socket, &QSslSocket::readyRead, this, &Connection::pump, Qt::QueuedConnection);
    QObject::connect(socket, &QSslSocket::errorOccurred, this, &Connection::lineError);
    QObject::connect(socket, &QSslSocket::disconnected, this, &Connection::lineDown, Qt::QueuedConnection);
    QObject::connect(socket, &QSslSocket::sslErrors, this, &Connection::checkCertificate);
    QObject::connect(socket, &QSslSocket::encrypted, this, &Connection::handshakeDone);
    if (socket->state() != QAbstractSocket::ConnectedState)
        QMetaObject::invokeMethod(this, &Connection::lineDown, Qt::QueuedConnection);
}

void Connection::lineError() {
    switch (socket_->error()) {
        case QAbstractSocket::RemoteHostClosedError:
            break;
        case QAbstractSocket::SslHandshakeFailedError:
        case QAbstractSocket::SslInternalError:
        case QAbstractSocket::SslInvalidUserDataError:
            lineError_ = Reason{EndCause::TlsFailed, text(Text::TlsFailed, socket_->errorString())};
            break;
        default:
            lineError_ = Reason{EndCause::LineDead, text(Text::LineDead, net::lineError(*socket_))};
            break;
    }
}

void Connection::lineDown() {
    if (state_ != State::Open) return;
    if (lineError_) return end(lineError_->cause, lineError_->sentence);
    if (tlsStarted_ && !tlsUp_) return end(EndCause::TlsFailed, text(Text::TlsFailed, text(Text::Reset)));
    if (serverEnded_) return end(EndCause::ClosedByServer, text(Text::ClosedByServer));
    end(EndCause::Reset, text(Text::Reset));
}

void Connection::end(EndCause cause, const QString& sentence) {
    if (state_ == State::Dialling) return finish(cause, sentence);
    if (state_ != State::Open) return;
    if (!pendingEnd_) pendingEnd_ = Reason{cause, sentence};
    pump();
}

void Connection::finish(EndCause cause, const QString& sentence) {
    const bool opened = socket_ != nullptr;
    End report{cause, false, sentence, answeredOurEnd(cause)};
    if (conflict_) {
        report = {EndCause::Conflict, true, text(Text::Conflict), false};
    } else if (closingSent_ || cause == EndCause::ClosedByPlugin) {
        report = {EndCause::ClosedByPlugin, true, text(Text::ClosedByPlugin), report.answered};
    } else if (cause == EndCause::CertificateRefused) {
        report.askedFor = true;
    }
    if (fault_) report.text += u' ' + text(Text::ServerSaid, fault_->toString());
    abandon();
    hooks_.ended(report, opened && !bound_);
    events_.closed(id_, report);
}

/// A line that goes down behind our closing tag, or a grace that runs out, tells nothing of what the server has read.
/// A server that ends its stream over an error may have stopped reading before.
bool Connection::answeredOurEnd(EndCause cause) const {
    if (fault_) return false;
    // Bytes were refused, perhaps our closing tag among them.
    if (pendingEnd_ && pendingEnd_->cause == EndCause::BacklogFull) return false;
    // Compressed, its closing tag cannot be read: what it said last, and the line closed in order, stand for it.
    if (compressed_) return heardBehindClosing_ && cause == EndCause::Reset;
    return endAnswered_;
}

void Connection::abandon() {
    state_ = State::Ended;
    dialer_.reset();
    ready_.clear();
    for (QTimer* timer : {&wait_, &grace_}) timer->stop();
    stall_.cancel();
    hold_.cancel();
    if (!socket_) return;
    if (asked_ != Asked::Nobody) socket_->abort();
    lingerAndClose(std::move(socket_), parent(), settings_.closeGrace);
}

qint32 Connection::send(QByteArrayView bytes) {
    const bool open =
        state_ == State::Open && !pendingEnd_ && !closingSent_ && socket_->state() == QAbstractSocket::ConnectedState;
    // Until the handshake is done the socket keeps what it is given; behind it a certificate may still be in doubt.
    const bool doubtful = tlsUp_ && asked_ != Asked::Nobody;
    if (!open || doubtful) return -1;
    if (socket_->bytesToWrite() + socket_->encryptedBytesToWrite() + bytes.size() > settings_.sendBacklog) {
        // The plugin sends on after a refusal: behind a gap nothing may go out, nor count as sent.
        end(EndCause::BacklogFull, text(Text::BacklogFull, QString::number(settings_.sendBacklog / 1024 / 1024)));
        return -1;
    }
    const qint64 taken = socket_->write(bytes.data(), bytes.size());
    if (bytes.trimmed().endsWith("</stream:stream>")) streamEnded();
    return static_cast<qint32>(taken);
}

bool Connection::close() {
    if (state_ == State::Ended) return false;
    finish(EndCause::ClosedByPlugin, text(Text::ClosedByPlugin));
    return true;
}

void Connection::streamEnded() {
    if (state_ != State::Open || closingSent_) return;
    closingSent_ = true;
    grace_.start(serverEnded_ ? 0 : settings_.closeGrace);
}

void Connection::sessionBound() {
    bound_ = true;
    fault_.reset();  // a mechanism that was refused before another one did has no part in a later end
    stall_.cancel();
}

void Connection::setBusy(bool busy) {
    busy_ = busy;
    updateStall();
    hold_.setPaused(busy);
    if (!busy) pump();
}

}  // namespace oku::net
