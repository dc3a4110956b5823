// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/boundary/host_table.h"

#include <atomic>
#include <exception>
#include <functional>
#include <QThread>

#include "messenger/core/boundary/event_registry.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"

namespace oku {
namespace {

std::atomic<HostTable*> currentHost = nullptr;

/// The exception wall, and the way over to the queue's thread.
template <typename Call>
OKU_WORD onHost(Call call) noexcept {
    HostTable* host = currentHost.load();
    if (!host) return 0;
    try {
        if (QThread::currentThread() == host->queue.thread()) return call(*host);
        return host->queue.runFromThread([host, call] { return call(*host); });
    } catch (const std::exception& error) {
        emit host->queue.failed(QString::fromUtf8(error.what()));
    } catch (...) {
        emit host->queue.failed(QStringLiteral("unknown exception"));
    }
    return 0;
}

std::u16string_view view(const char16_t* text) { return text ? std::u16string_view(text) : std::u16string_view(); }

OKU_WORD OKU_CALL create(const char16_t* name, OKU_HANDLER handler, OKU_WORD context) noexcept {
    return onHost([=](HostTable& host) { return host.services.create(view(name), handler, context); });
}

OKU_WORD OKU_CALL destroy(OKU_WORD handle) noexcept {
    return onHost([=](HostTable& host) -> OKU_WORD { return host.services.destroy(handle), 0; });
}

OKU_WORD OKU_CALL call(const char16_t* name, OKU_WORD param, OKU_WORD extra) noexcept {
    return onHost([=](HostTable& host) { return host.services.call(view(name), param, extra); });
}

OKU_WORD OKU_CALL unused() noexcept { return 0; }

OKU_WORD OKU_CALL createEvent(const char16_t* name) noexcept {
    return onHost([=](HostTable& host) { return host.events.createEvent(view(name)); });
}

OKU_WORD OKU_CALL destroyEvent(OKU_WORD event) noexcept {
    return onHost([=](HostTable& host) -> OKU_WORD { return host.events.destroyEvent(event), 0; });
}

OKU_WORD OKU_CALL notify(OKU_WORD event, OKU_WORD param, OKU_WORD extra) noexcept {
    return onHost([=](HostTable& host) { return host.events.notify(event, param, extra); });
}

OKU_WORD OKU_CALL addHook(const char16_t* name, OKU_HANDLER handler, OKU_WORD context) noexcept {
    return onHost([=](HostTable& host) { return host.events.addHook(view(name), handler, context); });
}

OKU_WORD OKU_CALL removeHook(OKU_WORD handle) noexcept {
    return onHost([=](HostTable& host) -> OKU_WORD { return host.events.removeHook(handle), 0; });
}

}  // namespace

HostTable::HostTable(ServiceRegistry& serviceRegistry, EventRegistry& eventRegistry, PluginQueue& pluginQueue)
    : services(serviceRegistry), events(eventRegistry), queue(pluginQueue) {
    currentHost = this;
}

HostTable::~HostTable() {
    HostTable* expected = this;
    currentHost.compare_exchange_strong(expected, nullptr);
}

const OKU_FUNCTION_TABLE* HostTable::table() {
    // The two words that no plugin calls lead to a function all the same, so that a stray call does no harm.
    static const OKU_FUNCTION_TABLE table = {create,
                                             destroy,
                                             call,
                                             reinterpret_cast<OKU_WORD>(&unused),
                                             reinterpret_cast<OKU_WORD>(&unused),
                                             createEvent,
                                             destroyEvent,
                                             notify,
                                             addHook,
                                             removeHook};
    return &table;
}

}  // namespace oku
