// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>

#include "messenger/core/values/message.h"

namespace oku {

/// Messages, their history, and who is typing. MessengerFace says what holds for all faces.
class TalkFace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Writes the message to the history and sends it, or keeps it for the next login. messageSent() or messageQueued()
    /// follows. `number` (may be null) receives the message's number in the history.
    virtual QString sendMessage(const QString& account, const QString& to, const QString& body,
                                MessageKind kind = MessageKind::chat, const QString& subject = {},
                                qint64* number = nullptr) = 0;
    /// Sends a message that is failed or not confirmed once more; it keeps its number.
    virtual QString resendMessage(qint64 number) = 0;
    /// Takes a message back that waits for a login; it goes from the history. messageStateChanged() tells it.
    virtual QString cancelMessage(qint64 number) = 0;
    virtual QString sendTyping(const QString& account, const QString& to, bool composing) = 0;
    /// Sets the contact's count of unread messages to 0.
    virtual void markRead(const QString& account, const QString& jid) = 0;
    /// The newest `limit` messages, oldest first. An empty `with` means all contacts; `search` keeps those whose body
    /// or subject holds all its words or parts of words (case and diacritics don't count).
    [[nodiscard]] virtual QList<Message> history(const QString& account, const QString& with, int limit = 20,
                                                 const QString& search = {}) const = 0;
    /// Writes a conversation to a file (an empty `with`: all of the account) that only its owner can read: as text, or
    /// as JSON where the path ends in ".json". A file that is there already is only replaced with `replace`, for which
    /// the user is to be asked; a link never is.
    virtual QString exportHistory(const QString& account, const QString& with, const QString& path,
                                  bool replace = false) const = 0;

signals:
    /// A message came. It stands in the history already.
    void messageReceived(const QString& account, const oku::Message& message);
    /// A message was handed to the connection.
    void messageSent(const QString& account, const oku::Message& message);
    /// A message waits for the next login.
    void messageQueued(const QString& account, const oku::Message& message);
    /// The delivery state of a message that was sent earlier changed (unconfirmed, failed, sent), or one
    /// that waited was cancelled.
    void messageStateChanged(const QString& account, const oku::Message& message);
    void typingReceived(const QString& account, const QString& jid, bool composing);
};

}  // namespace oku
