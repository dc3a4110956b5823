// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/dialog_view.h"

#include <algorithm>
#include <utility>

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr qsizetype kPart = 40;        // rows that are shown at a time
constexpr qsizetype kMostTouched = 8;  // changed rows that are told one by one

bool isInPart(qsizetype from, qsizetype place) { return place >= from && place < from + kPart; }

}  // namespace

DialogView::DialogView(const Desk& desk) : desk_(desk), dialogs_(desk.messenger.dialogs()) {
    telling_.setSingleShot(true);
    connect(&telling_, &QTimer::timeout, this, &DialogView::tellTouched);
}

void DialogView::look(int window) {
    window_ = window;
    touched_.clear();
    textsTouched_ = false;
    if (window != 0) showPage();
}

void DialogView::showPage() { showPart({}); }

void DialogView::showRows(const PageRow& row, qsizetype from, const QString& wanted) {
    showPart({Walk::Kind::Rows, row.number, wanted, from});
}

void DialogView::showItems(const PageRow& row, const QString& wanted) {
    const qsizetype chosen = wanted.isEmpty() ? std::max<qint64>(0, row.control.selection) : 0;
    showPart({Walk::Kind::Items, row.number, wanted, chosen / kPart * kPart});
}

void DialogView::walk(int parts) {
    Walk next = walk_;
    next.from = std::max<qsizetype>(0, next.from + parts * kPart);
    if (next.from < next.count) showPart(std::move(next));
}

void DialogView::showPart(Walk walk) {
    if (!dialogs_.window(window_)) return;
    if (walk.kind == Walk::Kind::Page) {
        walk_ = showPagePart(std::move(walk));
        return;
    }
    const auto rows = pageRows(dialogs_, window_);
    const PageRow* row = rowNumbered(rows, walk.number);
    if (!row) return;
    walk_ = walk.kind == Walk::Kind::Rows ? showRowsPart(std::move(walk), *row) : showItemsPart(std::move(walk), *row);
}

DialogView::Walk DialogView::showPagePart(Walk walk) {
    const auto window = dialogs_.window(window_);
    title_ = titleOf(*window);
    told_ = {window->heading, window->description, window->takesInput, window->children};
    listsTold_.clear();
    listsTouched_.clear();
    rowsTold_.clear();
    desk_.log.list(say(Text::DialogTitle, window->number, title_), Style::Heading);
    for (const QString& text : {window->heading, window->description}) {
        if (!text.isEmpty() && text != window->title) desk_.log.list(withMargin(text), Style::Plain, 4);
    }
    if (!window->takesInput) desk_.log.list(say(Text::DialogWaits), Style::Notice);
    const auto rows = pageRows(dialogs_, window_);
    walk.count = static_cast<qsizetype>(rows.size());
    const qsizetype end = std::min(walk.count, walk.from + kPart);
    for (qsizetype at = walk.from; at < end; ++at) {
        const PageRow& row = rows[static_cast<std::size_t>(at)];
        const QString text = rowText(dialogs_, row);
        rowsTold_.insert({row.window, row.control.id}, text);
        desk_.log.list(text, row.control.enabled ? Style::Plain : Style::Faint, 6);
    }
    tellMore(end, walk.count);
    desk_.log.list(window->page ? say(Text::DialogPageHint) : say(Text::DialogHint), Style::Faint);
    return walk;
}

DialogView::Walk DialogView::showRowsPart(Walk walk, const PageRow& row) {
    const quint32 list = row.control.id;
    const qsizetype all = dialogs_.rowCount(row.window, list);
    const bool some = !walk.wanted.isEmpty();
    desk_.log.list(rowText(dialogs_, row), Style::Heading);
    // Only a search looks at all of them.
    qsizetype place = some ? 0 : walk.from;
    qsizetype shown = place;
    for (const DialogRow& one : dialogs_.rows(row.window, list, place, some ? all : kPart)) {
        ++place;
        const QString text = listRowText(one);
        if (!text.contains(walk.wanted, Qt::CaseInsensitive)) continue;
        if (isInPart(walk.from, shown++))
            desk_.log.list(QStringLiteral("  %1.%2 ").arg(row.number).arg(place) + text, Style::Plain, 6);
    }
    walk.count = some ? shown : all;
    tellEnd(walk, say(Text::DialogRowsHint, row.number));
    return walk;
}

