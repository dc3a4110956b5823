// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// The commands of the JSON mode about the plugin's pages and menus, and what is told of them; see
/// docs/json-protocol.md.
#pragma once

#include <QByteArray>
#include <span>

#include "messenger/core/dialogs/dialogs_face.h"
#include "messenger/core/values/windows.h"
#include "messenger/terminal/json/json_commands.h"

namespace oku::terminal {

std::span<const JsonCommandRow> jsonPageCommands();

/// The pages that the plugin offers; those of properties of one contact, or of all where `jid` is empty.
QByteArray pagesLine(const DialogsFace& dialogs, const QString& account, const QString& jid,
                     const QList<DialogPage>& properties);
QByteArray contactMenuLine(const QString& account, const QString& jid, const QList<MenuItem>& items);

}  // namespace oku::terminal
