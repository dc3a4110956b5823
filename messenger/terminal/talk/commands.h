// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <span>

#include "messenger/terminal/screen/line_editor.h"
#include "messenger/terminal/talk/arguments.h"

namespace oku::terminal {

class Session;

/// What a command's argument names; decides what Tab offers.
enum class ArgumentKind {
    None,
    Contact,
    Request,
    Account,
    Setting,
    Command,
    Switch,
    Button,
    Group,
    View,
    CardField,
    PictureAct,
    Dialog,
    File,
    ContactOrFile,
    Received,
    Mood,
    Field,
    Off
};

/// How a command is written, what it does and what completes it.
struct CommandRow {
    const char* name;
    const char* arguments;  ///< as help shows them
    const char* help;
    ArgumentKind first;
    ArgumentKind second;
    bool needsAccount;
    /// Gives the reason why it could not be carried out; an empty text when it was.
    QString (*run)(Session& session, Arguments& arguments);
};

/// All of them, in the order in which help shows them.
std::span<const CommandRow> commandTable();
/// Null when there is none of this name.
const CommandRow* findCommand(const QString& name);

/// The commands of the interactive program.
class Commands {
public:
    explicit Commands(Session& session) : session_(session) {}

    /// Carries a line out that begins with a slash. Gives the reason why it could not be; an empty text when it was.
    QString run(const QString& line);

    /// What Tab offers for the text up to the cursor.
    [[nodiscard]] Completion complete(const QString& text, qsizetype cursor) const;

private:
    Session& session_;
};

}  // namespace oku::terminal
