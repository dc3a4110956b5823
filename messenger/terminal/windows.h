// The windows of the interactive program: the main one, which shows everything, and one for each conversation; what is
// unread in them and who is typing.
#pragma once

#include <QString>
#include <vector>

#include "messenger/terminal/log_entry.h"

namespace oku::terminal {

class Windows {
public:
    // The open conversations, in the order of their numbers: the first one is window 1.
    const std::vector<Peer>& conversations() const { return conversations_; }
    // The conversation that is seen; nobody in the main window.
    Peer current() const;
    int currentNumber() const { return current_; }

    // Opens a conversation without showing it; gives its number. An open one keeps its number.
    int open(const Peer& peer);
    // False when there is no such window. 0 is the main one.
    bool show(int number);
    // Closes the conversation that is seen; the main window is shown.
    void closeCurrent();

    int unread(const Peer& peer) const;
    int unreadOfAll() const;
    void setUnread(const Peer& peer, int count);
    // The next window behind the current one with something unread; -1 when there is none.
    int nextUnread() const;

    void setTyping(const Peer& peer, bool composing);
    const std::vector<Peer>& typing() const { return typing_; }
    void forgetTyping(const QString& account);

private:
    struct Count {
        Peer peer;
        int count;
    };

    std::vector<Peer> conversations_;
    int current_ = 0;
    std::vector<Count> unread_;
    std::vector<Peer> typing_;
};

}  // namespace oku::terminal
