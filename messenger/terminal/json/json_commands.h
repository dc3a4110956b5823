// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// The commands of the JSON mode: one table says how each is written and what it does; see docs/json-protocol.md.
#pragma once

#include <functional>
#include <QByteArray>
#include <QString>
#include <span>
#include <vector>

#include "messenger/core/messenger_face.h"
#include "messenger/terminal/json/json_command.h"

namespace oku::terminal {

/// What a command gives: done, refused with a reason, or answered later.
struct JsonOutcome {
    QString reason = {};
    bool later = false;
};

/// Commands whose answer comes when what they asked for has come.
class JsonWaiting {
public:
    /// The command waits for what `ask` asks for, unless that gives a reason. `what` names that: the information on an
    /// address, or on the account's server where it is empty; the families of commands have words of their own.
    JsonOutcome ask(const JsonCommand& command, const QString& account, const QString& what,
                    const std::function<QString()>& ask);
    /// Those that waited for this, which do so no longer.
    std::vector<JsonCommand> take(const QString& account, const QString& what);
    std::vector<JsonCommand> takeAll();

private:
    struct Waiting {
        JsonCommand command;
        QString account;
        QString what;
    };
    std::vector<Waiting> waiting_;
};

/// What commands work on.
struct JsonDesk {
    MessengerFace& messenger;
    std::function<void(const QByteArray& line)> write;
    JsonWaiting waiting = {};
    bool ending = false;  ///< no command is carried out any more
};

struct JsonCommandRow {
    JsonCommandShape shape;
    bool needsAccount;
    /// `account` is the one that the command named, or the chosen one.
    JsonOutcome (*run)(JsonDesk& desk, const QString& account, const JsonCommand& command);
};

/// All commands, in the order of the protocol's description.
std::span<const JsonCommandRow> jsonCommands();
/// Null when there is none of this name.
const JsonCommandRow* findJsonCommand(const QString& name);

}  // namespace oku::terminal
