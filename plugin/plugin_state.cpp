// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/plugin_state.h"

namespace protolink {

std::shared_ptr<PluginState>& pluginState() {
    static std::shared_ptr<PluginState> state;
    return state;
}

Host pluginHost() { return pluginState() ? pluginState()->host : Host(); }

}  // namespace protolink
