// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/talk_log.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "messenger/terminal/screen/printable.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr std::size_t kLongestLog = 5000;
constexpr QChar kDivider = u'─';

bool countsAsUnread(const LogEntry& entry) {
    return entry.kind == EntryKind::Incoming || entry.kind == EntryKind::Undelivered;
}

}  // namespace

void TalkLog::append(LogEntry entry) {
    if (!entry.time.isValid()) entry.time = QDateTime::currentDateTimeUtc();
    if (entry.shown == Shown::InSight) entry.alsoIn = windows_.current();
    const bool shown = shows(entry);
    if (log_.size() >= kLongestLog) dropOldest();
    log_.push_back(std::move(entry));
    if (shown) display_.appended(log_.back());
    display_.changed();
}

// What is gone from a conversation can be read in its history when it is looked at again.
void TalkLog::dropOldest() {
    if (log_.front().message != 0) historyLoaded_.remove(log_.front().peer);
    log_.pop_front();
}

bool TalkLog::shows(const LogEntry& entry) const {
    const Peer current = windows_.current();
    if (!current.none() && standsIn(entry, current)) return true;
    return (current.none() || oneWindow_) && entry.shown != Shown::ConversationOnly;
}

std::vector<const LogEntry*> TalkLog::entries() const {
    std::vector<const LogEntry*> result;
    for (const LogEntry& entry : log_)
        if (shows(entry)) result.push_back(&entry);
    return result;
}

void TalkLog::tellOf(const Peer& peer, const QString& text, Style style, const QString& mark, Shown shown) {
    LogEntry entry;
    entry.peer = peer;
    entry.text = printable(text, true);
    entry.style = style;
    entry.mark = mark;
    entry.shown = shown;
    append(std::move(entry));
}

Shown TalkLog::whereAsked() const { return windows_.current().none() ? Shown::Both : Shown::ConversationOnly; }

void TalkLog::tell(const QString& text, Style style, const QString& mark) {
    tellOf(windows_.current(), text, style, mark, whereAsked());
}

void TalkLog::tellError(const QString& reason) { tell(reason, Style::Error, QStringLiteral("!")); }

void TalkLog::list(const QString& text, Style style, int hang) {
    LogEntry entry;
    entry.kind = EntryKind::Listing;
    entry.peer = windows_.current();
    entry.text = printable(text, true);
    entry.style = style;
    entry.hang = hang;
    entry.shown = whereAsked();
    append(std::move(entry));
}

void TalkLog::clearWindow() {
    std::erase_if(log_, [this](const LogEntry& entry) { return shows(entry); });
    display_.changed();
}

bool TalkLog::takeHistoryWish(const Peer& peer) {
    if (historyLoaded_.contains(peer)) return false;
    historyLoaded_.insert(peer);
    return true;
}

bool TalkLog::holds(const Message& message) const {
    return std::any_of(log_.begin(), log_.end(),
                       [&](const LogEntry& entry) { return entry.message != 0 && entry.message == message.number; });
}

void TalkLog::putInFront(std::vector<LogEntry> older) {
    if (oneWindow_)
        for (const LogEntry& entry : older) display_.appended(entry);
    log_.insert(log_.begin(), std::make_move_iterator(older.begin()), std::make_move_iterator(older.end()));
}

void TalkLog::divideFromNew(const Peer& peer, int unread) {
    std::erase_if(log_, [&](const LogEntry& entry) { return entry.peer == peer && entry.mark == kDivider; });
    auto first = log_.end();
    while (unread > 0 && first != log_.begin()) {
        --first;
        if (standsIn(*first, peer) && countsAsUnread(*first)) --unread;
    }
    if (first == log_.end() || oneWindow_) return;
    LogEntry divider;
    divider.time = first->time;
    divider.peer = peer;
    divider.mark = kDivider;
    divider.text = say(Text::NewMessages);
    divider.style = Style::Notice;
    divider.shown = Shown::ConversationOnly;
    log_.insert(first, std::move(divider));
}

bool TalkLog::replaceQueued(LogEntry sent) {
    const auto waiting = std::find_if(log_.rbegin(), log_.rend(), [&](const LogEntry& entry) {
        return entry.queued && entry.message == sent.message;
    });
    if (oneWindow_ || waiting == log_.rend()) return false;
    sent.time = waiting->time;
    sent.shown = waiting->shown;
    *waiting = std::move(sent);
    display_.changed();
    return true;
}

void TalkLog::dropQueued(qint64 message) {
    std::erase_if(log_, [&](const LogEntry& entry) { return entry.queued && entry.message == message; });
}

}  // namespace oku::terminal
