// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

namespace oku {

/// A row of somebody's card: a section's heading, a field, or a picture whose value is a file that is safe to show.
struct CardRow {
    enum class Kind { field, section, picture };
    Kind kind = Kind::field;
    QString label;
    QString value;  ///< a stranger's text, as it came
};

struct ContactCard {
    QString jid;
    QList<CardRow> rows;
};

/// The fields of the user's own card, in the order in which a form shows them.
inline constexpr std::array kOwnCardFields = {"nick", "name", "surname", "email", "www", "title", "role", "birth"};
inline constexpr int kLongestCardField = 1023;  ///< characters (UTF-16)
using CardFields = QMap<QString, QString>;

struct OwnCard {
    CardFields fields;
    /// What else the card on the server holds, which storing it takes away: elements such as `PHOTO` or `N/MIDDLE`.
    QStringList lost;
};

/// The user's own picture: a PNG of at most 192 by 192 points, for all accounts.
struct OwnPicture {
    QString path;
    QString hash;  ///< SHA-1 of the file, hexadecimal; empty when there is no picture
};

/// A contact's picture, as a PNG of the messenger's own making: it is safe to show.
struct ContactPicture {
    QString jid;
    QString path;
    QString hash;  ///< SHA-1 of what the contact has, hexadecimal; the same for all who have the same picture
};

}  // namespace oku
