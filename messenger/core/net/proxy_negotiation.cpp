// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/proxy_negotiation.h"

#include <utility>

#include "messenger/core/net/texts.h"

namespace oku::net {

namespace {

constexpr qsizetype kLongestAnswer = 64 * 1024;

}  // namespace

ProxyNegotiation::ProxyNegotiation(SocketPtr socket, std::unique_ptr<ProxyHandshake> handshake, int timeout,
                                   std::function<void(Result)> done, QObject* parent)
    : QObject(parent), socket_(std::move(socket)), handshake_(std::move(handshake)), done_(std::move(done)) {
    QObject::connect(socket_.get(), &QSslSocket::readyRead, this, &ProxyNegotiation::advance, Qt::QueuedConnection);
    QObject::connect(
        socket_.get(), &QSslSocket::disconnected, this,
        [this] {
            advance();  // the reason for a refusal may have come together with the close
            finish({nullptr, false, text(Text::ProxyClosed)});
        },
        Qt::QueuedConnection);
    limit_.setSingleShot(true);
    QObject::connect(&limit_, &QTimer::timeout, this, [this] { finish({nullptr, false, text(Text::ProxySilent)}); });
    limit_.start(timeout);
    QMetaObject::invokeMethod(this, &ProxyNegotiation::advance, Qt::QueuedConnection);
}

void ProxyNegotiation::advance() {
    if (!done_) return;
    for (bool more = true; more;) {
        const ProxyStep step = handshake_->step(socket_->peek(kLongestAnswer));
        socket_->skip(step.consumed);
        if (!step.send.isEmpty()) socket_->write(step.send);
        switch (step.state) {
            case ProxyStep::State::Waiting:
                more = step.consumed > 0;
                break;
            case ProxyStep::State::Done:
                socket_->disconnect(this);
                return finish({std::move(socket_), false, {}});
            case ProxyStep::State::TargetFailed:
                return finish({nullptr, true, step.error});
            case ProxyStep::State::Failed:
                return finish({nullptr, false, step.error});
        }
    }
}

void ProxyNegotiation::finish(Result result) {
    if (!done_) return;
    limit_.stop();
    std::exchange(done_, nullptr)(std::move(result));
}

}  // namespace oku::net
