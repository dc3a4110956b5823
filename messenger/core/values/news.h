// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QStringList>

namespace oku {

/// What somebody listens to (XEP-0118). All of them empty: nothing any more.
struct Tune {
    QString artist;
    QString title;
    QString source;  ///< the album, or where else it comes from
    QString track;
    QString uri;
    QString length;  ///< in seconds

    bool operator==(const Tune&) const = default;
    [[nodiscard]] bool isEmpty() const { return *this == Tune(); }
};

/// How somebody feels (XEP-0107). Both empty: not told any more. What comes from others names any mood they like.
struct Mood {
    QString name;
    QString text;

    bool operator==(const Mood&) const = default;
    [[nodiscard]] bool isEmpty() const { return name.isEmpty() && text.isEmpty(); }
};

/// Where somebody is: texts by the names of XEP-0080's elements. Empty: not told any more.
using Location = QMap<QString, QString>;

/// The elements of a location.
inline constexpr std::array kLocationFields = {"accuracy",    "alt",   "area",        "bearing", "building", "country",
                                               "countrycode", "datum", "description", "error",   "floor",    "lat",
                                               "locality",    "lon",   "postalcode",  "region",  "room",     "speed",
                                               "street",      "text",  "timestamp",   "uri"};

/// The moods that can be published, in the order of the alphabet.
QStringList moodNames();

enum class PopupKind { tune, mood, mail, other };
/// The same word as the enumerator's.
QString popupKindWord(PopupKind kind);

/// A pop-up of the plugin. Nothing waits for it.
struct Popup {
    int number = 0;
    PopupKind kind = PopupKind::other;
    QString title;
    QString text;        ///< lines
    QString key;         ///< it takes the place of an older one of this name; may be empty
    bool stays = false;  ///< to be shown until the person has seen it
    bool opens = false;  ///< a click opens something: NewsFace::openPopup(). Only such a one stays known
};

}  // namespace oku

Q_DECLARE_METATYPE(oku::Popup)
