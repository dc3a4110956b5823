// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include "messenger/terminal/talk/desk.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {

/// Places of contacts, what the own account publishes, and pop-ups. Contacts' tunes and moods stand with the contacts.
class NewsDisplay : public QObject {
public:
    explicit NewsDisplay(const Desk& desk);

private:
    void onTune(const QString& account, const QString& from, const Tune& tune);
    void onMood(const QString& account, const QString& from, const Mood& mood);
    void onLocation(const QString& account, const QString& from, const Location& location);
    void onPopup(const Popup& popup);
    /// What the account's own is now; empty: nothing.
    void tellOwn(const QString& account, const QString& text, Text told, Text gone);

    Desk desk_;
};

}  // namespace oku::terminal
