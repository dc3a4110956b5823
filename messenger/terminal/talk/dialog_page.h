// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <vector>

#include "messenger/core/dialogs/dialogs_face.h"

namespace oku::terminal {

/// One row of a window as a page: a control, and the number that a person names it by.
struct PageRow {
    int number = 0;  ///< from 1; 0 for what there is nothing to do with
    int window = 0;  ///< which the control is in: what lies inside a window is part of its page
    DialogControl control;
};

/// All rows of a window: those of what lies inside it first, then its own.
std::vector<PageRow> pageRows(const DialogsFace& dialogs, int window);
/// The one with this number; null where there is none.
const PageRow* rowNumbered(const std::vector<PageRow>& rows, int number);
/// The row in words.
QString rowText(const DialogsFace& dialogs, const PageRow& row);
/// What a person calls the control.
QString nameOf(const DialogControl& control);
/// A row of a list with its fields, in one line.
QString listRowText(const DialogRow& row);
QString titleOf(const DialogWindow& window);
/// Set in, each line of it: nothing that a window says stands where its rows do.
QString withMargin(const QString& text);
/// The window that this one is a part of, itself where it is none.
int pageOf(const DialogsFace& dialogs, int window);

}  // namespace oku::terminal
