// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/accounts/account_setup.h"

#include <QFile>
#include <QRandomGenerator>

#include "messenger/core/values/jid_text.h"
#include "messenger/core/values/setting_keys.h"

namespace oku {
namespace {

// Of the account's part in a file's name, which takes 255 with what stands before and behind it, for a damaged file
// too.
constexpr qsizetype kMostNameBytes = 100;

const QString kUser = QString::fromUtf16(setting::user);
const QString kPassword = QString::fromUtf16(setting::password);

/// Two programs of one account must not take each other's resource.
QString withResource(const QString& jid) {
    if (!resourceOf(jid).isEmpty()) return jid;
    const quint32 number = QRandomGenerator::system()->bounded(0x10000);
    return bareJid(jid) + QStringLiteral("/OKU-") + QStringLiteral("%1").arg(number, 4, 16, QLatin1Char('0'));
}

void setAll(SettingsFile& file, const QVariantMap& settings) {
    for (auto at = settings.begin(); at != settings.end(); ++at) file.set(at.key(), at.value());
}

}  // namespace

QString newAccountPath(const QString& profileDir, const QString& moduleBase, const QString& jid) {
    QString name;
    for (const QChar letter : bareJid(jid)) {
        const bool plain = letter.isLetterOrNumber() || letter == u'@' || letter == u'.' || letter == u'-';
        name += plain ? letter : QChar(u'-');
    }
    // Letters beyond the first 65536 are none of these, so that there is no pair to be parted.
    name.truncate(kMostNameBytes);
    while (name.toUtf8().size() > kMostNameBytes) name.chop(1);
    const QString stem = profileDir + moduleBase + u'_' + name;
    QString path = stem + QStringLiteral(".config");
    for (int number = 2; QFile::exists(path); ++number) path = QStringLiteral("%1-%2.config").arg(stem).arg(number);
    return path;
}

void setUpAccount(SettingsFile& file, const QString& jid, const QString& password, const QVariantMap& settings) {
    file.set(kUser, withResource(jid));
    const QVariantMap defaults = {{QString::fromUtf16(setting::tls), 1}, {QString::fromUtf16(setting::compression), 0}};
    setAll(file, defaults);
    setAll(file, settings);
    // Last: where it may be kept is among the settings.
    file.set(kPassword, password);
}

void changeAccount(SettingsFile& file, const QString& jid, const QString& password, const QVariantMap& settings) {
    if (!resourceOf(jid).isEmpty()) file.set(kUser, bareJid(jid) + u'/' + resourceOf(jid));
    setAll(file, settings);
    if (!password.isEmpty()) file.set(kPassword, password);
}

}  // namespace oku
