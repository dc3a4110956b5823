// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/dialog_prompt.h"

#include <algorithm>
#include <QRegularExpression>
#include <utility>

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/arguments.h"
#include "messenger/terminal/talk/marks.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr qsizetype kPart = 40;        // rows that are shown at a time
constexpr qsizetype kMostTouched = 8;  // changed rows that are told one by one

}  // namespace

DialogPrompt::DialogPrompt(const Desk& desk, SecretPrompt& secret)
    : desk_(desk), secret_(secret), dialogs_(desk.messenger.dialogs()) {
    connect(&dialogs_, &DialogsFace::opened, this, &DialogPrompt::onOpened);
    connect(&dialogs_, &DialogsFace::closed, this, &DialogPrompt::onClosed);
    connect(&dialogs_, &DialogsFace::menuOpened, this,
            [this](int window, quint32, const QList<DialogMenuItem>& items) { onMenu(window, items); });
    connect(&dialogs_, &DialogsFace::changed, this, [this](int window) { touch(window, 0); });
    connect(&dialogs_, &DialogsFace::controlChanged, this, &DialogPrompt::touch);
    connect(&dialogs_, &DialogsFace::rowAdded, this, &DialogPrompt::touch);
    connect(&dialogs_, &DialogsFace::rowsCleared, this, &DialogPrompt::touch);
    connect(&dialogs_, &DialogsFace::refused, this,
            [this](int, const QString& reason) { desk_.log.tellError(reason); });
    telling_.setSingleShot(true);
    connect(&telling_, &QTimer::timeout, this, &DialogPrompt::tellTouched);
}

QString DialogPrompt::title() const {
    const auto window = dialogs_.window(window_);
    if (!window) return say(Text::DialogClosed);
    return oneLine(window->title.isEmpty() ? window->heading : window->title);
}

QString DialogPrompt::enter(int number) {
    const auto window = dialogs_.window(pageOf(dialogs_, number));
    if (!window) return say(Text::DialogNone, number);
    window_ = window->number;
    gone_ = false;
    expecting_ = false;
    show({});
    desk_.display.changed();
    return {};
}

void DialogPrompt::leave() {
    window_ = 0;
    gone_ = false;
    menu_.clear();
    desk_.display.changed();
}

void DialogPrompt::onOpened(int number) {
    const auto window = dialogs_.window(number);
    if (!window) return;
    if (window->child) {
        if (!shown_.contains(number)) touch(number, 0);
        return;
    }
    // Nobody who writes to a contact shall find his line in a window that opened meanwhile.
    if (active() || (expecting_ && !typing_))
        enter(number);
    else
        desk_.log.tellOf({}, say(Text::DialogOpened, number, oneLine(window->title)), Style::Question, kQuestion,
                         Shown::InSight);
}

void DialogPrompt::onClosed(int number) {
    if (menuWindow_ == number) menu_.clear();
    shown_.remove(number);
    if (number != window_) return;
    const QList<int> open = dialogs_.windows();
    const auto next = std::find_if(open.rbegin(), open.rend(),
                                   [&](int other) { return other != number && !dialogs_.window(other)->child; });
    if (next != open.rend()) {
        enter(*next);
        return;
    }
    desk_.log.tell(say(Text::DialogClosed), Style::Faint);
    if (typing_)
        gone_ = true;
    else
        leave();
}

void DialogPrompt::onMenu(int window, const QList<DialogMenuItem>& items) {
    if (pageOf(dialogs_, window) != window_) return;
    menuWindow_ = window;
    menu_ = items;
    desk_.log.list(say(Text::DialogMenu), Style::Heading);
    int number = 0;
    for (const DialogMenuItem& item : items) {
        if (item.separator) continue;
        const QString text = QStringLiteral("%1 %2").arg(++number, 3).arg(oneLine(item.text));
        desk_.log.list(item.enabled ? text : text + u' ' + say(Text::DialogDisabled),
                       item.enabled ? Style::Plain : Style::Faint, 4);
    }
}

void DialogPrompt::touch(int window, quint32 control) {
    if (!active() || pageOf(dialogs_, window) != window_) return;
    if (control == 0)
        textsTouched_ = true;
    else
        touched_.insert({window, control});
    // Together, when all that came with it is there.
    if (!telling_.isActive()) telling_.start(0);
}

void DialogPrompt::tellTouched() {
    const auto touched = std::exchange(touched_, {});
    const bool texts = std::exchange(textsTouched_, false);
    const auto window = dialogs_.window(window_);
    if (!window) return;
    if (touched.size() > kMostTouched || (texts && touched.isEmpty())) {
        desk_.log.tell(say(Text::DialogChanged, title()), Style::Faint);
        return;
    }
    for (const PageRow& row : pageRows(dialogs_, window_)) {
        const QPair<int, quint32> place{row.window, row.control.id};
        if (!touched.contains(place)) continue;
        // A list that fills is told once, until it is looked at.
        if (row.control.kind == ControlKind::list) {
            if (told_.contains(place)) continue;
            told_.insert(place);
        }
        desk_.log.list(rowText(dialogs_, row), Style::Plain, 6);
    }
}

