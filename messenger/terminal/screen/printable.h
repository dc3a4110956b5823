// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// Text from outside, made harmless before it is shown.
#pragma once

#include <QString>

namespace oku::terminal {

/// Without what can drive a terminal, show one text as another, hide something in a text or draw over other lines:
/// control characters and the marks that turn the direction of writing become U+FFFD, as does a run of tag characters;
/// other characters that cannot be seen, and marks on a letter beyond the fourth, go. Joiners and variation selectors
/// stay where scripts and emoji need them. A tab becomes a blank. Line feeds stay when `lines` is true, else they show
/// as U+23CE.
QString printable(const QString& text, bool lines = false);

}  // namespace oku::terminal
