// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/terminal/talk/dialog_page.h"

#include <algorithm>

#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

bool isUsed(const DialogControl& control) {
    return control.takesText() || control.takesChoice() || control.kind == ControlKind::check ||
           control.kind == ControlKind::list || control.kind == ControlKind::button;
}

// What has nothing to say is no row: the name of a control stands in the control's own.
bool isSeen(const DialogControl& control) {
    return isUsed(control) || (!control.namesNext && !control.text.trimmed().isEmpty());
}

void addRows(const DialogsFace& dialogs, int number, std::vector<PageRow>& rows, int& last) {
    const auto window = dialogs.window(number);
    if (!window) return;
    for (const int child : window->children) addRows(dialogs, child, rows, last);
    for (const DialogControl& control : window->controls) {
        if (isSeen(control)) rows.push_back({isUsed(control) ? ++last : 0, number, control});
    }
}

// Further lines stand under the first one.
QString indented(const QString& text) { return QString(text).replace(u'\n', QStringLiteral("\n      ")); }

QString valueText(const DialogsFace& dialogs, const PageRow& row) {
    const DialogControl& control = row.control;
    switch (control.kind) {
        case ControlKind::password:
            return control.text.isEmpty() ? QString() : QStringLiteral("•••");
        case ControlKind::text:
            return (control.text.contains(u'\n') ? QStringLiteral("\n      ") : QString()) + indented(control.text);
        case ControlKind::dropDown:
            return QStringLiteral("%1 ▾").arg(oneLine(control.items.value(control.selection)));
        case ControlKind::editDropDown:
            return QStringLiteral("%1 ▾").arg(oneLine(control.text));
        case ControlKind::list: {
            const qsizetype count = dialogs.rowCount(row.window, control.id);
            return count == 0 && !control.emptyText.isEmpty() ? oneLine(control.emptyText)
                                                              : sayCounted(Text::DialogRows, count);
        }
        default:
            return oneLine(control.text);
    }
}

QString named(const QString& name, const QString& value) {
    const QString colon = name.isEmpty() || name.endsWith(u':') ? QString() : QStringLiteral(":");
    // Some begin with their name themselves.
    const bool said = !name.isEmpty() && value.startsWith(name + colon);
    return said ? value : (name + colon + u' ' + value).trimmed();
}

QString contentText(const DialogsFace& dialogs, const PageRow& row) {
    const DialogControl& control = row.control;
    switch (control.kind) {
        case ControlKind::label:
            return indented(control.text);
        case ControlKind::separator:
        case ControlKind::group:
            return QStringLiteral("── %1 ──").arg(oneLine(control.text));
        case ControlKind::check:
            return QStringLiteral("[%1] %2").arg(QChar(control.checked ? u'x' : u' ')).arg(nameOf(control));
        case ControlKind::button:
            return QStringLiteral("<%1>%2").arg(nameOf(control), control.isDefault ? QStringLiteral(" !") : QString());
        default:
            return named(nameOf(control), valueText(dialogs, row));
    }
}

}  // namespace

std::vector<PageRow> pageRows(const DialogsFace& dialogs, int window) {
    std::vector<PageRow> rows;
    int last = 0;
    addRows(dialogs, window, rows, last);
    return rows;
}

QString nameOf(const DialogControl& control) {
    if (control.kind == ControlKind::list && control.name.isEmpty()) return say(Text::DialogList);
    const bool isItsText = control.kind == ControlKind::check || control.kind == ControlKind::button;
    return oneLine(isItsText && !control.text.isEmpty() ? control.text : control.name);
}

QString rowText(const DialogsFace& dialogs, const PageRow& row) {
    QString text = row.number == 0 ? QStringLiteral("    ") : QStringLiteral("%1 ").arg(row.number, 3);
    text += contentText(dialogs, row);
    if (!row.control.enabled && row.number != 0) return text + u' ' + say(Text::DialogDisabled);
    return row.control.readOnly ? text + u' ' + say(Text::DialogReadOnly) : text;
}

QString listRowText(const DialogRow& row) {
    QString text = oneLine(row.text);
    for (const DialogField& field : row.fields) {
        text += QStringLiteral(" · ") + oneLine(QStringLiteral("%1 %2").arg(field.label, field.value).trimmed());
    }
    return text;
}

const PageRow* rowNumbered(const std::vector<PageRow>& rows, int number) {
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [number](const PageRow& row) { return row.number == number && number != 0; });
    return found == rows.end() ? nullptr : &*found;
}

QString titleOf(const DialogWindow& window) { return oneLine(window.title.isEmpty() ? window.heading : window.title); }

QString withMargin(const QString& text) {
    return QStringLiteral("    ") + QString(text).replace(u'\n', QStringLiteral("\n    "));
}

int pageOf(const DialogsFace& dialogs, int number) {
    auto window = dialogs.window(number);
    while (window && window->child) window = dialogs.window(window->parent);
    return window ? window->number : number;
}

}  // namespace oku::terminal
