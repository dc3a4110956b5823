// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/boundary/timer_service.h"

#include <algorithm>
#include <limits>

#include "host/oku/timer.h"
#include "messenger/core/boundary/memory_probe.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"

namespace oku {

struct TimerService::Timer {
    quint64 number = 0;  ///< another one for each creation, so that a tick of an earlier timer is told from ours
    QTimer clock;
    OKU_HANDLER handler = nullptr;
    OKU_WORD context = 0;
    bool oneShot = false;
    bool waiting = false;  ///< a tick waits in the queue
};

TimerService::TimerService(ServiceRegistry& services, PluginQueue& queue, QObject* parent)
    : QObject(parent), queue_(queue) {
    services.provide(u"OKU/Timer/Create", [this](OKU_WORD param, OKU_WORD) { return create(param); });
    services.provide(u"OKU/Timer/Destroy", [this](OKU_WORD param, OKU_WORD) { return destroy(param); });
}

TimerService::~TimerService() = default;

void TimerService::dropPlugin() {
    timers_.clear();
    everNamed_.clear();
}

OKU_WORD TimerService::create(OKU_WORD param) {
    const auto* record = recordAt<OKU_TIMER_RECORD>(param);
    const QString name = record ? wideText(record->id) : QString();
    if (name.isEmpty() || !record->handler) return 0;
    auto timer = std::make_unique<Timer>();
    timer->number = ++lastNumber_;
    timer->handler = record->handler;
    timer->context = record->context;
    timer->oneShot = record->oneShot != 0;
    timer->clock.setSingleShot(timer->oneShot);
    timer->clock.setTimerType(Qt::CoarseTimer);
    connect(&timer->clock, &QTimer::timeout, this, [this, name] { fire(name); });
    const auto longest = static_cast<std::uint32_t>(std::numeric_limits<int>::max());
    timer->clock.start(static_cast<int>(std::min(record->interval, longest)));
    everNamed_.insert(name);
    timers_[name] = std::move(timer);
    return 1;
}

void TimerService::fire(const QString& name) {
    Timer& timer = *timers_.at(name);
    if (timer.waiting) return;
    timer.waiting = true;
    queue_.post(PluginQueue::Kind::tick, {}, [this, name, number = timer.number] { tick(name, number); });
}

void TimerService::tick(const QString& name, quint64 number) {
    const auto found = timers_.find(name);
    if (found == timers_.end() || found->second->number != number) return;
    Timer& timer = *found->second;
    timer.waiting = false;
    const OKU_HANDLER handler = timer.handler;
    const OKU_WORD context = timer.context;
    // Before the call: the handler may create the same name anew.
    if (timer.oneShot) timers_.erase(found);
    auto event = makeRecord<OKU_TIMER_EVENT>();
    event.kind = OKU_TIMER_TICK;
    handler(wordOf(&event), 0, context);
}

OKU_WORD TimerService::destroy(OKU_WORD param) { return timers_.erase(nameAt(param)) ? 1 : 0; }

// Two shapes reach Destroy: the name itself, and the address of a word that points to the name. They are told apart by
// what is found there: a name that was ever given to Create is a name; otherwise the memory is taken as an address, and
// counts only when a name that was ever given stands there. Neither step trusts the memory to be readable.
QString TimerService::nameAt(OKU_WORD param) const {
    const auto address = static_cast<std::uintptr_t>(param);
    if (address == 0) return {};
    if (const QString name = knownNameAt(address); !name.isEmpty()) return name;
    std::uintptr_t inner = 0;
    if (address % alignof(std::uintptr_t) != 0 || !readMemory(address, &inner, sizeof inner) || inner == 0) return {};
    return knownNameAt(inner);
}

// Letter by letter up to the first that differs, so that nothing behind a shorter text is read.
QString TimerService::knownNameAt(std::uintptr_t address) const {
    const auto standsThere = [address](const QString& name) {
        for (qsizetype at = 0; at <= name.size(); ++at) {
            char16_t letter = 0;
            const char16_t wanted = at < name.size() ? name[at].unicode() : u'\0';
            const auto place = address + static_cast<std::uintptr_t>(at) * sizeof letter;
            if (!readMemory(place, &letter, sizeof letter) || letter != wanted) return false;
        }
        return true;
    };
    const auto found = std::find_if(everNamed_.begin(), everNamed_.end(), standsThere);
    return found == everNamed_.end() ? QString() : *found;
}

}  // namespace oku
