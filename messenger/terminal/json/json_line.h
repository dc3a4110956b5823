// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// One event of the JSON mode as a line.
#pragma once

#include "messenger/core/values/json_text.h"

namespace oku::terminal {

class JsonLine : public JsonText {
public:
    /// Begins with `event` and, where it is not empty, `account`.
    explicit JsonLine(QStringView event, const QString& account = {}) {
        beginObject();
        put("event", event);
        if (!account.isEmpty()) put("account", account);
    }

    /// The line with its line feed. Nothing can be added after that.
    QByteArray take() && {
        endObject();
        return static_cast<JsonText&&>(*this).take() + '\n';
    }
};

}  // namespace oku::terminal
