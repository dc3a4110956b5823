// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <QObject>
#include <vector>

#include "messenger/core/values/status.h"

namespace oku {

struct AccountEntry;
class HostCore;

/// Loads the plugin anew where it has to be: it looks for the files of accounts only then, and must not hold one that
/// goes. Accounts that are online sign off before, and go back online; without any it has been done on return.
class PluginReload : public QObject {
    Q_OBJECT

public:
    explicit PluginReload(HostCore& core) : core_(core) {}

    /// So that the plugin finds the file of this new account; `key` is its path.
    void addAccount(const QString& jid, const QString& key);
    /// Removes an account with its files and passwords; its history too when that is wanted.
    void removeAccount(const AccountEntry& account, bool withHistory);
    /// Chooses a status; while a new load is waited for, the one that the account is to have then.
    void setStatus(AccountEntry& account, Status status, const QString& description);
    /// The same for an account that is new and not loaded yet; false when no such account is waited for.
    bool setStatusOfNew(const QString& jid, Status status, const QString& description);

signals:
    /// A new account is loaded.
    void accountAdded(const QString& account);
    void accountRemoved(const QString& account);
    void noticed(const QString& account, const QString& text);

private:
    struct Choice {
        Status status;
        QString description;
    };
    struct Removal {
        QString key;
        QString jid;
        bool withHistory;
    };

    /// What the accounts that are not offline are to go back to.
    void keepChoices();
    void start();
    void loadAnew();
    void setStatusThen(const QString& key, Status status, const QString& description);
    void forget(const Removal& account);

    HostCore& core_;
    bool waiting_ = false;                    ///< loadAnew() follows
    std::map<QString, Choice> backOnline_;    ///< what follows it, by the accounts' keys
    std::vector<Removal> removals_;           ///< what is removed then
    std::map<QString, QString> newAccounts_;  ///< that are told of then: key by JID
};

}  // namespace oku
