// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/dialog_prompt.h"

#include <algorithm>
#include <QRegularExpression>
#include <utility>

#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/arguments.h"
#include "messenger/terminal/talk/marks.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr int kGone = -1;  // looked at while a line is being typed that was meant for a window which has gone

constexpr int kShortestName = 6;

QString atMost(const QString& text, int columns) {
    return displayWidth(text) > columns ? fitToWidth(text, columns) : text;
}

}  // namespace

DialogPrompt::DialogPrompt(const Desk& desk, SecretPrompt& secret)
    : desk_(desk), secret_(secret), dialogs_(desk.messenger.dialogs()), view_(desk) {
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
    connect(&dialogs_, &DialogsFace::applied, this,
            [this](int) { desk_.log.tell(say(Text::DialogApplied), Style::Notice); });
    moving_.setSingleShot(true);
    connect(&moving_, &QTimer::timeout, this, &DialogPrompt::moveOn);
}

bool DialogPrompt::active() const { return view_.window() != 0 && place_ == desk_.windows.current(); }

QString DialogPrompt::title() const {
    const auto window = dialogs_.window(view_.window());
    return window ? titleOf(*window) : say(Text::DialogGone);
}

QString DialogPrompt::enter(int number) {
    const auto window = dialogs_.window(pageOf(dialogs_, number));
    if (!window) return say(Text::DialogNone, number);
    before_.clear();
    stale_ = false;
    lookAt(window->number);
    return {};
}

void DialogPrompt::lookAt(int window) {
    // Nobody shall find his line in a window that he has not seen.
    if (typing_) stale_ = true;
    expecting_ = false;
    menu_.clear();
    place_ = desk_.windows.current();
    view_.look(window);
    desk_.display.changed();
}

void DialogPrompt::leave() {
    view_.look(0);
    stale_ = false;
    menu_.clear();
    before_.clear();
    desk_.display.changed();
}

void DialogPrompt::typing(bool something) {
    typing_ = something;
    if (something)
        expecting_ = false;
    else if (std::exchange(stale_, false))
        moveOn();
}

void DialogPrompt::onOpened(int number) {
    const auto window = dialogs_.window(number);
    if (!window) return;
    if (window->child) {
        touch(number, 0);
    } else if (active() && number != view_.window()) {
        before_.append(view_.window());
        lookAt(number);
    } else if (active() || (expecting_ && !typing_)) {
        lookAt(number);
    } else {
        desk_.log.tellOf({}, say(Text::DialogOpened, number, titleOf(*window)), Style::Question, kQuestion,
                         Shown::InSight);
    }
}

void DialogPrompt::onClosed(int number) {
    if (menuWindow_ == number) menu_.clear();
    if (number != view_.window()) {
        touch(view_.window(), 0);
        return;
    }
    if (typing_ && active()) stale_ = true;
    // Not now: where all of them close, there is none to go to.
    moving_.start(0);
}

void DialogPrompt::moveOn() {
    if (view_.window() == 0 || dialogs_.window(view_.window())) return;
    const bool inSight = active();
    if (inSight && view_.window() != kGone) desk_.log.tell(say(Text::DialogClosed, view_.title()), Style::Faint);
    while (!before_.isEmpty() && !dialogs_.window(before_.last())) before_.removeLast();
    if (inSight && !before_.isEmpty())
        lookAt(before_.takeLast());
    else if (stale_)
        view_.look(kGone);
    else
        leave();
}

void DialogPrompt::onMenu(int window, const QList<DialogMenuItem>& items) {
    if (!active() || pageOf(dialogs_, window) != view_.window()) return;
    stale_ = stale_ || typing_;
    menuWindow_ = window;
    menu_ = items;
    desk_.log.list(say(Text::DialogMenu), Style::Heading);
    int number = 0;
    for (const DialogMenuItem& item : items) {
        if (item.separator) continue;
        const QString text = QStringLiteral("%1 ").arg(++number, 3) + oneLine(item.text);
        desk_.log.list(item.enabled ? text : text + u' ' + say(Text::DialogDisabled),
                       item.enabled ? Style::Plain : Style::Faint, 4);
    }
}

void DialogPrompt::touch(int window, quint32 control) {
    view_.setQuiet(!active());
    view_.touch(window, control);
}

void DialogPrompt::list() {
    for (const int number : dialogs_.windows()) {
        const auto window = dialogs_.window(number);
        if (window->child) continue;
        const QChar mark = number == view_.window() ? u'>' : u' ';
        desk_.log.list(QStringLiteral("%1 %2. ").arg(mark).arg(number) + titleOf(*window));
    }
    if (dialogs_.windows().isEmpty()) desk_.log.tell(say(Text::DialogNoneOpen));
}

QString DialogPrompt::submit(const QString& typed) {
    typing_ = false;
    const QString line = typed.trimmed();
    if (std::exchange(stale_, false) || !dialogs_.window(view_.window())) {
        moveOn();
        return say(Text::DialogLineLost);
    }
    if (!menu_.isEmpty()) return takeFromMenu(line);
    bool known = true;
    if (const QString reason = onSign(line, known); known) return reason;
    static const QRegularExpression shape(QStringLiteral("^(\\d+)(?:\\.(\\d+))?(?:\\s+(.*))?$"),
                                          QRegularExpression::DotMatchesEverythingOption);
    const auto parts = shape.match(line);
    if (!parts.hasMatch()) return say(Text::DialogHint);
    const auto rows = pageRows(dialogs_, view_.window());
    const PageRow* row = rowNumbered(rows, parts.captured(1).toInt());
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
    desk_.log.tell(say(Text::DialogMenuClosed), Style::Faint);
    return isNumber ? say(Text::DialogNoRow, line) : QString();
}

