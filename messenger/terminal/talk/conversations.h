// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include "messenger/terminal/talk/desk.h"
#include "messenger/terminal/talk/typing_sender.h"

namespace oku::terminal {

/// The conversations that are open: shown, closed, written to.
class Conversations {
public:
    Conversations(const Desk& desk, TypingSender& typing) : desk_(desk), typing_(typing) {}

    /// Opens the conversation and shows it.
    void open(const Peer& peer);
    void close();
    /// False when there is no such window.
    bool show(int number);
    /// Sends a message. Gives the reason of a refusal.
    QString send(const Peer& peer, const QString& text);
    /// The window, open, for what somebody wrote: his own, or the one that strangers share.
    Peer windowOf(const Peer& peer);
    /// The message as it stands in the log.
    [[nodiscard]] LogEntry entryOf(const Message& message) const;

private:
    void loadHistory(const Peer& peer);

    Desk desk_;
    TypingSender& typing_;
};

}  // namespace oku::terminal
