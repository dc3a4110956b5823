// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The settings of one account: one table with the key, the kind and the default of each.
#pragma once

#include <cstdint>
#include <string>

#include "host/services/settings_store.h"
#include "platform/platform.h"
#include "plugin/deployment.h"

namespace protolink {

struct NumberSetting {
    const char16_t* key;
    std::int32_t fallback;
};

struct SwitchSetting {
    const char16_t* key;
    bool fallback;
};

struct TextSetting {
    const char16_t* key;
    const char16_t* fallback;
};

namespace setting {

inline constexpr TextSetting kUuid{u"protoUUID", u""};
inline constexpr TextSetting kUser{u"XMPP/User", u""};
inline constexpr TextSetting kPassword{u"XMPP/Pass", u""};

inline constexpr NumberSetting kDescriptionProtected{u"desc/Protect", 0};
inline constexpr TextSetting kDescription{u"desc/String", u""};
inline constexpr NumberSetting kPriority{u"XMPP/Priority", 0};
inline constexpr NumberSetting kAuthType{u"XMPP/AuthType", 0};
inline constexpr SwitchSetting kMessageAsChat{u"XMPP/MessageAsChat", false};

/// Where received files go; the host replaces what stands between per cent signs.
inline constexpr TextSetting kReceivedFiles{u"XMPP/SI/Path", platform::kPathSeparator == u'/'
                                                                 ? u"%documents%/Odebrane Pliki/%from%/"
                                                                 : u"%documents%\\Odebrane Pliki\\%from%\\"};

inline constexpr SwitchSetting kMail{u"XMPP/GMail", true};
inline constexpr SwitchSetting kKeepMailNotice{u"XMPP/GMailLeave", false};
inline constexpr SwitchSetting kTune{u"XMPP/XEP-118", true};
inline constexpr SwitchSetting kMood{u"XMPP/XEP-107", true};
inline constexpr SwitchSetting kLocation{u"XMPP/XEP-080", true};

inline constexpr TextSetting kAvatarHash{u"AV/Hash", u""};
inline constexpr SwitchSetting kAvatars{u"XMPP/Avatar/Enable", true};
inline constexpr SwitchSetting kSendAvatar{u"XMPP/Avatar/SendEnable", true};

inline constexpr SwitchSetting kOwnServer{u"XMPP/Serv/Enable", false};
inline constexpr TextSetting kServer{u"XMPP/Serv/Host", u""};
inline constexpr SwitchSetting kTls{u"XMPP/Serv/SSL", true};
inline constexpr SwitchSetting kTlsFromTheFirstByte{u"XMPP/Serv/SSL/Legacy", false};
inline constexpr SwitchSetting kCompression{u"XMPP/Serv/Compress", true};

inline constexpr SwitchSetting kHostProxy{u"XMPP/Proxy/OKU", true};
inline constexpr SwitchSetting kOwnProxy{u"XMPP/Proxy/Enable", false};
inline constexpr TextSetting kProxyHost{u"XMPP/Proxy/Host", deployment::kProxyHost};
inline constexpr TextSetting kProxyPort{u"XMPP/Proxy/Port", u"8080"};
inline constexpr NumberSetting kProxyType{u"XMPP/Proxy/Type", 3};
inline constexpr SwitchSetting kProxyLogin{u"XMPP/Proxy/Auth", false};
inline constexpr TextSetting kProxyUser{u"XMPP/Proxy/User", u""};
inline constexpr TextSetting kProxyPassword{u"XMPP/Proxy/Pass", u""};

}  // namespace setting

/// A view of the account's store in the host. Reads ask the host each time: the user may change a setting at any time.
class AccountSettings {
public:
    explicit AccountSettings(const Host& host) : store_(host) {}

    void open(const std::u16string& path) { store_.open(path); }
    void save() const { store_.save(); }
    void close() const { store_.close(); }

    std::int32_t get(const NumberSetting& setting) const {
        return store_.settingsGetInt(setting.key, setting.fallback);
    }
    bool get(const SwitchSetting& setting) const { return store_.settingsGetInt(setting.key, setting.fallback) != 0; }
    std::u16string get(const TextSetting& setting) const {
        return store_.settingsGetString(setting.key, setting.fallback);
    }
    void set(const NumberSetting& setting, std::int32_t value) const { store_.setInt(setting.key, value); }
    void set(const TextSetting& setting, const std::u16string& value) const { store_.setString(setting.key, value); }

private:
    SettingsStore store_;
};

}  // namespace protolink
