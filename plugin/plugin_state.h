// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What exists once for the whole plugin, whatever the number of accounts.
#pragma once

#include <memory>
#include <vector>

#include "host/host.h"

namespace protolink {

class CClientClass;
struct SharedParts;

/// Made anew by each pluginLoad and gone after pluginUnload.
struct PluginState {
    Host host;
    std::shared_ptr<SharedParts> shared;
    std::vector<std::shared_ptr<CClientClass>> accounts;  // in order of creation; the default account first
    bool ending = false;                                  // unloading has begun; the host may still call back
};

/// The state of the loaded plugin, null while it is not loaded.
std::shared_ptr<PluginState>& pluginState();

/// The host of the loaded plugin; one that answers 0 to everything while it is not loaded.
Host pluginHost();

}  // namespace protolink
