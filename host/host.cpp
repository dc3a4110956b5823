// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/host.h"

#include "host/oku/log.h"
#include "host/record.h"
#include "host/util/format.h"

namespace protolink {

OKU_WORD Host::call(const char16_t* service, OKU_WORD param, OKU_WORD extra) const {
    return table_ && table_->fnCall ? table_->fnCall(service, param, extra) : 0;
}

OKU_WORD Host::createNetService(std::uint32_t netId, const char16_t* shortName, OKU_HANDLER handler,
                                OKU_WORD context) const {
    const std::u16string name = accountServiceName(netId, shortName);
    return table_ && table_->fnCreate ? table_->fnCreate(name.c_str(), handler, context) : 0;
}

void Host::destroyService(OKU_WORD handle) const {
    if (table_ && table_->fnDestroy) table_->fnDestroy(handle);
}

OKU_WORD Host::addHook(const char16_t* event, OKU_HANDLER handler, OKU_WORD context) const {
    return table_ && table_->hookAdd ? table_->hookAdd(event, handler, context) : 0;
}

void Host::removeHook(OKU_WORD handle) const {
    if (table_ && table_->hookRemove) table_->hookRemove(handle);
}

OKU_WORD Host::createEvent(const char16_t* name) const {
    return table_ && table_->evCreate ? table_->evCreate(name) : 0;
}

void Host::destroyEvent(OKU_WORD event) const {
    if (table_ && table_->evDestroy) table_->evDestroy(event);
}

OKU_WORD Host::notifyEvent(OKU_WORD event, OKU_WORD param, OKU_WORD extra) const {
    return event && table_ && table_->evNotify ? table_->evNotify(event, param, extra) : 0;
}

void Host::log(LogLevel level, const char16_t* tag, const std::u16string& text) const {
    auto record = makeRecord<OKU_LOG_RECORD>();
    record.level = static_cast<std::int32_t>(level);
    record.tag = tag;
    record.text = text.c_str();
    call(u"OKU/Log", toWord(&record));
}

void Host::logUser(const std::u16string& text) const { log(static_cast<LogLevel>(OKU_LOG_USER), nullptr, text); }

std::u16string accountServiceName(std::uint32_t netId, const char16_t* shortName) {
    return formatText(u"%s/%d/%s", kProtocolClass, netId, shortName);
}

}  // namespace protolink