void DialogPrompt::list() {
    for (const int number : dialogs_.windows()) {
        const auto window = dialogs_.window(number);
        if (window->child) continue;
        desk_.log.list(
            QStringLiteral("%1 %2. %3").arg(QChar(number == window_ ? u'>' : u' ')).arg(number).arg(oneLine(window->title)));
    }
    if (dialogs_.windows().isEmpty()) desk_.log.tell(say(Text::DialogNoneOpen));
}

void DialogPrompt::show(const Walk& walk) {
    walk_ = walk;
    const auto window = dialogs_.window(window_);
    if (!window) return;
    if (walk.kind == Walk::Kind::Page) {
        showPage(*window, walk.from);
        return;
    }
    const auto rows = pageRows(dialogs_, window_);
    const PageRow* row = rowAt(rows, walk.number);
    if (!row) return;
    if (walk.kind == Walk::Kind::Rows)
        showRows(*row, walk.from);
    else
        showItems(*row, walk.from);
}

void DialogPrompt::showPage(const DialogWindow& window, qsizetype from) {
    told_.clear();
    desk_.log.list(say(Text::DialogTitle, window.number, title()), Style::Heading);
    for (const QString& text : {window.heading, window.description}) {
        if (!text.isEmpty() && text != window.title) desk_.log.list(QStringLiteral("    ") + text, Style::Plain, 4);
    }
    if (!window.takesInput) desk_.log.list(say(Text::DialogWaits), Style::Notice);
    const auto rows = pageRows(dialogs_, window_);
    shown_.clear();
    for (const PageRow& row : rows) shown_.insert(row.window);
    const auto count = static_cast<qsizetype>(rows.size());
    const qsizetype end = std::min(count, from + kPart);
    for (qsizetype at = from; at < end; ++at) {
        const PageRow& row = rows[static_cast<std::size_t>(at)];
        desk_.log.list(rowText(dialogs_, row), row.control.enabled ? Style::Plain : Style::Faint, 6);
    }
    tellMore(end, count);
    desk_.log.list(window.page ? say(Text::DialogPageHint) : say(Text::DialogHint), Style::Faint);
}

void DialogPrompt::showRows(const PageRow& row, qsizetype from) {
    told_.remove({row.window, row.control.id});
    const qsizetype count = dialogs_.rowCount(row.window, row.control.id);
    desk_.log.list(rowText(dialogs_, row), Style::Heading);
    qsizetype place = from;
    for (const DialogRow& one : dialogs_.rows(row.window, row.control.id, from, kPart))
        desk_.log.list(QStringLiteral("  %1.%2 %3").arg(row.number).arg(++place).arg(listRowText(one)), Style::Plain,
                       6);
    tellMore(place, count);
}

void DialogPrompt::showItems(const PageRow& row, qsizetype from) {
    const QStringList& items = row.control.items;
    desk_.log.list(rowText(dialogs_, row), Style::Heading);
    const qsizetype end = std::min(items.size(), from + kPart);
    for (qsizetype at = from; at < end; ++at) {
        const QChar mark = at == row.control.selection ? u'>' : u' ';
        desk_.log.list(QStringLiteral("  %1 #%2 %3").arg(mark).arg(at + 1).arg(oneLine(items.at(at))), Style::Plain, 6);
    }
    tellMore(end, items.size());
}

void DialogPrompt::tellMore(qsizetype end, qsizetype count) {
    if (end < count) desk_.log.list(say(Text::DialogMore, end, count), Style::Faint);
}

void DialogPrompt::walk(qsizetype by) {
    Walk next = walk_;
    const auto rows = pageRows(dialogs_, window_);
    qsizetype count = static_cast<qsizetype>(rows.size());
    if (const PageRow* row = next.kind == Walk::Kind::Page ? nullptr : rowAt(rows, next.number)) {
        count =
            next.kind == Walk::Kind::Rows ? dialogs_.rowCount(row->window, row->control.id) : row->control.items.size();
    }
    next.from = std::max<qsizetype>(0, next.from + by);
    if (next.from < count) show(next);
}

const PageRow* DialogPrompt::rowAt(const std::vector<PageRow>& rows, int number) const {
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [number](const PageRow& row) { return row.number == number && number != 0; });
    return found == rows.end() ? nullptr : &*found;
}

