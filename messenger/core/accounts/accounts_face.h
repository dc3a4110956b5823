// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <QList>
#include <QObject>
#include <QVariant>

#include "messenger/core/values/account.h"

namespace oku {

/// The user's accounts, their connections, statuses and settings. MessengerFace says what holds for all faces.
class AccountsFace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Accounts that have a JID, in the order of their files. The first is the one that commands default to.
    [[nodiscard]] virtual QList<Account> accounts() const = 0;
    [[nodiscard]] virtual std::optional<Account> account(const QString& jid) const = 0;
    /// Adds the account, or changes the one that has this bare JID: its password (unless empty) and the settings given
    /// (numbers and booleans become integers, the rest text). A JID without a resource gets one. A further account
    /// makes the plugin load anew, as it looks for account files only then; accounts that were online go back online.
    /// The password goes to the key ring; without one a box asks whether it may lie in the account's file, unless
    /// `OKU/PasswordInFile` says so.
    virtual QString addAccount(const QString& jid, const QString& password, const QVariantMap& settings = {}) = 0;
    /// Removes the account with its settings, contact list and passwords; its history stays unless `withHistory`. It
    /// signs off before, with all others, which go back online. accountRemoved() follows.
    virtual QString removeAccount(const QString& jid, bool withHistory = false) = 0;
    /// Sets the own status. A choice made while a login is under way is kept and given when the roster is complete.
    virtual QString setStatus(const QString& account, Status status, const QString& description = {}) = 0;
    /// A setting of the account: an integer or a text; invalid when it is not set.
    [[nodiscard]] virtual QVariant settingValue(const QString& account, const QString& key) const = 0;
    /// Changes a setting and writes the account's file at once. Where that failed the reason says so, but the change
    /// counts, and is written as soon as it can be.
    virtual QString setSetting(const QString& account, const QString& key, const QVariant& value) = 0;
    /// Accepts the certificate with this SHA-256 fingerprint (64 hexadecimal digits, colons may part the bytes) for the
    /// account from now on, beside those accepted earlier; empty takes all of them back.
    virtual QString pinCertificate(const QString& account, const QString& fingerprint) = 0;
    /// Whether the account's connection is encrypted; false also while there is none.
    [[nodiscard]] bool encrypted(const QString& jid) const {
        const auto one = account(jid);
        return one && one->encrypted;
    }

signals:
    /// An account was added or changed.
    void accountChanged(const QString& account);
    void accountRemoved(const QString& account);
    void connectionChanged(const QString& account, oku::ConnectionState state, const QString& reason);
    void ownStatusChanged(const QString& account, oku::Status status, const QString& description);
    /// A certificate was refused; the connection ended. pinCertificate() accepts it.
    void certificateRefused(const QString& account, const oku::CertificateProblem& problem);
};

}  // namespace oku
