// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/news_display.h"

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/marks.h"

namespace oku::terminal {
namespace {

QString tuneText(const Tune& tune) {
    QStringList parts{tune.artist, tune.title, tune.source};
    parts.removeAll(QString());
    return oneLine(parts.join(QStringLiteral(" — ")));
}

QString placeText(const Location& location) {
    QStringList parts;
    for (auto at = location.begin(); at != location.end(); ++at) parts.append(at.key() + u' ' + at.value());
    return oneLine(parts.join(QStringLiteral(", ")));
}

}  // namespace

NewsDisplay::NewsDisplay(const Desk& desk) : desk_(desk) {
    const NewsFace& news = desk.messenger.news();
    connect(&news, &NewsFace::tuneReceived, this, &NewsDisplay::onTune);
    connect(&news, &NewsFace::moodReceived, this, &NewsDisplay::onMood);
    connect(&news, &NewsFace::locationReceived, this, &NewsDisplay::onLocation);
    connect(&news, &NewsFace::popupShown, this, &NewsDisplay::onPopup);
}

void NewsDisplay::onTune(const QString& account, const QString& from, const Tune& tune) {
    if (from == account) tellOwn(account, tuneText(tune), Text::OwnTune, Text::OwnTuneGone);
}

void NewsDisplay::onMood(const QString& account, const QString& from, const Mood& mood) {
    if (from == account)
        tellOwn(account, withDescription(oneLine(mood.name), mood.text), Text::OwnMood, Text::OwnMoodGone);
}

void NewsDisplay::onLocation(const QString& account, const QString& from, const Location& location) {
    const QString text = placeText(location);
    if (from == account) {
        tellOwn(account, text, Text::OwnLocation, Text::OwnLocationGone);
        return;
    }
    const Peer peer{account, from};
    const QString name = desk_.contacts.nameOf(peer);
    desk_.log.tellOf(peer, text.isEmpty() ? say(Text::IsAtNoMore, name) : say(Text::IsAt, name, text), Style::Plain,
                     kInformation);
}

void NewsDisplay::tellOwn(const QString& account, const QString& text, Text told, Text gone) {
    desk_.log.tellOf({account, {}}, text.isEmpty() ? say(gone) : say(told, text), Style::Plain, kInformation);
}

// Tunes and moods are told as what is known of a contact, which comes for each of them as well.
void NewsDisplay::onPopup(const Popup& popup) {
    if (popup.kind == PopupKind::tune || popup.kind == PopupKind::mood) return;
    QStringList lines{popup.title, popup.text};
    if (popup.kind == PopupKind::mail && popup.opens) lines.append(say(Text::MailHint));
    desk_.log.tellOf({}, lines.join(u'\n'), Style::Notice, kAlarm, Shown::InSight);
}

}  // namespace oku::terminal
