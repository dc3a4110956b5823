// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// The screen: title, log, status line and prompt composed to rows, and the bytes that bring a terminal there.
#pragma once

#include <QByteArray>
#include <vector>

#include "messenger/terminal/screen/line_editor.h"
#include "messenger/terminal/screen/log_entry.h"
#include "messenger/terminal/screen/style.h"

namespace oku::terminal {

struct ScreenSize {
    int columns = 80;
    int rows = 24;

    bool operator==(const ScreenSize&) const = default;
};

/// What is to be seen. The entries are borrowed for the call.
struct ScreenContent {
    Line title;
    std::vector<const LogEntry*> entries;
    LogLayout layout;  ///< its columns are set from the size
    int scroll = 0;    ///< lines up from the newest
    Line status;
    QString prompt;
    int paneColumns = 0;     ///< of the list beside the log; all of them: in its place
    std::vector<Line> pane;  ///< its rows from the top
};

struct Frame {
    std::vector<Line> rows;
    int cursorRow = 0;
    int cursorColumn = 0;
    int scroll = 0;  ///< the content's, at most what there is to scroll
};

/// Columns that are left for the log.
int logColumns(const ScreenSize& size, int paneColumns);

/// Rows of the log on a screen of this size.
int logRows(const ScreenSize& size);

Frame composeFrame(const ScreenContent& content, LineEditor& editor, const ScreenSize& size);

/// Brings a terminal from the frame that it shows to the next one, writing only the rows that differ.
class FramePainter {
public:
    explicit FramePainter(Colours colours) : colours_(colours) {}

    /// Nothing when the terminal shows it already.
    QByteArray paintFrame(const Frame& frame);
    /// The next frame is written whole, on a cleared screen.
    void forget() { shown_.clear(); }

private:
    Colours colours_;
    std::vector<QByteArray> shown_;
    QByteArray cursor_;
};

/// What a terminal is told when the program takes it over, and when it leaves.
QByteArray enterScreen();
QByteArray leaveScreen();

}  // namespace oku::terminal
