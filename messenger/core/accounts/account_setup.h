// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QVariantMap>

#include "messenger/core/storage/settings_file.h"

namespace oku {

/// The settings file of a further account: the module's base name, an underscore and the account's name, which is its
/// bare JID with what a file name should not hold replaced, and cut where it is too long for one. Another number is put
/// behind it until no file has the name.
QString newAccountPath(const QString& profileDir, const QString& moduleBase, const QString& jid);

/// Writes what makes an account: user (with a resource of its own when the JID has none), password, and safe defaults
/// for what is not set yet: TLS on, compression off.
void setUpAccount(SettingsFile& file, const QString& jid, const QString& password, const QVariantMap& settings);

/// The same for an account that exists: only what is given changes.
void changeAccount(SettingsFile& file, const QString& jid, const QString& password, const QVariantMap& settings);

}  // namespace oku
