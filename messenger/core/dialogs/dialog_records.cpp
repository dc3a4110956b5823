// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/dialogs/dialog_records.h"

#include "messenger/core/boundary/wide.h"

namespace oku {
namespace {

/// Walks records that lie one behind the other, each as long as it says. False when one is too short to be one, or so
/// long that the next cannot lie behind it.
template <typename Record, typename Use>
bool eachRecord(const Record* first, std::uint32_t count, Use use) {
    const auto* at = reinterpret_cast<const char*>(first);
    for (std::uint32_t number = 0; at && number < count; ++number) {
        const auto& record = *reinterpret_cast<const Record*>(at);
        if (record.size < sizeof(Record) || record.size % alignof(Record) != 0) return false;
        use(record);
        at += record.size;
    }
    return true;
}

bool takesLabel(ControlKind kind) {
    return kind == ControlKind::list || kind == ControlKind::edit || kind == ControlKind::password ||
           kind == ControlKind::text || kind == ControlKind::dropDown || kind == ControlKind::editDropDown;
}

DialogControl readControl(const OKU_CONTROL& record) {
    DialogControl control;
    control.id = record.id;
    control.kind = static_cast<ControlKind>(record.kind);
    control.text = wideLines(record.text);
    if (control.kind == ControlKind::button) control.text = buttonCaption(control.text);
    control.name = wideText(record.name);
    control.enabled = (record.flags & OKU_CONTROL_DISABLED) == 0;
    control.readOnly = (record.flags & OKU_CONTROL_READ_ONLY) != 0;
    control.checked = (record.flags & OKU_CONTROL_CHECKED) != 0;
    control.isDefault = (record.flags & OKU_CONTROL_DEFAULT) != 0;
    control.tellsReturn = (record.flags & OKU_CONTROL_KEYS) != 0;
    control.emptyText = wideText(record.emptyText);
    if (!control.takesChoice()) return control;
    control.items.reserve(record.items ? record.itemCount : 0);
    for (std::uint32_t item = 0; record.items && item < record.itemCount; ++item)
        control.items.append(wideText(record.items[item]));
    const bool there = record.selection >= 0 && record.selection < control.items.size();
    control.selection = there ? record.selection : -1;
    return control;
}

void nameByLabel(QList<DialogControl>& controls) {
    if (controls.size() < 2) return;
    DialogControl& label = controls[controls.size() - 2];
    DialogControl& control = controls.last();
    if (label.kind != ControlKind::label || !takesLabel(control.kind)) return;
    label.namesNext = true;
    if (!label.text.isEmpty()) control.name = label.text;
}

}  // namespace

std::optional<OpenDialog> readWindow(const OKU_WINDOW& record) {
    OpenDialog dialog;
    dialog.callback = record.callback;
    dialog.context = record.context;
    DialogWindow& window = dialog.window;
    window.parent = static_cast<int>(record.parent);
    window.modal = (record.flags & OKU_WINDOW_MODAL) != 0;
    window.child = (record.flags & OKU_WINDOW_CHILD) != 0;
    window.title = wideText(record.title);
    window.heading = wideText(record.heading);
    window.description = wideLines(record.description);
    window.controls.reserve(record.controls ? record.controlCount : 0);
    const bool whole = eachRecord(record.controls, record.controlCount, [&](const OKU_CONTROL& control) {
        if (control.kind < OKU_CONTROL_LABEL || control.kind > OKU_CONTROL_GROUP) return;
        window.controls.append(readControl(control));
        nameByLabel(window.controls);
    });
    if (!whole) return std::nullopt;
    return dialog;
}

DialogRow readRow(const OKU_ROW& record) {
    DialogRow row;
    row.text = wideText(record.text);
    eachRecord(record.fields, record.fieldCount, [&](const OKU_ROW_FIELD& field) {
        row.fields.append({wideText(field.label), wideText(field.value)});
    });
    return row;
}

QList<DialogMenuItem> readMenu(const OKU_POPUP_MENU& record) {
    QList<DialogMenuItem> items;
    eachRecord(record.items, record.itemCount, [&](const OKU_POPUP_ITEM& item) {
        items.append({item.command, buttonCaption(wideText(item.text)), (item.flags & OKU_POPUP_DISABLED) == 0,
                      (item.flags & OKU_POPUP_DEFAULT) != 0, (item.flags & OKU_POPUP_SEPARATOR) != 0});
    });
    return items;
}

QString withReturns(const QString& text) {
    QString lines = text;
    return lines.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1String("\n"), QLatin1String("\r\n"));
}

QString buttonCaption(const QString& text) {
    QString caption;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text.at(at) == u'&' && ++at == text.size()) break;
        caption += text.at(at);
    }
    return caption;
}

bool setWindowText(DialogWindow& window, std::uint32_t which, const QString& text) {
    switch (which) {
        case OKU_WINDOW_TITLE:
            window.title = text;
            return true;
        case OKU_WINDOW_HEADING:
            window.heading = text;
            return true;
        case OKU_WINDOW_DESCRIPTION:
            window.description = text;
            return true;
        default:
            return false;
    }
}

}  // namespace oku
