#include "messenger/terminal/windows.h"

#include <algorithm>

namespace oku::terminal {

Peer Windows::current() const {
    return current_ == 0 ? Peer{} : conversations_[static_cast<std::size_t>(current_ - 1)];
}

int Windows::open(const Peer& peer) {
    const auto found = std::find(conversations_.begin(), conversations_.end(), peer);
    if (found != conversations_.end()) return static_cast<int>(found - conversations_.begin()) + 1;
    conversations_.push_back(peer);
    return static_cast<int>(conversations_.size());
}

bool Windows::show(int number) {
    if (number < 0 || number > static_cast<int>(conversations_.size())) return false;
    current_ = number;
    return true;
}

void Windows::closeCurrent() {
    if (current_ == 0) return;
    conversations_.erase(conversations_.begin() + (current_ - 1));
    current_ = 0;
}

int Windows::unread(const Peer& peer) const {
    const auto found = std::find_if(unread_.begin(), unread_.end(), [&](const Count& one) { return one.peer == peer; });
    return found == unread_.end() ? 0 : found->count;
}

int Windows::unreadOfAll() const {
    int sum = 0;
    for (const Count& one : unread_) sum += one.count;
    return sum;
}

void Windows::setUnread(const Peer& peer, int count) {
    std::erase_if(unread_, [&](const Count& one) { return one.peer == peer; });
    if (count > 0) unread_.push_back({peer, count});
}

int Windows::nextUnread() const {
    const int count = static_cast<int>(conversations_.size());
    for (int step = 1; step <= count; ++step) {
        const int number = (current_ - 1 + step + count) % count + 1;
        if (unread(conversations_[static_cast<std::size_t>(number - 1)]) > 0) return number;
    }
    return -1;
}

void Windows::setTyping(const Peer& peer, bool composing) {
    std::erase(typing_, peer);
    if (composing) typing_.push_back(peer);
}

void Windows::forgetTyping(const QString& account) {
    std::erase_if(typing_, [&](const Peer& peer) { return peer.account == account; });
}

}  // namespace oku::terminal
