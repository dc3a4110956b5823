// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/conversations.h"

#include <utility>
#include <vector>

#include "messenger/terminal/screen/printable.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr int kHistoryAtOpening = 20;

}  // namespace

void Conversations::open(const Peer& peer) { show(desk_.windows.open(peer)); }

bool Conversations::show(int number) {
    typing_.stop();
    if (!desk_.windows.show(number)) return false;
    const Peer peer = desk_.windows.current();
    if (!peer.none()) {
        if (!desk_.windows.partner().none()) loadHistory(peer);
        desk_.log.divideFromNew(peer, desk_.windows.unread(peer));
        desk_.windows.setUnread(peer, 0);
        desk_.messenger.talk().markRead(peer.account, peer.jid);
        desk_.display.contactTouched(peer);
    }
    desk_.display.changed();
    return true;
}

void Conversations::close() {
    typing_.stop();
    const Peer closed = desk_.windows.current();
    desk_.windows.closeCurrent();
    desk_.display.contactTouched(closed);
    desk_.display.changed();
}

QString Conversations::send(const Peer& peer, const QString& text) {
    typing_.forget();
    return desk_.messenger.talk().sendMessage(peer.account, peer.jid, text);
}

Peer Conversations::windowOf(const Peer& peer) {
    if (!desk_.windows.isOpen(peer) && !desk_.contacts.isContact(peer)) return desk_.windows.openForStranger(peer);
    desk_.windows.open(peer);
    return peer;
}

// What was said before stands above what came since the start, which is in the log already.
void Conversations::loadHistory(const Peer& peer) {
    if (!desk_.log.takeHistoryWish(peer)) return;
    std::vector<LogEntry> older;
    for (const Message& message : desk_.messenger.talk().history(peer.account, peer.jid, kHistoryAtOpening)) {
        if (desk_.log.holds(message)) continue;
        LogEntry entry = entryOf(message);
        entry.shown = Shown::ConversationOnly;
        older.push_back(std::move(entry));
    }
    desk_.log.putInFront(std::move(older));
}

LogEntry Conversations::entryOf(const Message& message) const {
    LogEntry entry;
    const bool incoming = message.direction == Direction::in;
    entry.kind = incoming ? EntryKind::Incoming : EntryKind::Outgoing;
    entry.time = message.time;
    entry.peer = {message.account, message.contact};
    entry.who = desk_.contacts.nameOf(entry.peer);
    entry.message = message.number;
    entry.queued = message.state == DeliveryState::queued;
    QString text = message.body;
    if (text.startsWith(QLatin1String("/me ")))
        text = QStringLiteral("* %1 %2").arg(incoming ? entry.who : message.account.section(u'@', 0, 0), text.mid(4));
    text = withSubjectAndDelay(message, text);
    if (message.failed) {
        // The plugin's words about a message of ours, not the other side's.
        entry.kind = EntryKind::Undelivered;
        entry.mark = QStringLiteral("!");
        text = QStringLiteral("%1: %2").arg(entry.who, text);
    }
    if (entry.queued) text = say(Text::StillQueued, text);
    if (message.state == DeliveryState::unconfirmed) text = say(Text::StillUnconfirmed, message.number, text);
    entry.text = printable(text, true);
    if (message.failed || message.state == DeliveryState::failed) entry.style = Style::Error;
    return entry;
}

}  // namespace oku::terminal
