#include "plugin/plugin_state.h"

std::shared_ptr<PluginState>& pluginState() {
    static std::shared_ptr<PluginState> state;
    return state;
}

std::u16string ownCapsVer() { return pluginState() ? pluginState()->ownCapsVer : std::u16string(); }

Host pluginHost() { return pluginState() ? pluginState()->host : Host(); }
