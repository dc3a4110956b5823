// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/boundary/service_registry.h"

namespace oku {

void ServiceRegistry::provide(std::u16string_view name, Service service) {
    services_.insert_or_assign(std::u16string(name), std::move(service));
}

OKU_WORD ServiceRegistry::create(std::u16string_view name, OKU_HANDLER handler, OKU_WORD context) {
    if (!handler || name.empty()) return 0;
    const auto call = [handler, context](OKU_WORD param, OKU_WORD extra) { return handler(param, extra, context); };
    if (!services_.try_emplace(std::u16string(name), call).second) return 0;
    names_.emplace(++lastHandle_, name);
    return lastHandle_;
}

void ServiceRegistry::destroy(OKU_WORD handle) {
    const auto found = names_.find(handle);
    if (found == names_.end()) return;
    services_.erase(found->second);
    names_.erase(found);
}

OKU_WORD ServiceRegistry::call(std::u16string_view name, OKU_WORD param, OKU_WORD extra) const {
    const auto found = services_.find(name);
    if (found == services_.end()) return 0;
    // A copy: the service may take itself out of the table while it runs.
    const Service service = found->second;
    return service(param, extra);
}

bool ServiceRegistry::has(std::u16string_view name) const { return services_.find(name) != services_.end(); }

void ServiceRegistry::dropPlugin() {
    for (const auto& [handle, name] : names_) services_.erase(name);
    names_.clear();
}

}  // namespace oku
