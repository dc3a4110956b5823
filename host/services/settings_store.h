// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// One settings file, kept by the host.
#pragma once

#include <cstdint>
#include <string>

#include "host/host.h"

namespace protolink {

/// Read from `open` to `close`. Until it is opened, and with a host that has no settings, reads give the fallbacks.
class SettingsStore {
public:
    explicit SettingsStore(const Host& host) : host_(host) {}

    void open(const std::u16string& path);
    /// Brings what was set to the disk.
    void save() const;
    void close() const;

    /// The value, or `fallback` when the host has none.
    std::int32_t settingsGetInt(const char16_t* key, std::int32_t fallback) const;
    /// A text is cut to what a buffer of the host holds, also when it is the fallback.
    std::u16string settingsGetString(const char16_t* key, const std::u16string& fallback) const;
    void setInt(const char16_t* key, std::int32_t value) const;
    void setString(const char16_t* key, const std::u16string& value) const;

private:
    const Host& host_;
    OKU_WORD storeHandle_ = 0;
};

}  // namespace protolink
