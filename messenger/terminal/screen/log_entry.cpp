// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/screen/log_entry.h"

#include <algorithm>
#include <QLocale>

#include "messenger/core/texts.h"
#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/screen/printable.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr int kColumnsForTime = 30;    // narrower windows show no time
constexpr int kColumnsForNames = 56;   // narrower windows have no column of names
constexpr int kColumnsForWriter = 12;  // narrower windows have room for the text only
constexpr int kTimeColumns = 6;
constexpr int kWidestName = 16;
constexpr qsizetype kLongestText = 20000;

int nameColumns(int columns) { return std::clamp(columns / 6, 8, kWidestName); }

QString writer(const LogEntry& entry, const LogLayout& layout) {
    switch (entry.kind) {
        case EntryKind::Incoming:
            return entry.who;
        case EntryKind::Outgoing:
            return layout.conversation ? layout.me : u'→' + entry.who;
        case EntryKind::Information:
        case EntryKind::Listing:
        case EntryKind::Undelivered:
            break;
    }
    return entry.mark;
}

Style writerStyle(const LogEntry& entry) {
    switch (entry.kind) {
        case EntryKind::Incoming:
            return Style::Theirs;
        case EntryKind::Outgoing:
            return Style::Mine;
        case EntryKind::Information:
        case EntryKind::Listing:
        case EntryKind::Undelivered:
            break;
    }
    return entry.style;
}

bool isMessage(const LogEntry& entry) { return entry.kind == EntryKind::Incoming || entry.kind == EntryKind::Outgoing; }

QString alignedRight(const QString& text, int columns) {
    const QString cut = displayWidth(text) > columns ? fitToWidth(text, columns) : text;
    return QString(columns - displayWidth(cut), u' ') + cut;
}

// What stands in front of the first line. Its width is what the other lines are set in by, up to a third of the window.
Line front(const LogEntry& entry, const LogLayout& layout) {
    Line line;
    if (entry.kind == EntryKind::Listing) return line;
    if (layout.columns >= kColumnsForTime)
        line.push_back({entry.time.toLocalTime().toString(QStringLiteral("HH:mm")) + u' ', Style::Faint});
    const QString name = writer(entry, layout);
    if (layout.columns >= kColumnsForNames) {
        line.push_back({alignedRight(name, nameColumns(layout.columns)), writerStyle(entry)});
        line.push_back({QStringLiteral(" │ "), Style::Faint});
    } else if (!name.isEmpty() && layout.columns >= kColumnsForWriter) {
        const QString cut = displayWidth(name) > layout.columns / 2 ? fitToWidth(name, layout.columns / 2) : name;
        line.push_back({cut + QLatin1String(isMessage(entry) ? ": " : " "), writerStyle(entry)});
    }
    return line;
}

QString shownText(const LogEntry& entry, const LogLayout& layout) {
    QString text = entry.text;
    if (text.size() > kLongestText) text = text.left(kLongestText) + u' ' + sayCounted(Text::TextCut, text.size());
    const bool named = layout.manyAccounts && !layout.conversation && !entry.peer.account.isEmpty();
    if (!named || entry.kind == EntryKind::Listing) return text;
    return QStringLiteral("[%1] %2").arg(printable(entry.peer.account.section(u'@', 0, 0)), text);
}

}  // namespace

std::vector<Line> layOut(const LogEntry& entry, const LogLayout& layout) {
    const Line first = front(entry, layout);
    const int taken = lineWidth(first);
    const bool columnsOfNames = layout.columns >= kColumnsForNames;
    const int indent = entry.kind == EntryKind::Listing ? std::min(entry.hang, layout.columns / 2)
                       : columnsOfNames                 ? taken
                                                        : std::min(taken, kTimeColumns);
    const auto texts =
        wrapText(shownText(entry, layout), std::max(1, layout.columns - taken), std::max(1, layout.columns - indent));
    std::vector<Line> lines;
    for (const QString& text : texts) {
        Line line = first;
        if (!lines.empty()) {
            line = {{QString(indent, u' '), Style::Plain}};
            if (columnsOfNames && entry.kind != EntryKind::Listing)
                line = {{QString(indent - 3, u' '), Style::Plain}, {QStringLiteral(" │ "), Style::Faint}};
        }
        line.push_back({text, entry.style});
        lines.push_back(std::move(line));
    }
    return lines;
}

Line dayLine(const QDate& day, int columns) {
    const QLocale locale(language() == Language::Polish ? QLocale::Polish : QLocale::English);
    const QString text = u' ' + locale.toString(day, QStringLiteral("dddd, d MMMM yyyy")) + u' ';
    const int left = std::max(0, std::min(kTimeColumns - 1, columns - displayWidth(text)));
    const int right = std::max(0, columns - left - displayWidth(text));
    return cutLine({{QString(left, u'─') + text + QString(right, u'─'), Style::Faint}}, columns);
}

}  // namespace oku::terminal
