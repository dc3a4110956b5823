// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QObject>
#include <QStringList>

#include "messenger/terminal/talk/chosen_account.h"
#include "messenger/terminal/talk/desk.h"

namespace oku::terminal {

/// What the messenger tells of accounts and their connections, in words.
class AccountDisplay : public QObject {
public:
    AccountDisplay(const Desk& desk, ChosenAccount& chosen);

    /// Nothing has to be told of this account: it was there before.
    void takeAsTold(const QString& account) { told_.append(account); }
    /// The fingerprint that was refused last; empty when none was.
    [[nodiscard]] QString refusedCertificate(const QString& account) const { return refused_.value(account); }

private:
    void onChanged(const QString& account);
    void onRemoved(const QString& account);
    void onConnection(const QString& account, ConnectionState state, const QString& reason);
    void onOwnStatus(const QString& account, Status status, const QString& description);
    void onNotice(const QString& account, const QString& text);
    void onCertificateRefused(const QString& account, const CertificateProblem& problem);

    Desk desk_;
    ChosenAccount& chosen_;
    QStringList told_;
    QHash<QString, QString> refused_;  ///< fingerprints by account
    QHash<QString, QString> notices_;  ///< by account: what was told since its connection changed
};

}  // namespace oku::terminal
