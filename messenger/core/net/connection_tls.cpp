#include <QPointer>

#include "messenger/core/net/certificate.h"
#include "messenger/core/net/connection.h"
#include "messenger/core/net/texts.h"

namespace oku::net {

bool Connection::initSsl() {
    const bool possible =
        state_ == State::Open && !tlsStarted_ && !pendingEnd_ && socket_->state() == QAbstractSocket::ConnectedState;
    if (!possible) return false;
    if (reader_.proceedSeen()) reader_.add(socket_->readAll());
    if (reader_.held() > 0 || socket_->bytesAvailable() > 0) {
        end(EndCause::ProtocolBroken, text(Text::ProtocolBroken));
        return false;
    }
    tlsStarted_ = true;
    reader_ = StreamReader(settings_.holdBytes, false);
    hold_.cancel();
    socket_->startClientEncryption();
    return true;
}

void Connection::checkCertificate(const QList<QSslError>& errors) {
    // A write while the handshake waits for an answer has it complain a second time.
    if (state_ != State::Open || asked_ != Asked::Nobody) return;
    certificate_ = describe(socket_->peerCertificate(), errors, domain());
    if (hooks_.isPinned(certificate_.fingerprint)) return socket_->ignoreSslErrors();
    asked_ = Asked::Plugin;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (state_ == State::Open) events_.certificateCheck(id_);
        },
        Qt::QueuedConnection);
}

void Connection::answerCertificate(bool overridden) {
    if (state_ != State::Open || asked_ != Asked::Plugin) return;
    if (overridden) {
        const QPointer<Connection> self(this);
        events_.notice(id_, text(Text::CertificateOverridden, domain(), certificate_.reason));
        if (self) acceptCertificate();
        return;
    }
    if (hooks_.wasRefused(certificate_.fingerprint)) return refuseCertificate();
    asked_ = Asked::Person;
    updateStall();
    events_.certificateQuestion(id_, certificate_);
}

void Connection::decideCertificate(CertificateDecision decision) {
    if (state_ != State::Open || asked_ != Asked::Person) return;
    hooks_.decided(certificate_.fingerprint, decision);
    if (decision == CertificateDecision::Refuse) return refuseCertificate();
    const QPointer<Connection> self(this);
    if (decision == CertificateDecision::Pin) events_.certificatePinned(id_, domain(), certificate_.fingerprint);
    if (self) acceptCertificate();
}

void Connection::acceptCertificate() {
    if (state_ != State::Open) return;
    asked_ = Asked::Nobody;
    updateStall();
    socket_->ignoreSslErrors();
    socket_->resume();
}

void Connection::refuseCertificate() {
    finish(EndCause::CertificateRefused, text(Text::CertificateRefused, domain()) + u' ' + certificate_.reason);
}

}  // namespace oku::net
