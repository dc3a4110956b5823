// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/connections/status_choices.h"

#include <utility>

#include "host/oku/protocol.h"
#include "messenger/core/accounts/accounts.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/connections/socket_bridge.h"

namespace oku {

void StatusChoices::set(AccountEntry& account, Status status, const QString& description) {
    choose(account,
           {status, description, [this, &account, status, description] { give(account, status, description); }});
}

void StatusChoices::choose(AccountEntry& account, StatusChoice choice) {
    kept_.erase(account.key);
    sockets_.sockets().forgetFailures(account.socket);
    queue_.post(account.key, [this, &account, choice = std::move(choice)] {
        kept_.erase(account.key);  // of one that was made before, and whose turn came since
        if (choice.status != Status::offline && account.loggingIn()) {
            kept_.insert_or_assign(account.key, choice);
        } else {
            if (choice.status == Status::offline && beforeLeaving_) beforeLeaving_(account);
            choice.give();
        }
    });
}

void StatusChoices::give(const AccountEntry& account, Status status, const QString& description) {
    if (!account.registered) return;
    auto record = makeRecord<OKU_STATUS_SET>();
    record.status = static_cast<std::uint32_t>(status);
    record.description = widePointer(description);
    services_.call(account.service(u"PFStatusSet"), wordOf(&record), 0);
}

const StatusChoice* StatusChoices::kept(const QString& key) const {
    const auto found = kept_.find(key);
    return found == kept_.end() ? nullptr : &found->second;
}

void StatusChoices::loginComplete(const AccountEntry& account) {
    // Looked for when its turn comes: what was chosen later may stand before it in the queue.
    queue_.post(account.key, [this, key = account.key] {
        if (auto choice = kept_.extract(key)) choice.mapped().give();
    });
}

}  // namespace oku
