// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <QString>

#include "messenger/core/values/status.h"

namespace oku {

struct AccountEntry;
class PluginQueue;
class ServiceRegistry;
class SocketBridge;

/// A status that the user chose for an account.
struct StatusChoice {
    Status status;
    QString description;
    std::function<void()> give;  ///< tells the plugin, in the way in which the user chose; called from the queue
};

/// Hands the user's choices of a status to the plugin, in the order in which they were made. One that is made while a
/// login is under way waits for its end, as the plugin would drop the attempt.
class StatusChoices {
public:
    StatusChoices(ServiceRegistry& services, PluginQueue& queue, SocketBridge& sockets)
        : services_(services), queue_(queue), sockets_(sockets) {}

    void set(AccountEntry& account, Status status, const QString& description);
    void choose(AccountEntry& account, StatusChoice choice);
    /// Tells the plugin at once; a call into it, so only from the queue or from a call of its own.
    void give(const AccountEntry& account, Status status, const QString& description);
    /// From now on `act` is called before an account is taken offline, from the queue: a last word to the server.
    void beforeLeaving(std::function<void(const AccountEntry&)> act) { beforeLeaving_ = std::move(act); }
    /// The choice that waits for the end of this account's login; null when none does.
    [[nodiscard]] const StatusChoice* kept(const QString& key) const;
    /// The account's login is complete: what waits is given.
    void loginComplete(const AccountEntry& account);

private:
    ServiceRegistry& services_;
    PluginQueue& queue_;
    SocketBridge& sockets_;
    std::function<void(const AccountEntry&)> beforeLeaving_;
    std::map<QString, StatusChoice> kept_;  ///< by the accounts' keys
};

}  // namespace oku
