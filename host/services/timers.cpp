// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/timers.h"

#include "host/oku/timer.h"
#include "host/record.h"

namespace protolink {

void Timers::create(const std::u16string& id, std::uint32_t milliseconds, CallbackTarget target, bool oneShot) const {
    auto record = makeRecord<OKU_TIMER_RECORD>();
    record.id = id.c_str();
    record.interval = milliseconds;
    record.handler = target.callback;
    record.context = target.context;
    record.oneShot = oneShot;
    host_.call(u"OKU/Timer/Create", toWord(&record));
}

void Timers::destroy(const std::u16string& id) const { host_.call(u"OKU/Timer/Destroy", toWord(id)); }

void Timers::destroyByReference(const std::u16string& id) const {
    auto record = makeRecord<OKU_TIMER_RECORD>();
    record.id = id.c_str();
    host_.call(u"OKU/Timer/Destroy", toWord(&record.id));
}

bool Timers::isTick(OKU_WORD eventRecord) {
    const auto* event = readRecord<OKU_TIMER_EVENT>(eventRecord);
    return event && event->kind == OKU_TIMER_TICK;
}

}  // namespace protolink
