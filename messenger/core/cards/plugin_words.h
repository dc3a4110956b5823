// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>

namespace oku {

/// A text of the plugin that only tells how far something has come: "Pobieranie danych...". All others are ends.
inline bool tellsProgress(const QString& text) { return text.endsWith(QStringLiteral("...")); }

/// Nobody in the plugin waits for an end, so the messenger does.
inline constexpr int kCardPatience = 60'000;  // milliseconds

inline QString serverSilent() { return QCoreApplication::translate("Cards", "Serwer nie odpowiedział."); }

}  // namespace oku
