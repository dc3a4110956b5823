// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/screen/style.h"

#include <array>

#include "messenger/terminal/screen/display_width.h"

namespace oku::terminal {
namespace {

// SGR parameters (ECMA-48) of each style, with colours and without.
struct Look {
    Style style;
    const char* full;
    const char* monochrome;
};

constexpr std::array kLooks = std::to_array<Look>({
    {Style::Plain, "", ""},
    {Style::Faint, "2", "2"},
    {Style::Mine, "36", ""},
    {Style::Theirs, "1;33", "1"},
    {Style::Online, "32", ""},
    {Style::Away, "33", ""},
    {Style::Busy, "31", ""},
    {Style::Offline, "2", "2"},
    {Style::Notice, "35", ""},
    {Style::Error, "1;31", "1"},
    {Style::Question, "1;35", "1"},
    {Style::Heading, "1", "1"},
    {Style::Bar, "97;44", "7"},
    {Style::BarAlert, "1;93;44", "1;7"},
});

constexpr bool inOrder() {
    for (std::size_t at = 0; at < kLooks.size(); ++at)
        if (kLooks[at].style != static_cast<Style>(at)) return false;
    return kLooks.size() == static_cast<std::size_t>(Style::Count);
}
static_assert(inOrder());

}  // namespace

int lineWidth(const Line& line) {
    int width = 0;
    for (const Span& span : line) width += displayWidth(span.text);
    return width;
}

QString lineText(const Line& line) {
    QString text;
    for (const Span& span : line) text += span.text;
    return text;
}

Line cutLine(const Line& line, int columns) {
    Line result;
    for (const Span& span : line) {
        const int width = displayWidth(span.text);
        if (width <= columns) {
            result.push_back(span);
            columns -= width;
            continue;
        }
        if (columns > 0) result.push_back({fitToWidth(span.text, columns), span.style});
        break;
    }
    return result;
}

Colours coloursOfEnvironment() {
    const QByteArray terminal = qgetenv("TERM");
    if (terminal.isEmpty() || terminal == "dumb") return Colours::None;
    return qgetenv("NO_COLOR").isEmpty() ? Colours::Full : Colours::Monochrome;
}

QByteArray paint(const Line& line, Colours colours) {
    QByteArray bytes;
    for (const Span& span : line) {
        const Look& look = kLooks[static_cast<std::size_t>(span.style)];
        const QByteArray sgr = colours == Colours::Full ? look.full : colours == Colours::None ? "" : look.monochrome;
        if (span.column > 0) bytes += "\x1B[" + QByteArray::number(span.column) + 'G';
        if (!sgr.isEmpty()) bytes += "\x1B[" + sgr + 'm';
        bytes += span.text.toUtf8();
        if (!sgr.isEmpty()) bytes += "\x1B[0m";
    }
    return bytes;
}

}  // namespace oku::terminal
