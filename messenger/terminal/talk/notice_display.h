// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include "messenger/terminal/talk/desk.h"

namespace oku::terminal {

/// What else is told: message boxes, the log, the console, and what contacts and servers say of themselves.
class NoticeDisplay : public QObject {
public:
    explicit NoticeDisplay(const Desk& desk);

    void onLogLine(const LogLine& line);

private:
    void onBox(const MessageBox& box);
    void onXml(const QString& account, bool incoming, const QString& data);
    void onInfo(const QString& account, const ContactInfo& info);
    void onServerInfo(const QString& account, const ServerInfo& info);

    Desk desk_;
};

}  // namespace oku::terminal
