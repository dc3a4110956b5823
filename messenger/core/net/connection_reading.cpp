// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <QPointer>

#include "messenger/core/net/connection.h"
#include "messenger/core/net/texts.h"

namespace oku::net {

void Connection::pump() {
    if (pumping_ || state_ != State::Open) return;
    const QPointer<Connection> self(this);
    pumping_ = true;
    bool more = true;
    while (more && !busy_ && state_ == State::Open) {
        more = reportNext();
        if (!self) return;  // the plugin destroyed the socket in answer to what was reported
    }
    pumping_ = false;
    if (state_ != State::Open || busy_ || !pendingEnd_) return;
    finish(pendingEnd_->cause, pendingEnd_->sentence);
}

/// Nothing is read behind the answer to STARTTLS, nor from where TLS was asked for until it is reported, which is once
/// the certificate has passed.
bool Connection::readable() const {
    if (tlsStarted_) return tlsUp_ && !tlsToReport_;
    return !reader_.proceedSeen();
}

/// False when nothing is left. The event comes last, for the connection may be gone after it.
bool Connection::reportNext() {
    if (tlsToReport_ && asked_ == Asked::Nobody && !pendingEnd_) {
        tlsToReport_ = false;
        events_.tlsUp(id_);
        return true;
    }
    while (ready_.empty() && socket_->bytesAvailable() > 0 && readable()) readMore();
    if (ready_.empty() && pendingEnd_ && reader_.held() > 0 && readable())
        ready_.push_back({reader_.release(), std::nullopt, false});
    if (ready_.empty()) return false;
    Piece piece = std::move(ready_.front());
    ready_.pop_front();
    note(piece);
    events_.received(id_, std::move(piece.bytes));
    return true;
}

void Connection::readMore() {
    if (!compressed_ && settings_.compressed(id_.name)) {
        compressed_ = true;
        hold_.cancel();
        if (reader_.held() > 0) ready_.push_back({reader_.release(), std::nullopt, false});
    }
    const QByteArray bytes = socket_->read(pieceLimit());
    if (compressed_) {
        // Behind its own closing tag the plugin has ended inflation, and would take these bytes for text.
        if (closingSent_) {
            heardBehindClosing_ = true;
        } else {
            ready_.push_back({bytes, std::nullopt, false});
        }
        return;
    }
    const QList<Piece> pieces = reader_.add(bytes);
    ready_.insert(ready_.end(), pieces.begin(), pieces.end());
    if (reader_.held() == 0) {
        hold_.cancel();
    } else if (!pieces.isEmpty() || !hold_.isBegun()) {
        hold_.begin(settings_.holdTime);
    }
}

void Connection::releaseHeld() {
    if (state_ != State::Open || !readable()) return;
    if (QByteArray held = reader_.release(); !held.isEmpty()) ready_.push_back({std::move(held), std::nullopt, false});
    pump();
}

void Connection::note(const Piece& piece) {
    if (piece.fault) {
        fault_ = piece.fault;
        // Only who is logged in somewhere can be thrown out there; before TLS anybody on the line could say so.
        conflict_ = conflict_ || (fault_->conflict && (bound_ || tlsUp_));
    }
    if (!piece.ends) return;
    serverEnded_ = true;
    endAnswered_ = closingSent_;
    grace_.start(closingSent_ ? 0 : settings_.closeGrace);
}

}  // namespace oku::net
