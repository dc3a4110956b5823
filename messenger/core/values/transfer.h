// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaType>
#include <QString>

#include "messenger/core/values/message.h"

namespace oku {

/// How far a file has come. All behind `running` are ends; `incomplete` is one with fewer bytes than were announced.
enum class TransferState { negotiating, running, done, incomplete, failed, cancelled };

/// The same word as the enumerator's.
QString transferStateWord(TransferState state);
inline bool hasEnded(TransferState state) { return state > TransferState::running; }

/// A file on its way between the account and a contact, or one that was.
struct Transfer {
    int number = 0;
    QString account;
    QString contact;  ///< bare JID
    Direction direction = Direction::in;
    QString name;  ///< as it may be shown: what a contact chose is cleaned
    QString path;  ///< where the file lies, or is being written; empty while that is not known
    QString text;  ///< what the plugin says of it
    TransferState state = TransferState::negotiating;
    qint64 size = -1;  ///< bytes that were announced; -1: unknown
    qint64 position = 0;
    qint64 speed = 0;         ///< bytes a second in the last seconds; 0: unknown
    qint64 secondsLeft = -1;  ///< -1: unknown
    bool cancellable = false;
};

/// Whether it was received to its last byte, so that it can be opened.
inline bool isReceived(const Transfer& transfer) {
    return transfer.direction == Direction::in && transfer.state == TransferState::done;
}

enum class OfferReply { accept, refuse, ignore };

/// The same word as the enumerator's.
QString offerReplyWord(OfferReply reply);

/// A file that somebody offers, until TransfersFace::answerOffer(). All else of the plugin waits for that.
struct FileOffer {
    int number = 0;
    QString account;
    QString contact;   ///< bare JID
    QString name;      ///< as it may be shown
    qint64 size = -1;  ///< bytes, as the contact says; -1: he says none
    int seconds = 0;   ///< after which it is ignored
};

/// A file that the plugin wants to know the path of, until TransfersFace::chooseFile().
struct FileQuestion {
    int number = 0;
    QString account;
    QString title;   ///< may be empty
    QString filter;  ///< pairs of a name and its patterns, parted by "|"
};

}  // namespace oku

Q_DECLARE_METATYPE(oku::Transfer)
