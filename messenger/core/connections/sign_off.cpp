// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/connections/sign_off.h"

#include <utility>

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/connections/socket_bridge.h"
#include "messenger/core/connections/status_choices.h"
#include "messenger/core/passwords/passwords.h"

namespace oku {
namespace {

constexpr int kPatience = 3000;  // milliseconds for the servers to close, and for the key ring to write

}  // namespace

SignOff::SignOff(Accounts& accounts, StatusChoices& choices, SocketBridge& sockets, Passwords& passwords,
                 QObject* parent)
    : QObject(parent), accounts_(accounts), choices_(choices), passwords_(passwords) {
    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, this, [this] {
        leaving_.clear();
        if (const auto then = std::exchange(then_, nullptr)) then();
    });
    connect(&sockets, &SocketBridge::ended, this, [this](AccountEntry* account, const net::End&, bool told) {
        if (told && leaving_.remove(account->key)) goOn();
    });
    connect(&passwords, &Passwords::written, this, &SignOff::goOn);
}

bool SignOff::lingers() const { return !leaving_.isEmpty() || passwords_.writing(); }

void SignOff::goOn() {
    if (then_ && !lingers()) patience_.start(0);
}

void SignOff::start(std::function<void()> then) {
    then_ = std::move(then);
    for (const auto& account : accounts_.all()) {
        if (account->has(OKU_FLAG_CONNECTED)) leaving_.insert(account->key);
        if (account->connection != ConnectionState::offline) {
            choices_.set(*account, Status::offline, account->description);
        }
    }
    patience_.start(lingers() ? kPatience : 0);
}

}  // namespace oku
