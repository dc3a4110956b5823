// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>

#include "messenger/core/values/news.h"

namespace oku {

/// What people tell of themselves beside their presence (tune, mood, place), and the plugin's pop-ups, news of mail
/// among them. MessengerFace says what holds for all faces.
///
/// A contact's tune and mood as the plugin words them stand in its Contact as well.
class NewsFace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Publishes it for the contacts; an empty one takes back what was published. The account must be logged in.
    virtual QString publishTune(const QString& account, const Tune& tune) = 0;
    /// Only moods of moodNames() can be published, with a text or without one.
    virtual QString publishMood(const QString& account, const Mood& mood) = 0;
    /// Only with the fields of kLocationFields.
    virtual QString publishLocation(const QString& account, const Location& location) = 0;

    /// The pop-ups that a click opens, oldest first; at most 32 of them.
    [[nodiscard]] virtual QList<Popup> popups() const = 0;
    /// Does what a click on it does (for news of mail: opens the mail page), and closes it.
    virtual QString openPopup(int number) = 0;
    virtual QString closePopup(int number) = 0;

signals:
    /// A contact, or another client of the account (`from` is its address then), published it; empty: takes it back.
    void tuneReceived(const QString& account, const QString& from, const oku::Tune& tune);
    void moodReceived(const QString& account, const QString& from, const oku::Mood& mood);
    void locationReceived(const QString& account, const QString& from, const oku::Location& location);
    void popupShown(const oku::Popup& popup);
    /// One of popups() is gone: opened, closed, replaced, or too old.
    void popupGone(int number);
};

}  // namespace oku
