// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The settings of one account: one table with the key, the kind, the default and the options page's control of each.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <variant>

#include "host/services/settings_store.h"
#include "platform/platform.h"
#include "plugin/deployment.h"

namespace protolink {

// A setting without a control is none of the user's: the plugin keeps it for itself, or nobody changes it.
struct NumberSetting {
    const char16_t* key;
    std::int32_t fallback;
    std::uint32_t control = 0;
};

/// A number that is the place of an item in a drop-down.
struct ChoiceSetting : NumberSetting {};

struct SwitchSetting {
    const char16_t* key;
    bool fallback;
    std::uint32_t control = 0;
};

struct TextSetting {
    const char16_t* key;
    const char16_t* fallback;
    std::uint32_t control = 0;
};

namespace setting {

inline constexpr TextSetting kUuid{u"protoUUID", u""};
inline constexpr TextSetting kUser{u"XMPP/User", u"", 7000};
inline constexpr TextSetting kPassword{u"XMPP/Pass", u"", 7001};

inline constexpr NumberSetting kDescriptionProtected{u"desc/Protect", 0};
inline constexpr TextSetting kDescription{u"desc/String", u""};
inline constexpr NumberSetting kPriority{u"XMPP/Priority", 0, 6024};
inline constexpr ChoiceSetting kAuthType{{u"XMPP/AuthType", 0, 7030}};
inline constexpr SwitchSetting kMessageAsChat{u"XMPP/MessageAsChat", false, 6017};

/// Where received files go; the host replaces what stands between per cent signs.
inline constexpr TextSetting kReceivedFiles{u"XMPP/SI/Path", platform::kPathSeparator == u'/'
                                                                 ? u"%documents%/Odebrane Pliki/%from%/"
                                                                 : u"%documents%\\Odebrane Pliki\\%from%\\"};

inline constexpr SwitchSetting kMail{u"XMPP/GMail", true, 6015};
inline constexpr SwitchSetting kKeepMailNotice{u"XMPP/GMailLeave", false, 6018};
inline constexpr SwitchSetting kTune{u"XMPP/XEP-118", true, 6019};
inline constexpr SwitchSetting kMood{u"XMPP/XEP-107", true, 6023};
inline constexpr SwitchSetting kLocation{u"XMPP/XEP-080", true};

inline constexpr TextSetting kAvatarHash{u"AV/Hash", u""};
inline constexpr SwitchSetting kAvatars{u"XMPP/Avatar/Enable", true, 7012};
inline constexpr SwitchSetting kSendAvatar{u"XMPP/Avatar/SendEnable", true, 6007};

inline constexpr SwitchSetting kOwnServer{u"XMPP/Serv/Enable", false, 7002};
inline constexpr TextSetting kServer{u"XMPP/Serv/Host", u"", 7007};
inline constexpr SwitchSetting kTls{u"XMPP/Serv/SSL", true, 6000};
inline constexpr SwitchSetting kTlsFromTheFirstByte{u"XMPP/Serv/SSL/Legacy", false, 6013};
inline constexpr SwitchSetting kCompression{u"XMPP/Serv/Compress", true, 6016};

inline constexpr SwitchSetting kHostProxy{u"XMPP/Proxy/OKU", true, 6014};
inline constexpr SwitchSetting kOwnProxy{u"XMPP/Proxy/Enable", false, 7004};
inline constexpr TextSetting kProxyHost{u"XMPP/Proxy/Host", deployment::kProxyHost, 7003};
inline constexpr TextSetting kProxyPort{u"XMPP/Proxy/Port", u"8080", 7008};
inline constexpr ChoiceSetting kProxyType{{u"XMPP/Proxy/Type", 3, 7005}};
inline constexpr SwitchSetting kProxyLogin{u"XMPP/Proxy/Auth", false, 7009};
inline constexpr TextSetting kProxyUser{u"XMPP/Proxy/User", u"", 7010};
inline constexpr TextSetting kProxyPassword{u"XMPP/Proxy/Pass", u"", 7011};

using OnPage = std::variant<const ChoiceSetting*, const NumberSetting*, const SwitchSetting*, const TextSetting*>;

/// What the user changes on the options page, in the order in which the page reads and stores it.
inline constexpr std::array<OnPage, 24> kOnPage{
    &kProxyType,
    &kAuthType,
    &kUser,
    &kPassword,
    &kProxyPort,
    &kProxyHost,
    &kProxyUser,
    &kProxyPassword,
    &kOwnProxy,
    &kProxyLogin,
    &kHostProxy,
    &kAvatars,
    &kSendAvatar,
    &kServer,
    &kOwnServer,
    &kTls,
    &kTlsFromTheFirstByte,
    &kCompression,
    &kMail,
    &kKeepMailNotice,
    &kMessageAsChat,
    &kTune,
    &kMood,
    &kPriority,
};

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
    void set(const SwitchSetting& setting, bool value) const { store_.setInt(setting.key, value ? 1 : 0); }
    void set(const TextSetting& setting, const std::u16string& value) const { store_.setString(setting.key, value); }

private:
    SettingsStore store_;
};

}  // namespace protolink
