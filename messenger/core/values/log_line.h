// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QString>

namespace oku {

/// One line of the log. Secrets are masked already.
struct LogLine {
    int level = 0;  ///< as OKU_LOG_ in host/oku/log.h: 0 errors, 1 warnings, 2 reconnection, 5 trace, 6 ping
    QString tag;
    QString text;
};

}  // namespace oku

Q_DECLARE_METATYPE(oku::LogLine)
