// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <deque>
#include <QSet>
#include <vector>

#include "messenger/core/values/message.h"
#include "messenger/terminal/screen/log_entry.h"
#include "messenger/terminal/talk/display.h"
#include "messenger/terminal/talk/windows.h"

namespace oku::terminal {

/// All that a session has told, in order, and which of it the window that is seen shows.
class TalkLog {
public:
    /// `oneWindow`: all is shown in one window, whatever conversation is open.
    TalkLog(Display& display, const Windows& windows, bool oneWindow)
        : display_(display), windows_(windows), oneWindow_(oneWindow) {}

    /// What the window that is seen shows.
    [[nodiscard]] std::vector<const LogEntry*> entries() const;

    void append(LogEntry entry);
    /// Something about a contact, or about an account where the peer is nobody.
    void tellOf(const Peer& peer, const QString& text, Style style, const QString& mark, Shown shown = Shown::Both);
    /// An answer, in the window that is seen: it was asked for there.
    void tell(const QString& text, Style style = Style::Plain, const QString& mark = QStringLiteral("-"));
    /// A line of an answer; what does not fit into it is set in by `hang` columns.
    void list(const QString& text, Style style = Style::Plain, int hang = 2);
    void tellError(const QString& reason);
    /// Empties the window that is seen.
    void clearWindow();

    /// Whether the conversation's history has to be put in front; from then on it counts as put there.
    bool takeHistoryWish(const Peer& peer);
    [[nodiscard]] bool holds(const Message& message) const;
    void putInFront(std::vector<LogEntry> older);
    /// Above the first of the unread messages stands a line that says so, until the conversation is shown again.
    void divideFromNew(const Peer& peer, int unread);

    /// A message that waited has been sent: `sent` takes its place. False when it does not stand here as waiting.
    bool replaceQueued(LogEntry sent);
    void dropQueued(qint64 message);

private:
    void dropOldest();
    [[nodiscard]] bool shows(const LogEntry& entry) const;
    [[nodiscard]] Shown whereAsked() const;

    Display& display_;
    const Windows& windows_;
    const bool oneWindow_;
    std::deque<LogEntry> log_;
    QSet<Peer> historyLoaded_;
};

}  // namespace oku::terminal
