// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "host/oku/base.h"

namespace oku {

/// The named services: those of this host, and those that the plugin registers with fnCreate.
class ServiceRegistry {
public:
    using Service = std::function<OKU_WORD(OKU_WORD param, OKU_WORD extra)>;

    /// Adds a service of the host's own; it stays.
    void provide(std::u16string_view name, Service service);

    /// Registers a service of the plugin. Returns its handle, or 0 for a null handler or a name that is taken.
    OKU_WORD create(std::u16string_view name, OKU_HANDLER handler, OKU_WORD context);
    /// Takes it back. An unknown handle is ignored.
    void destroy(OKU_WORD handle);
    /// Calls a service. 0 when there is no such service.
    OKU_WORD call(std::u16string_view name, OKU_WORD param, OKU_WORD extra) const;
    [[nodiscard]] bool has(std::u16string_view name) const;
    /// Number of services that the plugin holds.
    [[nodiscard]] std::size_t pluginServices() const { return names_.size(); }
    /// Drops all services of the plugin.
    void dropPlugin();

private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::u16string_view text) const { return std::hash<std::u16string_view>{}(text); }
    };
    std::unordered_map<std::u16string, Service, Hash, std::equal_to<>> services_;
    std::unordered_map<OKU_WORD, std::u16string> names_;  ///< the plugin's, by handle
    OKU_WORD lastHandle_ = 0;
};

}  // namespace oku
