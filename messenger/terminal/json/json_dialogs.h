// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// The commands of the JSON mode about the plugin's windows, and what is told of them; see
/// docs/json-protocol.md.
#pragma once

#include <QByteArray>
#include <span>

#include "messenger/core/dialogs/dialogs_face.h"
#include "messenger/terminal/json/json_commands.h"

namespace oku::terminal {

std::span<const JsonCommandRow> jsonDialogCommands();

/// A window with all that is in it; nothing where it is not seen.
QByteArray windowLine(const DialogsFace& dialogs, int window);
QByteArray windowClosedLine(int window);
QByteArray windowChangedLine(const DialogsFace& dialogs, int window);
QByteArray windowControlLine(const DialogsFace& dialogs, int window, quint32 control);
QByteArray windowItemLine(int window, quint32 control, const QString& item);
QByteArray windowNoItemsLine(int window, quint32 control);
QByteArray windowRowLine(int window, quint32 list, const DialogRow& row, bool isNew);
QByteArray windowNoRowsLine(int window, quint32 list);
QByteArray windowMenuLine(int window, quint32 control, const QList<DialogMenuItem>& items);
QByteArray windowFocusLine(int window, quint32 control);
QByteArray pageAppliedLine(int page);
QByteArray windowRefusedLine(int window, const QString& reason);

}  // namespace oku::terminal
