// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// The windows of the interactive program: the main one, which shows everything, one for each conversation, and one
/// that strangers share when they are many; what is unread in them and who is typing.
#pragma once

#include <map>
#include <QHash>
#include <QSet>
#include <QString>
#include <vector>

#include "messenger/terminal/screen/log_entry.h"

namespace oku::terminal {

class Windows {
public:
    /// So many strangers get a window by writing; the others share one.
    static constexpr qsizetype kMostStrangers = 50;
    /// Whom the shared window stands for. It is no address.
    static const Peer& strangers();

    /// The open conversations, in the order of their numbers: the first one is window 1.
    const std::vector<Peer>& conversations() const { return conversations_; }
    /// The conversation that is seen; nobody in the main window.
    Peer current() const;
    int currentNumber() const { return current_; }
    /// Whom one writes to in the window that is seen: nobody in the main and in the shared one.
    Peer partner() const;

    /// Opens a conversation without showing it; gives its number. An open one keeps its number.
    int open(const Peer& peer);
    bool isOpen(const Peer& peer) const { return numbers_.contains(peer); }
    /// The window, opened without being shown, for what a stranger wrote: his own or the shared one.
    Peer openForStranger(const Peer& peer);
    /// Who is a contact now does not count among the strangers any more.
    void befriend(const Peer& peer) { strangers_.remove(peer); }
    /// False when there is no such window. 0 is the main one.
    bool show(int number);
    /// Closes the conversation that is seen; the main window is shown.
    void closeCurrent();

    int unread(const Peer& peer) const;
    int unreadOfAll() const { return unreadOfAll_; }
    /// The numbers of the windows with something unread, and how much.
    const std::map<int, int>& unreadWindows() const { return unread_; }
    /// For an open conversation.
    void setUnread(const Peer& peer, int count);
    /// The next window behind the current one with something unread; -1 when there is none.
    int nextUnread() const;

    void setTyping(const Peer& peer, bool composing);
    /// Those who are typing, by the order in which they began.
    const std::map<quint64, Peer>& typing() const { return typing_; }
    bool isTyping(const Peer& peer) const { return typingPlaces_.contains(peer); }
    void forgetTyping(const QString& account);

private:
    std::vector<Peer> conversations_;
    QHash<Peer, int> numbers_;
    int current_ = 0;
    QSet<Peer> strangers_;  ///< who have a window because they wrote
    std::map<int, int> unread_;
    int unreadOfAll_ = 0;
    std::map<quint64, Peer> typing_;
    QHash<Peer, quint64> typingPlaces_;
    quint64 lastTyping_ = 0;
};

}  // namespace oku::terminal
