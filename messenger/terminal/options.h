// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// The options of the command line.
#pragma once

#include <optional>
#include <QString>
#include <QStringList>
#include <variant>

namespace oku::terminal {

/// What the program ends with.
enum class ExitCode {
    Success = 0,
    Failure = 1,   ///< the messenger could not start or lost its terminal
    BadUsage = 2,  ///< an option or its value is wrong
};

struct Options {
    QString profileDir;
    QString modulePath;
    QString caFile;
    QString account;
    QString status;    ///< a status word; empty: nothing connects by itself
    QString password;  ///< of the account; from the environment, see takePassword()
    bool json = false;
    bool verbose = false;
    bool plain = false;
};

/// The program is to print a text and end well.
struct PrintAndEnd {
    QString text;
};

/// A wrong option: one line with the reason.
struct OptionError {
    QString reason;
};

using ReadOptions = std::variant<Options, PrintAndEnd, OptionError>;

/// `arguments` without the program's name.
ReadOptions readOptions(const QStringList& arguments);

/// The password in OKU_PASSWORD, which is then overwritten and taken out of the environment: no process started from
/// here needs it, and none can read it there. For the start of the program, while it has one thread.
QString takePassword();

/// The text of --help, for 80 columns.
QString optionHelp();

}  // namespace oku::terminal
