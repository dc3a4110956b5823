#include "plugin/account_settings.h"

#include "host/oku/settings.h"

void AccountSettings::open(const Host& host, const std::u16string& path) {
    host_ = host;
    storeHandle_ = host_.settingsInit(path);
    host_.settingsRead(storeHandle_);
}

void AccountSettings::save() { host_.settingsWrite(storeHandle_); }

void AccountSettings::close() { host_.settingsDestroy(storeHandle_); }

std::int32_t AccountSettings::getInt(const char16_t* key, std::int32_t fallback) const {
    return host_.settingsFindInt(storeHandle_, key).value_or(fallback);
}

std::u16string AccountSettings::getString(const char16_t* key, const std::u16string& fallback) const {
    if (auto value = host_.settingsFindString(storeHandle_, key)) return *value;
    return fallback.substr(0, OKU_SETTING_CAPACITY - 1);
}

void AccountSettings::setInt(const char16_t* key, std::int32_t value) const {
    host_.settingsSetInt(storeHandle_, key, value);
}

void AccountSettings::setString(const char16_t* key, const std::u16string& value) const {
    host_.settingsSetString(storeHandle_, key, value);
}
