// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QString>

namespace oku {

enum class MessageKind { chat, normal };
enum class Direction { in, out };

/// Where an outgoing message is. `unconfirmed`: it was handed to a connection that then died.
/// `cancelled` is one that was taken back while it waited; it is in no history any more.
enum class DeliveryState { received, queued, sent, unconfirmed, failed, cancelled };

/// The same word as the enumerator's.
QString deliveryStateWord(DeliveryState state);

/// One message, as it stands in the history.
struct Message {
    qint64 number = 0;  ///< its key in the history, unique for the profile
    QString account;    ///< bare JID
    QString contact;    ///< bare JID of the other side
    QString resource;   ///< of the sender, when it is known
    Direction direction = Direction::in;
    QString subject;
    QString body;
    MessageKind kind = MessageKind::chat;
    QDateTime time;     ///< when it came here, or was written here
    QDateTime delayed;  ///< when it was written, for a message that came late; else invalid
    DeliveryState state = DeliveryState::received;
    bool failed = false;  ///< an incoming notice that a message of ours was not delivered
};

}  // namespace oku

Q_DECLARE_METATYPE(oku::Message)
