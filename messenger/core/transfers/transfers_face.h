// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>

#include "messenger/core/values/transfer.h"

namespace oku {

/// Files that come and go. MessengerFace says what holds for all faces.
class TransfersFace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Offers a file to a contact; `path` is the whole path. transferChanged() follows.
    virtual QString sendFile(const QString& account, const QString& to, const QString& path) = 0;
    /// Those that are under way and the last ones that ended, of all accounts, in the order in which they began.
    [[nodiscard]] virtual QList<Transfer> transfers() const = 0;
    /// Ends a transfer that says that it can be cancelled.
    virtual QString cancelTransfer(int number) = 0;

    /// Opens a file that was received whole with the system's program. One that could be run itself is opened only when
    /// the user answers a message box with yes.
    virtual QString openFile(int number) = 0;

    /// The plugin is held until an offer is answered.
    virtual QString answerOffer(int number, OfferReply reply) = 0;
    [[nodiscard]] virtual QList<FileOffer> openOffers() const = 0;

    /// `path` is the whole path; an empty one chooses nothing.
    virtual QString chooseFile(int number, const QString& path) = 0;
    [[nodiscard]] virtual QList<FileQuestion> openFileQuestions() const = 0;

signals:
    /// Also for its beginning, and a few times a second while bytes move.
    void transferChanged(const oku::Transfer& transfer);
    void offerReceived(const oku::FileOffer& offer);
    /// It was answered, or nobody answered in time (`ignore`).
    void offerClosed(int number, oku::OfferReply reply);
    void fileAsked(const oku::FileQuestion& question);
    void fileQuestionClosed(int number);
};

}  // namespace oku
