// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

namespace oku {

/// Why a setting of an account cannot have this value, as one line for the user; empty when it can. A key that nobody
/// knows takes any value, as long as a file can hold the key. An invalid value, which removes the setting, always does.
QString settingFault(const QString& key, const QVariant& value);

}  // namespace oku
