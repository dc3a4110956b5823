// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "messenger/core/values/log_line.h"

namespace oku {

class Accounts;
class PluginQueue;
class ServiceRegistry;

/// "OKU/Log": lines for the log, and texts for the user. Passwords of the accounts and secrets in XML are masked.
class LogService : public QObject {
    Q_OBJECT

public:
    /// `verbose`: pass on trace lines too.
    LogService(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, bool verbose,
               QObject* parent = nullptr);
    /// A line of the messenger's own.
    void write(int level, const QString& tag, const QString& text);

signals:
    void logged(const oku::LogLine& line);
    /// `account` is the bare JID of whom the plugin works for, or empty.
    void noticed(const QString& account, const QString& text);

private:
    Accounts& accounts_;
    PluginQueue& queue_;
    bool verbose_;
};

}  // namespace oku
