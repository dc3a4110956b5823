// The settings of one account, with the defaults applied.
#pragma once

#include <cstdint>
#include <string>

#include "host/host.h"

/// A view of the account's store in the host. Reads ask the host each time: the user may change a setting at any time.
class AccountSettings {
public:
    void open(const Host& host, const std::u16string& path);
    void save();
    void close();

    std::int32_t getInt(const char16_t* key, std::int32_t fallback) const;
    bool isOn(const char16_t* key, bool fallback) const { return getInt(key, fallback) != 0; }
    /// The text, cut to what a buffer of the host holds, also when it is the fallback.
    std::u16string getString(const char16_t* key, const std::u16string& fallback = {}) const;
    void setInt(const char16_t* key, std::int32_t value) const;
    void setString(const char16_t* key, const std::u16string& value) const;

    /// From now on reads give the defaults and writes do nothing.
    void mute() { host_.mute(); }

private:
    Host host_;
    OKU_WORD storeHandle_ = 0;
};
