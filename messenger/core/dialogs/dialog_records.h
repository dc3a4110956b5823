// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "host/oku/dialogs.h"
#include "messenger/core/dialogs/dialog_windows.h"

/// The records of the plugin's windows, read into values.
namespace oku {

/// Nothing where a control is of a length that none can have, so that the next cannot be found. What a control is that
/// this host does not know is left out.
std::optional<OpenDialog> readWindow(const OKU_WINDOW& record);
/// The plugin's rows; its number is not among what is read.
DialogRow readRow(const OKU_ROW& record);
QList<DialogMenuItem> readMenu(const OKU_POPUP_MENU& record);

/// As the plugin writes several lines: parted by CR and LF.
QString withReturns(const QString& text);
/// A button's text without the "&" before its letter of access.
QString buttonCaption(const QString& text);
/// Another text for one of the window's texts; false for a number that none has.
bool setWindowText(DialogWindow& window, std::uint32_t which, const QString& text);

}  // namespace oku
