#include "plugin/account_settings.h"

void AccountSettings::open(const Host& host, const std::u16string& path) {
    host_ = host;
    storeHandle_ = host_.settingsInit(path);
    host_.settingsRead(storeHandle_);
}

void AccountSettings::save() { host_.settingsWrite(storeHandle_); }

void AccountSettings::close() { host_.settingsDestroy(storeHandle_); }

std::int32_t AccountSettings::getInt(const char16_t* key, std::int32_t fallback) const {
    return host_.settingsGetInt(storeHandle_, key, fallback);
}

std::u16string AccountSettings::getString(const char16_t* key, const std::u16string& fallback) const {
    return host_.settingsGetString(storeHandle_, key, fallback);
}

void AccountSettings::setInt(const char16_t* key, std::int32_t value) const {
    host_.settingsSetInt(storeHandle_, key, value);
}

void AccountSettings::setString(const char16_t* key, const std::u16string& value) const {
    host_.settingsSetString(storeHandle_, key, value);
}
