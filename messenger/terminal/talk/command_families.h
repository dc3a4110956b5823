// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QString>
#include <span>

#include "messenger/terminal/screen/log_entry.h"
#include "messenger/terminal/talk/commands.h"

namespace oku::terminal {

/// The families of commands, each with its rows.
std::span<const CommandRow> helpCommands();
std::span<const CommandRow> accountCommands();
std::span<const CommandRow> contactCommands();
std::span<const CommandRow> talkCommands();
std::span<const CommandRow> cardCommands();
std::span<const CommandRow> fileCommands();
std::span<const CommandRow> newsCommands();
std::span<const CommandRow> wireCommands();
std::span<const CommandRow> settingCommands();
std::span<const CommandRow> dialogCommands();
std::span<const CommandRow> programCommands();

/// Arguments that several commands have.
inline constexpr const char* kNothing = "";
inline constexpr const char* kDescription = QT_TRANSLATE_NOOP("Commands", "[OPIS]");
inline constexpr const char* kWho = QT_TRANSLATE_NOOP("Commands", "KTO");
inline constexpr const char* kAnyone = QT_TRANSLATE_NOOP("Commands", "[KTO]");

/// How the command is written.
QString usageOf(const CommandRow& row);

/// The contact that the next word names; in a conversation without a word, the other side. Gives the reason when there
/// is none.
QString takeContact(Session& session, Arguments& arguments, Peer& peer);

/// A setting of an account that a person may want to change.
struct SettingRow {
    const char* key;
    bool number;
    const char* help;
};
std::span<const SettingRow> settingTable();

}  // namespace oku::terminal
