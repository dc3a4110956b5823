// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/talk/windows.h"

#include <vector>

namespace oku::terminal {

const Peer& Windows::strangers() {
    static const Peer shared{{}, QStringLiteral("*")};
    return shared;
}

Peer Windows::current() const {
    return current_ == 0 ? Peer{} : conversations_[static_cast<std::size_t>(current_ - 1)];
}

Peer Windows::partner() const {
    const Peer seen = current();
    return seen == strangers() ? Peer{} : seen;
}

int Windows::open(const Peer& peer) {
    if (const auto known = numbers_.constFind(peer); known != numbers_.constEnd()) return *known;
    conversations_.push_back(peer);
    const int number = static_cast<int>(conversations_.size());
    numbers_.insert(peer, number);
    return number;
}

Peer Windows::openForStranger(const Peer& peer) {
    if (isOpen(peer)) return peer;
    const bool room = strangers_.size() < kMostStrangers;
    if (room) strangers_.insert(peer);
    const Peer window = room ? peer : strangers();
    open(window);
    return window;
}

bool Windows::show(int number) {
    if (number < 0 || number > static_cast<int>(conversations_.size())) return false;
    current_ = number;
    return true;
}

void Windows::closeCurrent() {
    if (current_ == 0) return;
    const Peer closed = current();
    setUnread(closed, 0);
    strangers_.remove(closed);
    numbers_.remove(closed);
    conversations_.erase(conversations_.begin() + (current_ - 1));
    // Those behind it move up.
    for (int number = current_; number <= static_cast<int>(conversations_.size()); ++number)
        numbers_[conversations_[static_cast<std::size_t>(number - 1)]] = number;
    std::map<int, int> unread;
    for (const auto& [number, count] : unread_) unread.emplace(number > current_ ? number - 1 : number, count);
    unread_ = std::move(unread);
    current_ = 0;
}

int Windows::unread(const Peer& peer) const {
    const auto found = unread_.find(numbers_.value(peer));
    return found == unread_.end() ? 0 : found->second;
}

void Windows::setUnread(const Peer& peer, int count) {
    const auto known = numbers_.constFind(peer);
    if (known == numbers_.constEnd()) return;
    unreadOfAll_ += count - unread(peer);
    if (count > 0)
        unread_[*known] = count;
    else
        unread_.erase(*known);
}

int Windows::nextUnread() const {
    if (unread_.empty()) return -1;
    const auto next = unread_.upper_bound(current_);
    return next == unread_.end() ? unread_.begin()->first : next->first;
}

void Windows::setTyping(const Peer& peer, bool composing) {
    if (const auto place = typingPlaces_.constFind(peer); place != typingPlaces_.constEnd()) {
        typing_.erase(*place);
        typingPlaces_.erase(place);
    }
    if (!composing) return;
    typing_.emplace(++lastTyping_, peer);
    typingPlaces_.insert(peer, lastTyping_);
}

void Windows::forgetTyping(const QString& account) {
    std::vector<Peer> gone;
    for (const auto& [place, peer] : typing_)
        if (peer.account == account) gone.push_back(peer);
    for (const Peer& peer : gone) setTyping(peer, false);
}

}  // namespace oku::terminal
