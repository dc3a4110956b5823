// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/commands.h"

#include <vector>

#include "messenger/terminal/talk/command_families.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {

std::span<const CommandRow> commandTable() {
    static const std::vector<CommandRow> rows = [] {
        std::vector<CommandRow> all;
        for (const auto family :
             {helpCommands(), accountCommands(), contactCommands(), talkCommands(), newsCommands(), fileCommands(),
              cardCommands(), dialogCommands(), wireCommands(), settingCommands(), programCommands()})
            all.insert(all.end(), family.begin(), family.end());
        return all;
    }();
    return rows;
}

const CommandRow* findCommand(const QString& name) {
    for (const CommandRow& row : commandTable())
        if (name.compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0) return &row;
    return nullptr;
}

QString Commands::run(const QString& line) {
    const QString text = line.mid(1);
    qsizetype end = 0;
    while (end < text.size() && !text.at(end).isSpace()) ++end;
    const QString name = text.left(end);
    const CommandRow* row = findCommand(name);
    if (row == nullptr) return say(Text::UnknownCommand, name);
    if (row->needsAccount && session_.chosen().jid().isEmpty()) return say(Text::NoAccountYet);
    Arguments arguments(text.mid(end));
    const QString reason = row->run(session_, arguments);
    return reason == say(Text::Usage) ? reason + u' ' + usageOf(*row) : reason;
}

QString takeContact(Session& session, Arguments& arguments, Peer& peer) {
    peer = session.windows().partner();
    const QString text = arguments.word();
    if (text.isEmpty()) return peer.none() ? say(Text::Usage) : QString();
    peer.account = session.chosen().jid();
    return session.contacts().find(peer.account, text, peer.jid);
}

}  // namespace oku::terminal
