// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// How text looks: a meaning for each piece of text, and what a terminal is told for it.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace oku::terminal {

enum class Style {
    Plain,
    Faint,  ///< times, separators, what matters less
    Mine,
    Theirs,
    Online,
    Away,
    Busy,
    Offline,
    Notice,
    Error,
    Question,
    Heading,
    Bar,       ///< the status line and the title
    BarAlert,  ///< unread counts in it
    Count
};

struct Span {
    QString text;
    Style style = Style::Plain;
    int column =
        0;  ///< where it is to stand, from 1, wherever the terminal thinks that it is; 0: behind the one before

    bool operator==(const Span&) const = default;
};

using Line = std::vector<Span>;

/// Columns of a line, its text without styles, and the line cut to a number of columns.
int lineWidth(const Line& line);
QString lineText(const Line& line);
Line cutLine(const Line& line, int columns);

enum class Colours {
    None,        ///< not even bold or reverse: the output is no terminal
    Monochrome,  ///< NO_COLOR: bold, faint and reverse only
    Full
};

/// By the environment: NO_COLOR (set and not empty) and TERM=dumb or none.
Colours coloursOfEnvironment();

/// The line as bytes for a terminal. Each line ends in the terminal's usual look.
QByteArray paint(const Line& line, Colours colours);

}  // namespace oku::terminal
