// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include "host/oku/table.h"

namespace oku {

class EventRegistry;
class PluginQueue;
class ServiceRegistry;

/// The table that the plugin is given. Its functions are static, so they lead to the one host that is current in this
/// process. They may be called on any thread: calls from others than the queue's are carried over. No exception
/// leaves them; what threw counts as 0.
class HostTable {
public:
    /// All three must outlive this object. There is one at a time.
    HostTable(ServiceRegistry& services, EventRegistry& events, PluginQueue& queue);
    ~HostTable();
    HostTable(const HostTable&) = delete;
    HostTable& operator=(const HostTable&) = delete;

    /// Static: the plugin may keep the pointer for as long as it likes. Without a current host every call gives 0.
    static const OKU_FUNCTION_TABLE* table();

    ServiceRegistry& services;
    EventRegistry& events;
    PluginQueue& queue;
};

}  // namespace oku
