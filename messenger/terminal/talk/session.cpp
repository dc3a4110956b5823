// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/session.h"

#include <utility>

#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

bool isCommand(const QString& line) { return line.startsWith(u'/') && !line.startsWith(QLatin1String("//")); }

// Whole lines that were pasted end in a line feed that nobody means.
QString withoutLineFeedsBehind(QString line) {
    while (line.endsWith(u'\n')) line.chop(1);
    return line;
}

// What of a typed line goes to the other side: a second slash in front sends a text that begins with one.
QString textOf(const QString& line) { return line.startsWith(QLatin1String("//")) ? line.mid(1) : line; }

}  // namespace

Session::Session(MessengerFace& messenger, Display& display, SessionOptions options)
    : messenger_(messenger), display_(display), options_(std::move(options)) {
    connect(&messenger, &MessengerFace::finished, this, [this] { display_.ended(); });
}

QString Session::start() {
    if (const QString reason = messenger_.start(); !reason.isEmpty()) return reason;
    log_.tell(say(Text::Welcome), Style::Heading, QStringLiteral("*"));
    for (const Account& one : messenger_.accounts().accounts()) {
        accounts_.takeAsTold(one.jid);
        contactDisplay_.onRosterComplete(one.jid);
    }
    contactView_.read();
    chosen_.start();
    return {};
}

void Session::quit() {
    if (std::exchange(ending_, true)) return;
    log_.tell(say(Text::Ending));
    typing_.stop();
    messenger_.shutdown();
}

void Session::submit(const QString& typed) {
    const QString line = withoutLineFeedsBehind(typed);
    const bool forWindow = !secret_.wanted() && !isCommand(line) && dialogs_.active();
    // The line that was being typed is there no more.
    if (!forWindow || line.trimmed().isEmpty()) dialogs_.typing(false);
    if (secret_.wanted()) {
        secret_.submit(line);
        return;
    }
    if (line.trimmed().isEmpty()) return;
    if (isCommand(line)) {
        if (const QString reason = commands_.run(line); !reason.isEmpty()) log_.tellError(reason);
        display_.changed();
        return;
    }
    if (forWindow) {
        if (const QString reason = dialogs_.submit(line); !reason.isEmpty()) log_.tellError(reason);
        display_.changed();
        return;
    }
    const Peer peer = windows_.partner();
    const QString reason = peer.none() ? say(Text::NoConversation) : conversations_.send(peer, textOf(line));
    if (!reason.isEmpty()) log_.tellError(reason);
}

void Session::typed(const QString& text) {
    dialogs_.typing(!text.isEmpty());
    const Peer peer = windows_.partner();
    const bool composing = !secret_.wanted() && !dialogs_.active() && !peer.none() && !text.isEmpty() &&
                           (!isCommand(text) || text.startsWith(QLatin1String("/me ")));
    if (composing)
        typing_.typing(peer);
    else
        typing_.stop();
}

}  // namespace oku::terminal
