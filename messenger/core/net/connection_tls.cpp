// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <QPointer>

#include "messenger/core/net/certificate.h"
#include "messenger/core/net/connection.h"
#include "messenger/core/net/texts.h"

namespace oku::net {

/// Whatever comes of it: from here on no byte is reported that was read in clear.
bool Connection::initSsl() {
    if (state_ != State::Open || tlsStarted_) return false;
    const bool clearTextLeft = !ready_.empty() || reader_.held() > 0 || socket_->bytesAvailable() > 0;
    tlsStarted_ = true;
    ready_.clear();
    reader_ = StreamReader(settings_.holdBytes, false);
    hold_.cancel();
    if (clearTextLeft) {
        finish(EndCause::ProtocolBroken, text(Text::ProtocolBroken));
        return false;
    }
    if (pendingEnd_ || socket_->state() != QAbstractSocket::ConnectedState) return false;
    socket_->startClientEncryption();
    return true;
}

void Connection::handshakeDone() {
    tlsUp_ = tlsToReport_ = true;
    // The toolkit takes the common name as well, whatever other names the certificate has.
    if (const auto fault = nameFault(socket_->peerCertificate(), domain())) checkCertificate({*fault});
    QMetaObject::invokeMethod(this, &Connection::pump, Qt::QueuedConnection);
}

void Connection::checkCertificate(const QList<QSslError>& errors) {
    // A write while the handshake waits for an answer has it complain a second time.
    if (state_ != State::Open || asked_ != Asked::Nobody || certificateAccepted_) return;
    const QSslCertificate certificate = socket_->peerCertificate();
    QList<QSslError> faults = errors;
    if (const auto fault = nameFault(certificate, domain())) faults.append(*fault);
    certificate_ = describe(certificate, faults, domain());
    if (hooks_.isPinned(certificate_.fingerprint)) return acceptCertificate();
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
    certificateAccepted_ = true;
    updateStall();
    if (tlsUp_) {
        QMetaObject::invokeMethod(this, &Connection::pump, Qt::QueuedConnection);
        return;
    }
    socket_->ignoreSslErrors();
    socket_->resume();
}

void Connection::refuseCertificate() {
    finish(EndCause::CertificateRefused, text(Text::CertificateRefused, domain()) + u' ' + certificate_.reason);
}

}  // namespace oku::net
