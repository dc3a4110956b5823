// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QObject>
#include <QSet>

#include "messenger/terminal/talk/desk.h"

namespace oku::terminal {

/// Cards and pictures in words, and what the user wants to change of his own card.
class CardDisplay : public QObject {
public:
    explicit CardDisplay(const Desk& desk);

    /// Changes of an account's own card that have not been stored yet.
    void change(const QString& account, const QString& field, const QString& text);
    void forget(const QString& account);
    /// Stores them; a second time, once the user has been told what is lost, whatever that is.
    QString store(const QString& account);

private:
    void onCard(const QString& account, const ContactCard& card);
    void onOwnCard(const QString& account, const OwnCard& card);
    void onStored(const QString& account);
    void onLosses(const QString& account, const QStringList& lost);
    void onPicture(const QString& account, const ContactPicture& picture);

    Desk desk_;
    QHash<QString, CardFields> changes_;  ///< by account
    QHash<QString, CardFields> sent_;     ///< by account: what the last store was to change
    QSet<QString> warned_;                ///< accounts whose user was told what storing takes away
};

}  // namespace oku::terminal
