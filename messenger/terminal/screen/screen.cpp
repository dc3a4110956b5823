// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/screen/screen.h"

#include <algorithm>

#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/screen/printable.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr int kRowsForTitle = 5;
constexpr int kRowsForStatus = 2;
constexpr int kColumnsForScrollHint = 60;  // narrower windows show the number of lines only

// The newest lines of the log from the bottom up: `count` of them above the `scroll` newest. Lines that are not seen
// are not kept, and entries above are not laid out.
class LogTail {
public:
    LogTail(const ScreenContent& content, const LogLayout& layout) : content_(content), layout_(layout) {}

    // Gives the lines from top to bottom, and lowers `scroll` to what there is.
    std::vector<Line> take(int count, int& scroll) {
        const auto wanted = static_cast<std::size_t>(count) + static_cast<std::size_t>(scroll);
        for (auto at = content_.entries.size(); at-- > 0 && lines_.size() < wanted;) addEntry(at);
        const int most = std::max(0, static_cast<int>(lines_.size()) - count);
        scroll = std::min(scroll, most);
        std::vector<Line> result(lines_.rbegin(), lines_.rend());
        result.resize(result.size() - static_cast<std::size_t>(scroll));
        if (result.size() > static_cast<std::size_t>(count)) result.erase(result.begin(), result.end() - count);
        return result;
    }

private:
    void addEntry(std::size_t at) {
        auto lines = layOut(*content_.entries[at], layout_);
        std::move(lines.rbegin(), lines.rend(), std::back_inserter(lines_));
        const QDate day = content_.entries[at]->time.toLocalTime().date();
        if (at == 0 || content_.entries[at - 1]->time.toLocalTime().date() != day)
            lines_.push_back(dayLine(day, layout_.columns));
    }

    const ScreenContent& content_;
    const LogLayout& layout_;
    std::vector<Line> lines_;  // newest first
};

Line padded(const Line& line, int columns, Style style) {
    Line result = cutLine(line, columns);
    const int missing = columns - lineWidth(result);
    if (missing > 0) result.push_back({QString(missing, u' '), style});
    return result;
}

// A row of the log with that of the list in front of it.
Line besidePane(const ScreenContent& content, std::size_t row, Line log, int columns) {
    if (content.paneColumns == 0) return log;
    Line line = row < content.pane.size() ? content.pane[row] : Line{};
    if (content.paneColumns >= columns) return cutLine(line, columns);
    line = padded(line, content.paneColumns, Style::Plain);
    // Terminals differ in how wide some emoji are.
    line.push_back({QStringLiteral("│"), Style::Faint, content.paneColumns + 1});
    std::move(log.begin(), log.end(), std::back_inserter(line));
    return line;
}

// Begins with the first candidate that leaves room for the chosen one.
Line candidateLine(const LineEditor& editor, int columns) {
    QStringList names;
    for (const QString& candidate : editor.candidates()) names.append(u' ' + printable(candidate.trimmed()) + u' ');
    const qsizetype chosen = editor.candidateAt();
    qsizetype from = 0;
    const auto widthToChosen = [&] { return displayWidth(names.mid(from, chosen - from + 1).join(QString())); };
    while (from < chosen && widthToChosen() > columns - 4) ++from;
    Line line;
    if (from > 0) line.push_back({QStringLiteral(" …"), Style::Bar});
    for (qsizetype at = from; at < names.size(); ++at)
        line.push_back({names.at(at), at == chosen ? Style::BarAlert : Style::Bar});
    return line;
}

Line scrolledLine(Line status, int scroll, int columns) {
    if (scroll == 0) return status;
    const QString hint =
        columns < kColumnsForScrollHint ? QStringLiteral("↑ %1").arg(scroll) : sayCounted(Text::ScrolledBack, scroll);
    status.insert(status.begin(), {u' ' + hint + u' ', Style::BarAlert});
    return status;
}

// The last row; sets the cursor.
Line promptLine(const ScreenContent& content, LineEditor& editor, int columns, Frame& frame) {
    const Text search = editor.searchFound() ? Text::SearchPrompt : Text::SearchFailed;
    QString prompt = editor.searching() ? say(search, printable(editor.searchText())) : content.prompt;
    // What is typed into a question for a secret takes no room.
    const int most = editor.secret() ? columns - 1 : columns / 2;
    if (displayWidth(prompt) > most) prompt = fitToWidth(prompt, most);
    const int taken = displayWidth(prompt);
    const EditorView view = editor.view(columns - taken);
    frame.cursorColumn = std::min(taken + view.cursorColumn, columns - 1);
    return {{prompt, Style::Heading}, {view.text, Style::Plain}};
}

}  // namespace

int logColumns(const ScreenSize& size, int paneColumns) {
    return paneColumns == 0 ? size.columns : std::max(1, size.columns - paneColumns - 1);
}

int logRows(const ScreenSize& size) {
    return std::max(0, size.rows - 1 - (size.rows >= kRowsForStatus ? 1 : 0) - (size.rows >= kRowsForTitle ? 1 : 0));
}

Frame composeFrame(const ScreenContent& content, LineEditor& editor, const ScreenSize& size) {
    Frame frame;
    LogLayout layout = content.layout;
    layout.columns = logColumns(size, content.paneColumns);
    frame.scroll = content.scroll;
    if (size.rows >= kRowsForTitle) frame.rows.push_back(padded(content.title, size.columns, Style::Bar));
    const int count = logRows(size);
    auto log = LogTail(content, layout).take(count, frame.scroll);
    log.resize(static_cast<std::size_t>(count));
    for (std::size_t row = 0; row < log.size(); ++row)
        frame.rows.push_back(besidePane(content, row, cutLine(log[row], layout.columns), size.columns));
    if (size.rows >= kRowsForStatus) {
        const Line status = editor.candidates().size() > 1 ? candidateLine(editor, size.columns)
                                                           : scrolledLine(content.status, frame.scroll, size.columns);
        frame.rows.push_back(padded(status, size.columns, Style::Bar));
    }
    frame.rows.push_back(promptLine(content, editor, size.columns, frame));
    frame.cursorRow = static_cast<int>(frame.rows.size()) - 1;
    return frame;
}

QByteArray FramePainter::paintFrame(const Frame& frame) {
    QByteArray bytes;
    if (shown_.size() != frame.rows.size()) {
        bytes += "\x1B[0m\x1B[2J";
        shown_.assign(frame.rows.size(), {});
    }
    for (std::size_t row = 0; row < frame.rows.size(); ++row) {
        QByteArray painted = paint(frame.rows[row], colours_);
        if (painted == shown_[row]) continue;
        // Cleared first: after a full row a terminal's cursor stands on the last column, which clearing would take
        // away.
        bytes += "\x1B[" + QByteArray::number(static_cast<int>(row) + 1) + ";1H\x1B[2K" + painted;
        shown_[row] = std::move(painted);
    }
    const QByteArray cursor =
        "\x1B[" + QByteArray::number(frame.cursorRow + 1) + ';' + QByteArray::number(frame.cursorColumn + 1) + 'H';
    if (bytes.isEmpty() && cursor == cursor_) return {};
    cursor_ = cursor;
    return "\x1B[?25l" + bytes + cursor + "\x1B[?25h";
}

QByteArray enterScreen() {
    // Alternate screen, no autowrap, bracketed paste.
    return "\x1B[?1049h\x1B[?7l\x1B[?2004h\x1B[2J";
}

QByteArray leaveScreen() { return "\x1B[?2004l\x1B[?7h\x1B[0m\x1B[?25h\x1B[?1049l"; }

}  // namespace oku::terminal
