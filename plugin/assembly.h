// The one place that knows all layers: it makes an account's parts and binds them to each other and to the host's
// callbacks.
#pragma once

#include <memory>

#include "plugin/client_class.h"
#include "plugin/plugin_state.h"

/// Makes what all accounts share above the plugin's frame.
std::unique_ptr<SharedParts> assembleSharedParts();

/// Makes a new account with all of its parts, known to the host's callbacks by its context word; `init` has to follow.
std::shared_ptr<CClientClass> assembleAccount(const AccountFiles& files, PluginState& state);

/// What every account registers with the host.
const AccountEntries& accountEntries();

/// The account's callbacks find it no more.
void retireAccount(OKU_WORD context);
