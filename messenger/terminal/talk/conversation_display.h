// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include "messenger/terminal/talk/conversations.h"
#include "messenger/terminal/talk/desk.h"

namespace oku::terminal {

/// Messages as they come and go, and who is typing.
class ConversationDisplay : public QObject {
public:
    ConversationDisplay(const Desk& desk, Conversations& conversations);

private:
    void onReceived(const QString& account, const Message& message);
    void onSent(const QString& account, const Message& message);
    void onStateChanged(const QString& account, const Message& message);
    void onTyping(const QString& account, const QString& jid, bool composing);

    Desk desk_;
    Conversations& conversations_;
};

}  // namespace oku::terminal
