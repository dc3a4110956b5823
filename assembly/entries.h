// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the host and the server can call of an account: the tables that name each entry and the part behind it.
#pragma once

#include <span>

#include "plugin/client_class.h"
#include "profile/pubsub_events.h"
#include "router/route.h"

namespace protolink {

class AccountParts;

/// What every account registers with the host.
const AccountEntries& accountEntries();

/// The host's callback for the reconnection timer.
OKU_WORD OKU_CALL reconnectTick(OKU_WORD param, OKU_WORD extra, OKU_WORD context) noexcept;
/// The host's callback for the timer that looks for ended downloads.
OKU_WORD OKU_CALL downloadTick(OKU_WORD param, OKU_WORD extra, OKU_WORD context) noexcept;

/// The host's callback for the page that tells of a contact's resources.
OKU_WORD OKU_CALL informationPage(OKU_WORD param, OKU_WORD extra, OKU_WORD context) noexcept;

/// Where received elements go. The order decides: the first row that takes an element has it.
std::span<const Route<AccountParts>> accountRoutes();

/// Where published events go, in the order in which the nodes of one message are looked at.
std::span<const EventNode<AccountParts>> accountEventNodes();

}  // namespace protolink
