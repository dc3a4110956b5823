// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <QObject>

#include "host/oku/base.h"
#include "messenger/core/values/status.h"
#include "messenger/core/values/windows.h"

namespace oku {

class Accounts;
struct AccountEntry;
class PluginQueue;
class ServiceRegistry;

/// "OKU/StatusWND/...": the windows in which the person picks an account's status, description and protection.
class StatusWindows : public QObject {
    Q_OBJECT

public:
    StatusWindows(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, QObject* parent = nullptr);

    /// Whether the plugin has prepared one for the account.
    [[nodiscard]] bool has(const AccountEntry& account) const { return find(account) != nullptr; }
    /// Tells the plugin now what the person chose in the account's window; only from the queue. Nothing happens where
    /// there is none.
    void confirm(const AccountEntry& account, Status status, const QString& description, bool protect);
    void dropPlugin() { windows_.clear(); }

signals:
    void requested(const QString& account, const oku::StatusWindow& window);

private:
    struct Prepared {
        StatusWindow window;
        OKU_HANDLER callback = nullptr;
        OKU_WORD context = 0;
    };

    /// Null where there is no window that would answer.
    [[nodiscard]] const Prepared* find(const AccountEntry& account) const;
    OKU_WORD prepare(OKU_WORD param);
    OKU_WORD show(OKU_WORD param);
    OKU_WORD setTexts(OKU_WORD param);

    Accounts& accounts_;
    PluginQueue& queue_;
    std::map<QString, Prepared> windows_;  ///< by the accounts' keys
};

}  // namespace oku
