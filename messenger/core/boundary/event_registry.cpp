// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/boundary/event_registry.h"

#include <vector>

namespace oku {

OKU_WORD EventRegistry::createEvent(std::u16string_view name) {
    events_.emplace(++lastHandle_, name);
    return lastHandle_;
}

void EventRegistry::destroyEvent(OKU_WORD event) { events_.erase(event); }

OKU_WORD EventRegistry::notify(OKU_WORD event, OKU_WORD param, OKU_WORD extra) {
    const auto found = events_.find(event);
    if (found == events_.end()) return 0;
    return fire(std::u16string(found->second), param, extra);
}

OKU_WORD EventRegistry::addHook(std::u16string_view name, OKU_HANDLER handler, OKU_WORD context) {
    if (!handler) return 0;
    hooks_.emplace(++lastHandle_, Hook{std::u16string(name), handler, context});
    return lastHandle_;
}

void EventRegistry::removeHook(OKU_WORD handle) { hooks_.erase(handle); }

OKU_WORD EventRegistry::fire(std::u16string_view name, OKU_WORD param, OKU_WORD extra) {
    std::vector<OKU_WORD> handles;
    for (const auto& [handle, hook] : hooks_) {
        if (hook.name == name) handles.push_back(handle);
    }
    for (const OKU_WORD handle : handles) {
        const auto found = hooks_.find(handle);
        if (found == hooks_.end()) continue;
        const Hook hook = found->second;
        if (const OKU_WORD result = hook.handler(param, extra, hook.context)) return result;
    }
    return 0;
}

void EventRegistry::dropPlugin() {
    hooks_.clear();
    events_.clear();
}

}  // namespace oku
