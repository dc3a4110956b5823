// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/typing_sender.h"

#include <utility>

#include "messenger/core/values/setting_keys.h"

namespace oku::terminal {

TypingSender::TypingSender(MessengerFace& messenger, int pause) : messenger_(messenger) {
    pause_.setSingleShot(true);
    pause_.setInterval(pause);
    connect(&pause_, &QTimer::timeout, this, &TypingSender::stop);
    connect(&messenger.accounts(), &AccountsFace::connectionChanged, this,
            [this](const QString& account, ConnectionState state) {
                if (state == ConnectionState::offline && to_.account == account) to_ = {};
            });
}

void TypingSender::typing(const Peer& peer) {
    if (peer == to_) {
        pause_.start();
        return;
    }
    stop();
    if (!wantedBy(peer.account)) return;
    const auto contact = messenger_.roster().contact(peer.account, peer.jid);
    if (!contact || contact->resources.isEmpty()) return;
    if (!messenger_.talk().sendTyping(peer.account, peer.jid, true).isEmpty()) return;
    to_ = peer;
    pause_.start();
}

void TypingSender::stop() {
    const Peer peer = std::exchange(to_, {});
    pause_.stop();
    // A notice that cannot be sent has nobody to end it for.
    if (!peer.none()) static_cast<void>(messenger_.talk().sendTyping(peer.account, peer.jid, false));
}

void TypingSender::forget() {
    to_ = {};
    pause_.stop();
}

bool TypingSender::wantedBy(const QString& account) const {
    const QVariant value = messenger_.accounts().settingValue(account, QString::fromUtf16(setting::sendTyping));
    return !value.isValid() || value.toInt() != 0;
}

}  // namespace oku::terminal
