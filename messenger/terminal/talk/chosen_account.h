// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QVariantMap>

#include "messenger/terminal/talk/desk.h"
#include "messenger/terminal/talk/secret_prompt.h"

namespace oku::terminal {

/// The account that commands are about, and the passwords that accounts need.
class ChosenAccount {
public:
    ChosenAccount(const Desk& desk, SecretPrompt& secret);

    /// Adds or chooses the account that the options name, and connects it as they say.
    void start();
    /// The first one where none was chosen; empty when there is none.
    [[nodiscard]] QString jid() const;
    void choose(const QString& jid) { jid_ = jid; }
    /// The account is gone: the first one takes its place where it was chosen.
    void forget(const QString& jid) {
        if (jid_ == jid) jid_.clear();
    }
    /// Sets its status. To log in it needs a password, and asks for it where none is known. Gives the reason of a
    /// refusal.
    QString setStatus(Status status, const QString& description);
    /// Asks for the password, then adds the account or changes it, and chooses it. `server` may be empty.
    void add(const QString& jid, const QString& server);

private:
    void connectAtStart();
    [[nodiscard]] bool hasPassword(const QString& account) const;
    /// False when the messenger refused it, which is told.
    bool store(const QString& jid, const QString& password, const QVariantMap& settings);

    Desk desk_;
    SecretPrompt& secret_;
    QString jid_;
    QString status_;  ///< to be set once the account is there
};

}  // namespace oku::terminal
