// Settings and timers of the host.
#include <algorithm>
#include <array>

#include "host/host.h"
#include "host/oku/settings.h"
#include "host/oku/timer.h"
#include "host/record.h"

namespace {

OKU_SETTINGS_RECORD settingsRecord(OKU_WORD store, const char16_t* key, std::uint32_t type) {
    auto record = makeRecord<OKU_SETTINGS_RECORD>();
    record.key = key;
    record.type = type;
    record.store = store;
    return record;
}

}  // namespace

OKU_WORD Host::settingsInit(const std::u16string& path) const {
    return call(u"OKU/Settings/Init", toWord(path), module_);
}

void Host::settingsRead(OKU_WORD store) const { call(u"OKU/Settings/Read", store); }

void Host::settingsWrite(OKU_WORD store) const { call(u"OKU/Settings/Write", store); }

void Host::settingsDestroy(OKU_WORD store) const { call(u"OKU/Settings/Destroy", store, module_); }

std::int32_t Host::settingsGetInt(OKU_WORD store, const char16_t* key, std::int32_t fallback) const {
    auto record = settingsRecord(store, key, OKU_SETTING_INTEGER);
    return call(u"OKU/Settings/Get", toWord(&record)) ? static_cast<std::int32_t>(record.value) : fallback;
}

std::u16string Host::settingsGetString(OKU_WORD store, const char16_t* key, const std::u16string& fallback) const {
    std::array<char16_t, OKU_SETTING_CAPACITY> buffer{};
    auto record = settingsRecord(store, key, OKU_SETTING_STRING);
    record.value = toWord(buffer.data());
    record.length = OKU_SETTING_CAPACITY;
    if (!call(u"OKU/Settings/Get", toWord(&record))) return fallback.substr(0, OKU_SETTING_CAPACITY - 1);
    // A host that fills the buffer to its last character leaves no room for the NUL.
    return std::u16string(buffer.begin(), std::find(buffer.begin(), buffer.end() - 1, u'\0'));
}

void Host::settingsSetInt(OKU_WORD store, const char16_t* key, std::int32_t value) const {
    auto record = settingsRecord(store, key, OKU_SETTING_INTEGER);
    record.value = value;
    call(u"OKU/Settings/Set", toWord(&record));
}

void Host::settingsSetString(OKU_WORD store, const char16_t* key, const std::u16string& value) const {
    auto record = settingsRecord(store, key, OKU_SETTING_STRING);
    record.value = toWord(value);
    record.length = static_cast<std::uint32_t>(value.size());
    call(u"OKU/Settings/Set", toWord(&record));
}

void Host::timerCreate(const std::u16string& id, std::uint32_t milliseconds, CallbackTarget target,
                       bool oneShot) const {
    auto record = makeRecord<OKU_TIMER_RECORD>();
    record.id = id.c_str();
    record.interval = milliseconds;
    record.handler = target.callback;
    record.context = target.context;
    record.oneShot = oneShot;
    call(u"OKU/Timer/Create", toWord(&record));
}

void Host::timerDestroy(const std::u16string& id) const { call(u"OKU/Timer/Destroy", toWord(id)); }

void Host::timerDestroyByReference(const std::u16string& id) const {
    auto record = makeRecord<OKU_TIMER_RECORD>();
    record.id = id.c_str();
    call(u"OKU/Timer/Destroy", toWord(&record.id));
}
