// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/settings_store.h"

#include <algorithm>
#include <array>

#include "host/oku/settings.h"
#include "host/record.h"

namespace protolink {

namespace {

OKU_SETTINGS_RECORD settingsRecord(OKU_WORD store, const char16_t* key, std::uint32_t type) {
    auto record = makeRecord<OKU_SETTINGS_RECORD>();
    record.key = key;
    record.type = type;
    record.store = store;
    return record;
}

}  // namespace

void SettingsStore::open(const std::u16string& path) {
    storeHandle_ = host_.call(u"OKU/Settings/Init", toWord(path), host_.module());
    host_.call(u"OKU/Settings/Read", storeHandle_);
}

void SettingsStore::save() const { host_.call(u"OKU/Settings/Write", storeHandle_); }

void SettingsStore::close() const { host_.call(u"OKU/Settings/Destroy", storeHandle_, host_.module()); }

std::int32_t SettingsStore::settingsGetInt(const char16_t* key, std::int32_t fallback) const {
    auto record = settingsRecord(storeHandle_, key, OKU_SETTING_INTEGER);
    return host_.call(u"OKU/Settings/Get", toWord(&record)) ? static_cast<std::int32_t>(record.value) : fallback;
}

std::u16string SettingsStore::settingsGetString(const char16_t* key, const std::u16string& fallback) const {
    std::array<char16_t, OKU_SETTING_CAPACITY> buffer{};
    auto record = settingsRecord(storeHandle_, key, OKU_SETTING_STRING);
    record.value = toWord(buffer.data());
    record.length = OKU_SETTING_CAPACITY;
    if (!host_.call(u"OKU/Settings/Get", toWord(&record))) return fallback.substr(0, OKU_SETTING_CAPACITY - 1);
    // A host that fills the buffer to its last character leaves no room for the NUL.
    return std::u16string(buffer.begin(), std::find(buffer.begin(), buffer.end() - 1, u'\0'));
}

void SettingsStore::setInt(const char16_t* key, std::int32_t value) const {
    auto record = settingsRecord(storeHandle_, key, OKU_SETTING_INTEGER);
    record.value = value;
    host_.call(u"OKU/Settings/Set", toWord(&record));
}

void SettingsStore::setString(const char16_t* key, const std::u16string& value) const {
    auto record = settingsRecord(storeHandle_, key, OKU_SETTING_STRING);
    record.value = toWord(value);
    record.length = static_cast<std::uint32_t>(value.size());
    host_.call(u"OKU/Settings/Set", toWord(&record));
}

}  // namespace protolink
