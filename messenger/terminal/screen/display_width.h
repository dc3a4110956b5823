// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// How many columns text takes in a terminal, and how to cut it to a number of columns.
#pragma once

#include <QString>
#include <QStringView>
#include <vector>

namespace oku::terminal {

/// Columns of one code point: 0 for marks and format characters, 2 for East Asian wide ones and emoji, else 1. Control
/// characters count 0: text is passed through `printable` before it is shown.
int codePointWidth(char32_t c);

/// Columns of a text. What terminals draw in one cell (a letter with its marks, an emoji joined by U+200D, an emoji
/// with a skin tone, a pair of regional indicators) is counted once.
int displayWidth(QStringView text);

/// The next place after `at`, or the last one before it, where a cursor may stand: marks stay with their letter. Gives
/// the end or 0 when there is none.
qsizetype nextBoundary(const QString& text, qsizetype at);
qsizetype previousBoundary(const QString& text, qsizetype at);

/// The longest beginning of `text` that fits `columns`, cut between characters that a cursor may stand between.
QString cutToWidth(const QString& text, int columns);

/// `text` in exactly `columns`: filled up with blanks, or cut with an ellipsis at its end.
QString fitToWidth(const QString& text, int columns);

/// Breaks `text` at blanks (inside a word that is longer than a line) into lines of at most `first` columns, then at
/// most `rest` columns. Line feeds break as well. Always gives at least one line.
std::vector<QString> wrapText(const QString& text, int first, int rest);

}  // namespace oku::terminal
