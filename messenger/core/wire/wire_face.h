// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "messenger/core/values/log_line.h"

namespace oku {

/// What passes on the accounts' streams, and the log. MessengerFace says what holds for all faces.
class WireFace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Sends raw XML on the account's stream.
    virtual QString sendRaw(const QString& account, const QString& xml) = 0;
    /// Turns the signal xmlSeen() on or off for all accounts.
    virtual void setConsole(bool on) = 0;
    [[nodiscard]] virtual bool console() const = 0;

signals:
    void logged(const oku::LogLine& line);
    /// The console is on: `incoming` tells the direction. Secrets are masked.
    void xmlSeen(const QString& account, bool incoming, const QString& data);
};

}  // namespace oku