QString DialogPrompt::onSign(const QString& sign, bool& known) {
    const int window = view_.window();
    if (sign == QLatin1String("?")) {
        for (const QString& line : say(Text::DialogHelp).split(u'\n')) desk_.log.list(line, Style::Faint, 13);
        return {};
    }
    if (sign == QLatin1String(".")) return view_.showPage(), QString();
    if (sign == QLatin1String("+")) return view_.walk(1), QString();
    if (sign == QLatin1String("-")) return view_.walk(-1), QString();
    if (sign == QLatin1String("!")) return dialogs_.pressReturn(window, 0);
    if (sign == QLatin1String("x")) return dialogs_.close(window);
    if (sign == QLatin1String("ok")) return dialogs_.confirm(window);
    if (sign == QLatin1String("apply")) return dialogs_.apply(window);
    if (sign == QLatin1String("<")) return leave(), QString();
    known = false;
    return {};
}

QString DialogPrompt::onNumber(const PageRow& row) {
    const DialogControl& control = row.control;
    switch (control.kind) {
        case ControlKind::button:
            return dialogs_.press(row.window, control.id);
        case ControlKind::check:
            return changed(row, dialogs_.setChecked(row.window, control.id, !control.checked));
        case ControlKind::list:
            return view_.showRows(row, 0), QString();
        case ControlKind::dropDown:
        case ControlKind::editDropDown:
            return view_.showItems(row), QString();
        case ControlKind::password:
            return askSecret(row);
        default:
            desk_.log.list(rowText(dialogs_, row), Style::Plain, 6);
            if (!control.readOnly) desk_.log.list(say(Text::DialogWrite, row.number), Style::Faint);
            return {};
    }
}

// A stranger may have called the field what the messenger's own questions are called, so whose it is stands in front.
QString DialogPrompt::askSecret(const PageRow& row) {
    const PageRow asked = row;
    const int room = std::max(kShortestName, desk_.display.columns() / 3);
    QString name = nameOf(row.control);
    while (name.endsWith(u':')) name.chop(1);
    const QString question = atMost(view_.title(), room) + QStringLiteral(": ") + atMost(name, room);
    secret_.ask(question, [this, asked](const QString& secret) {
        const QString reason = changed(asked, dialogs_.fill(asked.window, asked.control.id, secret));
        if (!reason.isEmpty()) desk_.log.tellError(reason);
    });
    return {};
}

QString DialogPrompt::onRow(const PageRow& row, const QString& value) {
    const DialogControl& control = row.control;
    if (value == QLatin1String("!")) return dialogs_.pressReturn(row.window, control.id);
    if (control.kind == ControlKind::list) return onList(row, value);
    const QString text = Arguments(value).rest();
    if (control.kind == ControlKind::password) {
        if (text.isEmpty()) return changed(row, dialogs_.fill(row.window, control.id, {}));
        desk_.log.tell(say(Text::DialogSecret));
        return askSecret(row);
    }
    if (control.kind == ControlKind::check) {
        const bool on = value == QLatin1String("on");
        if (!on && value != QLatin1String("off")) return say(Text::DialogCheckHint, row.number);
        return changed(row, dialogs_.setChecked(row.window, control.id, on));
    }
    if (control.takesChoice() && (control.kind == ControlKind::dropDown || value.startsWith(u'#')))
        return chooseItem(row, value);
    if (control.takesText()) return changed(row, dialogs_.fill(row.window, control.id, text));
    return say(Text::DialogHint);
}

// Exactly what was typed, else the one choice that it is a part of.
QString DialogPrompt::chooseItem(const PageRow& row, const QString& value) {
    const QStringList& items = row.control.items;
    const QString wanted = Arguments(value).rest();
    bool isNumber = false;
    const qint64 number = (value.startsWith(u'#') ? value.mid(1) : value).toLongLong(&isNumber);
    qint64 place = isNumber ? number - 1 : items.indexOf(wanted);
    if (!isNumber && place < 0) {
        const QStringList similar = items.filter(wanted, Qt::CaseInsensitive);
        if (similar.size() > 1) return view_.showItems(row, wanted), QString();
        if (similar.size() == 1) place = items.indexOf(similar.first());
    }
    if (place < 0 || place >= items.size()) return say(Text::DialogNoItem, value);
    return changed(row, dialogs_.choose(row.window, row.control.id, place));
}

QString DialogPrompt::changed(const PageRow& row, const QString& reason) {
    if (reason.isEmpty()) view_.answer(row.window, row.control.id);
    return reason;
}

QString DialogPrompt::onList(const PageRow& row, const QString& value) {
    if (!value.startsWith(u'#')) return view_.showRows(row, 0, Arguments(value).rest()), QString();
    const qsizetype place = value.mid(1).toLongLong();
    if (place < 1 || place > dialogs_.rowCount(row.window, row.control.id))
        return say(Text::DialogNoRow, QStringLiteral("%1.%2").arg(row.number).arg(value.mid(1)));
    return view_.showRows(row, place - 1), QString();
}

QString DialogPrompt::onListRow(const PageRow& row, const QString& place, const QString& act) {
    if (row.control.kind != ControlKind::list) return say(Text::DialogHint);
    const auto rows = dialogs_.rows(row.window, row.control.id, place.toLongLong() - 1, 1);
    if (rows.isEmpty()) return say(Text::DialogNoRow, QStringLiteral("%1.%2").arg(row.number).arg(place));
    const qint64 number = rows.first().number;
    if (act.isEmpty()) return dialogs_.activateRow(row.window, row.control.id, number);
    if (act == QLatin1String("m")) return dialogs_.openRowMenu(row.window, row.control.id, number);
    return say(Text::DialogRowsHint, row.number);
}

}  // namespace oku::terminal
