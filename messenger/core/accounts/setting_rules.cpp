// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/accounts/setting_rules.h"

#include <algorithm>
#include <optional>
#include <QCoreApplication>

#include "messenger/core/storage/settings_format.h"
#include "messenger/core/values/jid_text.h"

namespace oku {
namespace {

struct Rule {
    enum class Kind { number, port, server, address };
    const char* key;
    Kind kind = Kind::number;
    qlonglong least = 0;
    qlonglong most = 1;
};

constexpr qlonglong kLastPort = 65535;

constexpr Rule kRules[] = {
    {"XMPP/User", Rule::Kind::address},
    {"XMPP/Priority", Rule::Kind::number, -128, 127},
    {"XMPP/AuthType", Rule::Kind::number, 0, 3},
    {"XMPP/MessageAsChat"},
    {"XMPP/Serv/Enable"},
    {"XMPP/Serv/Host", Rule::Kind::server},
    {"XMPP/Serv/SSL"},
    {"XMPP/Serv/SSL/Legacy"},
    {"XMPP/Serv/Compress"},
    {"XMPP/Proxy/OKU"},
    {"XMPP/Proxy/Enable"},
    {"XMPP/Proxy/Type", Rule::Kind::number, 0, 3},
    {"XMPP/Proxy/Port", Rule::Kind::port},
    {"XMPP/Proxy/Auth"},
    {"XMPP/Avatar/Enable"},
    {"XMPP/Avatar/SendEnable"},
    {"XMPP/GMail"},
    {"XMPP/GMailLeave"},
    {"XMPP/XEP-118"},
    {"XMPP/XEP-107"},
    {"desc/Protect"},
    {"OKU/SendTyping"},
    {"OKU/PublishTune"},
    {"OKU/PasswordInFile"},
    {"OKU/AllowClearText"},
    {"OKU/FilesOfStrangers"},
    {"OKU/PublishFiles"},
    {"OKU/PublishPort", Rule::Kind::number, 0, kLastPort},
    {"OKU/ContactList"},
    {"OKU/ReachableOnly"},
};

std::optional<qlonglong> wholeNumber(const QVariant& value) {
    bool ok = false;
    const qlonglong number = value.toString().toLongLong(&ok);
    if (value.typeId() == QMetaType::Bool) return value.toBool() ? 1 : 0;
    return ok ? std::optional(number) : std::nullopt;
}

QString outside(const QString& key, qlonglong least, qlonglong most) {
    return QCoreApplication::translate("Settings", "%1 to liczba całkowita od %2 do %3.").arg(key).arg(least).arg(most);
}

bool isWithin(const QVariant& value, qlonglong least, qlonglong most) {
    const auto number = wholeNumber(value);
    return number && *number >= least && *number <= most;
}

/// `host`, `host:port` or `[address]:port`; a bare IPv6 address has more than one colon, and no port.
QString serverFault(const QString& key, const QString& text) {
    const bool bracketed = text.startsWith(u'[');
    const qsizetype colon = text.lastIndexOf(u':');
    if (colon <= text.lastIndexOf(u']') || (!bracketed && text.indexOf(u':') != colon)) return {};
    return isWithin(text.mid(colon + 1), 1, kLastPort)
               ? QString()
               : QCoreApplication::translate("Settings", "Port w %1 to liczba całkowita od 1 do %2.")
                     .arg(key)
                     .arg(kLastPort);
}

}  // namespace

QString settingFault(const QString& key, const QVariant& value) {
    if (!canBeSettingKey(key)) return unusableSettingKey(key);
    const auto* rule = std::find_if(std::begin(kRules), std::end(kRules),
                                    [&](const Rule& one) { return key == QLatin1String(one.key); });
    if (rule == std::end(kRules) || !value.isValid()) return {};
    const QString text = value.toString();
    switch (rule->kind) {
        case Rule::Kind::number:
            return isWithin(value, rule->least, rule->most) ? QString() : outside(key, rule->least, rule->most);
        case Rule::Kind::port:
            return text.isEmpty() || isWithin(value, 1, kLastPort) ? QString() : outside(key, 1, kLastPort);
        case Rule::Kind::server:
            return serverFault(key, text);
        case Rule::Kind::address:
            return looksLikeJid(text) ? QString()
                                      : QCoreApplication::translate("Settings", "%1 to adres konta.").arg(key);
    }
    return {};
}

}  // namespace oku
