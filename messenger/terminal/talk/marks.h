// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace oku::terminal {

/// The signs in front of what is told and is no message.
inline const QString kInformation = QStringLiteral("-");
inline const QString kAlarm = QStringLiteral("!");
inline const QString kQuestion = QStringLiteral("?");

}  // namespace oku::terminal
