// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/conversation_display.h"

#include <utility>

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/marks.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {

ConversationDisplay::ConversationDisplay(const Desk& desk, Conversations& conversations)
    : desk_(desk), conversations_(conversations) {
    const TalkFace& talk = desk.messenger.talk();
    connect(&talk, &TalkFace::messageReceived, this, &ConversationDisplay::onReceived);
    connect(&talk, &TalkFace::messageSent, this, &ConversationDisplay::onSent);
    connect(&talk, &TalkFace::messageQueued, this,
            [this](const QString&, const Message& message) { desk_.log.append(conversations_.entryOf(message)); });
    connect(&talk, &TalkFace::messageStateChanged, this, &ConversationDisplay::onStateChanged);
    connect(&talk, &TalkFace::typingReceived, this, &ConversationDisplay::onTyping);
}

void ConversationDisplay::onReceived(const QString& account, const Message& message) {
    const Peer peer{account, message.contact};
    desk_.windows.setTyping(peer, false);
    const Peer window = conversations_.windowOf(peer);
    if (desk_.windows.current() == window)
        desk_.messenger.talk().markRead(account, message.contact);
    else
        desk_.windows.setUnread(window, desk_.windows.unread(window) + 1);
    desk_.display.contactTouched(peer);
    LogEntry entry = conversations_.entryOf(message);
    if (!(window == peer)) {
        entry.alsoIn = window;
        entry.text = QStringLiteral("<%1> %2").arg(oneLine(peer.jid), entry.text);
    }
    desk_.log.append(std::move(entry));
}

// A message that waited for the login stays where it was written, and is told no second time.
void ConversationDisplay::onSent(const QString&, const Message& message) {
    LogEntry sent = conversations_.entryOf(message);
    if (!desk_.log.replaceQueued(sent)) desk_.log.append(std::move(sent));
}

void ConversationDisplay::onStateChanged(const QString& account, const Message& message) {
    const Peer peer{account, message.contact};
    const bool cancelled = message.state == DeliveryState::cancelled;
    if (cancelled) desk_.log.dropQueued(message.number);
    const bool good = cancelled || message.state == DeliveryState::sent;
    QString text = deliveryText(message, desk_.contacts.nameOf(peer));
    if (!good) text += QStringLiteral(" — ") + say(Text::ResendHint, message.number);
    desk_.log.tellOf(peer, text, good ? Style::Faint : Style::Error, good ? kInformation : kAlarm);
}

void ConversationDisplay::onTyping(const QString& account, const QString& jid, bool composing) {
    const Peer peer{account, jid};
    desk_.windows.setTyping(peer, composing);
    if (desk_.options.oneWindow && composing)
        desk_.log.tellOf(peer, say(Text::IsTyping, desk_.contacts.nameOf(peer)), Style::Faint, kInformation);
    desk_.display.changed();
}

}  // namespace oku::terminal
