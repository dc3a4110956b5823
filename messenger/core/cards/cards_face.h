// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "messenger/core/values/cards.h"

namespace oku {

/// Cards and pictures, of contacts and of the user. MessengerFace says what holds for all faces. What was asked for is
/// told by a signal, at the latest when the connection ends or nobody has answered for a minute.
///
/// An account does one thing at a time with its own card and picture on the server; meanwhile the others are refused.
class CardsFace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The card of a contact, or of anybody: cardReceived() or cardFailed().
    virtual QString requestCard(const QString& account, const QString& jid) = 0;
    /// The user's own card as it is on the server: ownCardReceived() or ownCardFailed(). The plugin tells its end in a
    /// message box.
    virtual QString requestOwnCard(const QString& account) = 0;
    /// Changes these fields of the own card on the server; the others stay. Storing takes away what the card holds
    /// beside its fields: where that is something and `agreed` is false, nothing is stored and ownCardWouldLose() tells
    /// it. Otherwise ownCardStored() or ownCardFailed().
    virtual QString storeOwnCard(const QString& account, const CardFields& changes, bool agreed) = 0;

    [[nodiscard]] virtual OwnPicture ownPicture() const = 0;
    /// Makes the picture in this file the user's own, for all accounts: ownPictureChanged() or ownPictureFailed().
    virtual QString setOwnPicture(const QString& path) = 0;
    /// ownPictureChanged() comes before this returns. What is published on servers stays there.
    virtual QString removeOwnPicture() = 0;
    /// Publishes the own picture on the account's server: ownPicturePublished() or ownPictureRefused().
    virtual QString publishOwnPicture(const QString& account) = 0;
    /// Makes the published picture the user's own: ownPictureChanged(), or ownPictureRefused() or ownPictureFailed().
    virtual QString fetchOwnPicture(const QString& account) = 0;

    /// What is known of a contact's picture; an empty path when there is none.
    [[nodiscard]] virtual ContactPicture picture(const QString& account, const QString& jid) const = 0;

signals:
    void cardReceived(const QString& account, const oku::ContactCard& card);
    void cardFailed(const QString& account, const QString& jid, const QString& reason);
    void ownCardReceived(const QString& account, const oku::OwnCard& card);
    void ownCardStored(const QString& account);
    void ownCardWouldLose(const QString& account, const QStringList& lost);
    void ownCardFailed(const QString& account, const QString& reason);
    /// The own picture is another one, or gone.
    void ownPictureChanged(const oku::OwnPicture& picture);
    /// The file cannot be read as a picture, or not be kept; the picture from before stays.
    void ownPictureFailed(const QString& reason);
    void ownPicturePublished(const QString& account);
    /// The server does not have it, or does not take it.
    void ownPictureRefused(const QString& account, const QString& reason);
    /// A contact has another picture. Only for contacts on the list.
    void pictureChanged(const QString& account, const oku::ContactPicture& picture);
    /// How far something has come, in the plugin's words.
    void progressed(const QString& account, const QString& text);
    /// The plugin works on a user's own card or picture (true) or has finished.
    void busyChanged(bool busy);
};

}  // namespace oku
