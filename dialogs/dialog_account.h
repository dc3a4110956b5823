// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// An account as the plugin's windows know it.
#pragma once

#include <vector>

#include "plugin/client_class.h"
#include "router/event_dispatcher.h"
#include "stream/stream_output.h"

namespace protolink {

struct DialogAccount {
    CClientClass& client;
    CProtoEventDispatcher& dispatcher;
    StreamOutput& output;
};

/// All accounts, in the order in which they were made.
using DialogAccounts = std::vector<DialogAccount*>;

}  // namespace protolink