QString DialogPrompt::submit(const QString& typed) {
    typing_ = false;
    const QString line = typed.trimmed();
    if (std::exchange(gone_, false)) {
        leave();
        return say(Text::DialogLineLost);
    }
    if (!menu_.isEmpty()) return takeFromMenu(line);
    bool known = true;
    if (const QString reason = onSign(line, known); known) return reason;
    static const QRegularExpression shape(QStringLiteral("^(\\d+)(?:\\.(\\d+))?(?:\\s+(.*))?$"),
                                          QRegularExpression::DotMatchesEverythingOption);
    const auto parts = shape.match(line);
    if (!parts.hasMatch()) return say(Text::DialogHint);
    const auto rows = pageRows(dialogs_, window_);
    const PageRow* row = rowAt(rows, parts.captured(1).toInt());
    if (!row) return say(Text::DialogNoRow, parts.captured(1));
    if (parts.hasCaptured(2) && !parts.captured(2).isEmpty())
        return onListRow(*row, parts.captured(2), parts.captured(3));
    return parts.captured(3).isEmpty() ? onNumber(*row) : onRow(*row, parts.captured(3));
}

QString DialogPrompt::takeFromMenu(const QString& line) {
    const auto items = std::exchange(menu_, {});
    bool isNumber = false;
    const int wanted = line.toInt(&isNumber);
    int number = 0;
    for (const DialogMenuItem& item : items) {
        if (!item.separator && ++number == wanted) return dialogs_.takeFromMenu(menuWindow_, item.command);
    }
    return isNumber ? say(Text::DialogNoRow, line) : QString();
}

QString DialogPrompt::onSign(const QString& sign, bool& known) {
    if (sign == QLatin1String("?")) {
        for (const QString& line : say(Text::DialogHelp).split(u'\n')) desk_.log.list(line, Style::Faint, 8);
        return {};
    }
    if (sign == QLatin1String(".")) return show({}), QString();
    if (sign == QLatin1String("+")) return walk(kPart), QString();
    if (sign == QLatin1String("-")) return walk(-kPart), QString();
    if (sign == QLatin1String("!")) return dialogs_.pressReturn(window_, 0);
    if (sign == QLatin1String("x")) return dialogs_.close(window_);
    if (sign == QLatin1String("ok")) return dialogs_.confirm(window_);
    if (sign == QLatin1String("apply")) return dialogs_.apply(window_);
    if (sign == QLatin1String("<")) return leave(), QString();
    known = false;
    return {};
}

QString DialogPrompt::onNumber(const PageRow& row) {
    const DialogControl& control = row.control;
    const int window = row.window;
    switch (control.kind) {
        case ControlKind::button:
            return dialogs_.press(window, control.id);
        case ControlKind::check:
            return dialogs_.setChecked(window, control.id, !control.checked);
        case ControlKind::list:
            return show({Walk::Kind::Rows, row.number, 0}), QString();
        case ControlKind::dropDown:
        case ControlKind::editDropDown:
            return show({Walk::Kind::Items, row.number, std::max<qint64>(0, control.selection / kPart * kPart)}),
                   QString();
        case ControlKind::password:
            secret_.ask(nameOf(control), [this, window, id = control.id](const QString& secret) {
                if (const QString reason = dialogs_.fill(window, id, secret); !reason.isEmpty())
                    desk_.log.tellError(reason);
            });
            return {};
        default:
            desk_.log.list(rowText(dialogs_, row), Style::Plain, 6);
            return say(Text::DialogWrite, row.number);
    }
}

QString DialogPrompt::onRow(const PageRow& row, const QString& value) {
    const DialogControl& control = row.control;
    if (value == QLatin1String("!")) return dialogs_.pressReturn(row.window, control.id);
    if (control.kind == ControlKind::password) return onNumber(row);
    if (control.kind == ControlKind::check) {
        const bool on = value == QLatin1String("on");
        if (!on && value != QLatin1String("off")) return say(Text::DialogHint);
        return dialogs_.setChecked(row.window, control.id, on);
    }
    if (control.takesChoice() && (control.kind == ControlKind::dropDown || value.startsWith(u'#')))
        return chooseItem(row, value);
    if (control.takesText()) return dialogs_.fill(row.window, control.id, Arguments(value).rest());
    return say(Text::DialogHint);
}

QString DialogPrompt::chooseItem(const PageRow& row, const QString& value) {
    const QStringList& items = row.control.items;
    bool isNumber = false;
    const qint64 number = (value.startsWith(u'#') ? value.mid(1) : value).toLongLong(&isNumber);
    const qint64 place = isNumber ? number - 1 : items.indexOf(Arguments(value).rest());
    if (place < 0 || place >= items.size()) return say(Text::DialogNoItem, value);
    return dialogs_.choose(row.window, row.control.id, place);
}

QString DialogPrompt::onListRow(const PageRow& row, const QString& place, const QString& act) {
    if (row.control.kind != ControlKind::list) return say(Text::DialogHint);
    const auto rows = dialogs_.rows(row.window, row.control.id, place.toLongLong() - 1, 1);
    if (rows.isEmpty()) return say(Text::DialogNoRow, QStringLiteral("%1.%2").arg(row.number).arg(place));
    const qint64 number = rows.first().number;
    if (act.isEmpty()) return dialogs_.activateRow(row.window, row.control.id, number);
    if (act == QLatin1String("m")) return dialogs_.openRowMenu(row.window, row.control.id, number);
    return say(Text::DialogHint);
}

}  // namespace oku::terminal