DialogView::Walk DialogView::showItemsPart(Walk walk, const PageRow& row) {
    desk_.log.list(rowText(dialogs_, row), Style::Heading);
    qsizetype place = 0;
    for (const QString& item : row.control.items) {
        ++place;
        if (!item.contains(walk.wanted, Qt::CaseInsensitive) || !isInPart(walk.from, walk.count++)) continue;
        const QChar mark = place - 1 == row.control.selection ? u'>' : u' ';
        desk_.log.list(QStringLiteral("  %1 #%2 ").arg(mark).arg(place) + oneLine(item), Style::Plain, 6);
    }
    tellEnd(walk, say(Text::DialogItemsHint, row.number));
    return walk;
}

void DialogView::tellEnd(const Walk& walk, const QString& hint) {
    tellMore(std::min(walk.from + kPart, walk.count), walk.count);
    if (walk.count > 0)
        desk_.log.list(hint, Style::Faint);
    else if (!walk.wanted.isEmpty())
        desk_.log.tell(say(Text::DialogNoItem, walk.wanted));
}

void DialogView::tellMore(qsizetype end, qsizetype count) {
    if (end < count) desk_.log.list(say(Text::DialogMore, end, count), Style::Faint);
}

void DialogView::touch(int window, quint32 control) {
    if (window_ == 0 || pageOf(dialogs_, window) != window_) return;
    if (control == 0)
        textsTouched_ = true;
    else
        touched_.insert({window, control});
    // Together, when all that came with it is there.
    if (!telling_.isActive()) telling_.start(0);
}

void DialogView::answer(int window, quint32 control) {
    rowsTold_.remove({window, control});
    touch(window, control);
}

void DialogView::tellTouched() {
    const auto touched = std::exchange(touched_, {});
    const bool texts = std::exchange(textsTouched_, false);
    if (quiet_ || !dialogs_.window(window_)) return;
    if (touched.size() > kMostTouched) {
        desk_.log.tell(say(Text::DialogChanged, title_), Style::Faint);
        return;
    }
    const bool whole = texts && tellTexts();
    tellControls(touched, whole);
    desk_.display.changed();
}

bool DialogView::tellTexts() {
    const auto window = dialogs_.window(window_);
    const Texts before =
        std::exchange(told_, {window->heading, window->description, window->takesInput, window->children});
    title_ = titleOf(*window);
    if (before.children != told_.children) desk_.log.tell(say(Text::DialogChanged, title_), Style::Faint);
    for (const auto& [was, is] : {std::pair(before.heading, told_.heading), {before.description, told_.description}}) {
        if (was != is && !is.isEmpty()) desk_.log.list(withMargin(is), Style::Plain, 4);
    }
    if (before.takesInput != told_.takesInput)
        desk_.log.list(say(told_.takesInput ? Text::DialogGoesOn : Text::DialogWaits), Style::Notice);
    return before.heading != told_.heading || before.description != told_.description;
}

void DialogView::tellControls(const Places& touched, bool withLists) {
    for (const PageRow& row : pageRows(dialogs_, window_)) {
        const QPair<int, quint32> place{row.window, row.control.id};
        const bool wanted = touched.contains(place);
        if (!(row.control.kind == ControlKind::list ? hasNews(place, wanted, withLists) : wanted)) continue;
        const QString text = rowText(dialogs_, row);
        if (std::exchange(rowsTold_[place], text) != text) desk_.log.list(text, Style::Plain, 6);
    }
}

// A list that fills is told when its first rows come, and with the next news of the window.
bool DialogView::hasNews(const QPair<int, quint32>& list, bool touched, bool withLists) {
    if (touched) listsTouched_.insert(list);
    const qsizetype count = dialogs_.rowCount(list.first, list.second);
    const qsizetype before = listsTold_.value(list, 0);
    const bool fills = before > 0 && count > before && !withLists;
    if (!listsTouched_.contains(list) || count == before || fills) return false;
    listsTouched_.remove(list);
    listsTold_.insert(list, count);
    return true;
}

}  // namespace oku::terminal
