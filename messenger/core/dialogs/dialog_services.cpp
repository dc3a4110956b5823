// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/dialogs/dialog_services.h"

#include <limits>
#include <utility>

#include "messenger/core/boundary/service_registry.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/dialogs/dialog_input.h"
#include "messenger/core/dialogs/dialog_records.h"

namespace oku {

DialogServices::DialogServices(ServiceRegistry& services, DialogWindows& windows, DialogInput& input)
    : windows_(windows), input_(input) {
    provideWindows(services);
    provideControls(services);
}

void DialogServices::provideWindows(ServiceRegistry& services) {
    // Of those that the plugin opened; pages of the messenger are not its own.
    const auto onWindow = [this, &services](const char16_t* name, auto act) {
        services.provide(name, [this, act](OKU_WORD handle, OKU_WORD extra) -> OKU_WORD {
            const OpenDialog* dialog = windowAt(handle);
            if (!dialog) return 0;
            act(dialog->window.number, extra);
            return 1;
        });
    };
    services.provide(u"UI/WindowOpen", [this](OKU_WORD param, OKU_WORD) { return open(param); });
    services.provide(u"UI/WindowText", [this](OKU_WORD param, OKU_WORD) { return setText(param); });
    onWindow(u"UI/WindowShow", [this](int window, OKU_WORD shown) { windows_.show(window, shown != 0); });
    onWindow(u"UI/WindowDestroy", [this](int window, OKU_WORD) { windows_.destroy(window); });
    onWindow(u"UI/WindowEnd", [this](int window, OKU_WORD result) {
        if (windows_.end(window)) input_.raiseLater(window, OKU_WINDOW_ENDED, static_cast<std::int64_t>(result));
    });
    onWindow(u"UI/ParentCommand",
             [this](int window, OKU_WORD button) { input_.commandParent(window, static_cast<quint32>(button)); });
    onWindow(u"UI/WindowPost", [this](int window, OKU_WORD number) {
        input_.raiseLater(window, OKU_WINDOW_POSTED, static_cast<std::int64_t>(number));
    });
}

void DialogServices::provideControls(ServiceRegistry& services) {
    services.provide(u"UI/ControlSet", [this](OKU_WORD param, OKU_WORD) { return setValue(param); });
    services.provide(u"UI/ControlGet", [this](OKU_WORD param, OKU_WORD) { return getValue(param); });
    // Rectangles are hints, and nothing here is laid out by them.
    services.provide(u"UI/ControlPlace", [this](OKU_WORD param, OKU_WORD) -> OKU_WORD {
        const auto* record = recordAt<OKU_CONTROL_PLACE>(param);
        const OpenDialog* dialog = record ? windowAt(record->window) : nullptr;
        return dialog && (record->control == 0 || dialog->control(record->control)) ? 1 : 0;
    });
    services.provide(u"OKU/CTL/EnumGroupsHWND",
                     [this](OKU_WORD param, OKU_WORD extra) { return listGroups(param, extra); });
    services.provide(u"UI/RowSet", [this](OKU_WORD param, OKU_WORD) { return setRow(param); });
    services.provide(u"UI/RowsClear", [this](OKU_WORD param, OKU_WORD extra) { return clearRows(param, extra); });
    services.provide(u"UI/MenuOpen", [this](OKU_WORD param, OKU_WORD) { return openMenu(param); });
}

OpenDialog* DialogServices::windowAt(OKU_WORD handle) {
    if (handle == 0 || handle > static_cast<OKU_WORD>(std::numeric_limits<int>::max())) return nullptr;
    OpenDialog* dialog = windows_.find(static_cast<int>(handle));
    return dialog && dialog->callback ? dialog : nullptr;
}

OKU_WORD DialogServices::open(OKU_WORD param) {
    const auto* record = recordAt<OKU_WINDOW>(param);
    const bool ours = record && record->callback && record->module == module_;
    if (!ours || record->parent > static_cast<OKU_WORD>(std::numeric_limits<int>::max())) return 0;
    auto dialog = readWindow(*record);
    return dialog ? static_cast<OKU_WORD>(windows_.open(std::move(*dialog))) : 0;
}

OKU_WORD DialogServices::setText(OKU_WORD param) {
    const auto* record = recordAt<OKU_WINDOW_TEXT>(param);
    OpenDialog* dialog = record ? windowAt(record->window) : nullptr;
    if (!dialog || !setWindowText(dialog->window, record->which, wideLines(record->text))) return 0;
    windows_.tellChanged(*dialog);
    return 1;
}

OKU_WORD DialogServices::setValue(OKU_WORD param) {
    const auto* record = recordAt<OKU_CONTROL_VALUE>(param);
    OpenDialog* dialog = record ? windowAt(record->window) : nullptr;
    if (!dialog) return 0;
    if (record->control == 0) {
        if (record->what != OKU_VALUE_ENABLED) return 0;
        windows_.setEnabled(dialog->window.number, record->number != 0);
        return 1;
    }
    DialogControl* control = dialog->control(record->control);
    return control && change(*dialog, *control, *record) ? 1 : 0;
}

bool DialogServices::change(OpenDialog& dialog, DialogControl& control, const OKU_CONTROL_VALUE& value) {
    const quint32 id = control.id;
    switch (value.what) {
        case OKU_VALUE_TEXT:
            changeText(dialog, control, wideLines(value.text));
            break;
        case OKU_VALUE_CHECKED:
            control.checked = value.number != 0;
            break;
        case OKU_VALUE_SELECTION:
            control.selection = value.number >= 0 && value.number < control.items.size() ? value.number : -1;
            if (control.kind == ControlKind::editDropDown && control.selection >= 0)
                control.text = control.items.at(control.selection);
            break;
        case OKU_VALUE_ENABLED:
            control.enabled = value.number != 0;
            break;
        case OKU_VALUE_READ_ONLY:
            control.readOnly = value.number != 0;
            break;
        case OKU_VALUE_FOCUS:
            windows_.tellFocus(dialog, id);
            return true;
        case OKU_VALUE_ADD_ITEM:
            if (!control.takesChoice()) return false;
            addItem(dialog, control, wideText(value.text));
            return true;
        case OKU_VALUE_CLEAR_ITEMS:
            if (!control.takesChoice()) return false;
            control.items.clear();
            control.selection = -1;
            windows_.tellNoItems(dialog, id);
            return true;
        default:
            return false;
    }
    windows_.tellControl(dialog, id);
    return true;
}

void DialogServices::changeText(OpenDialog& dialog, DialogControl& control, const QString& text) {
    if (control.kind == ControlKind::dropDown) {
        // Its text is that of its choice.
        control.selection = control.items.indexOf(text);
        return;
    }
    control.text = control.kind == ControlKind::button ? buttonCaption(text) : text;
    // As after the user's own typing.
    if (control.kind == ControlKind::editDropDown) control.selection = -1;
    // One without a text names nothing: a nameless field would be worse than one by its former name.
    if (!control.namesNext || text.isEmpty()) return;
    DialogControl& named = dialog.window.controls[*dialog.places.constFind(control.id) + 1];
    named.name = text;
    windows_.tellControl(dialog, named.id);
}

OKU_WORD DialogServices::getValue(OKU_WORD param) {
    auto* record = recordAt<OKU_CONTROL_VALUE>(param);
    const OpenDialog* dialog = record ? windowAt(record->window) : nullptr;
    const DialogControl* control = dialog ? dialog->control(record->control) : nullptr;
    if (!control) return 0;
    switch (record->what) {
        case OKU_VALUE_TEXT:
            if (control->kind == ControlKind::dropDown)
                lent_ = control->items.value(control->selection);
            else
                lent_ = withReturns(control->text);
            record->text = widePointer(lent_);
            return 1;
        case OKU_VALUE_CHECKED:
            record->number = control->checked ? 1 : 0;
            return 1;
        case OKU_VALUE_SELECTION:
            record->number = control->selection;
            return 1;
        case OKU_VALUE_ROW: {
            const DialogRows* rows = dialog->list(control->id);
            const bool chosen = rows && rows->selected >= 0;
            record->number =
                chosen ? static_cast<std::int64_t>(rows->keys[static_cast<std::size_t>(rows->selected)]) : 0;
            return 1;
        }
        default:
            return 0;
    }
}

OKU_WORD DialogServices::listGroups(OKU_WORD window, OKU_WORD control) {
    OpenDialog* dialog = windowAt(window);
    DialogControl* list = dialog ? dialog->control(static_cast<quint32>(control)) : nullptr;
    if (!list || !list->takesChoice() || !groups_) return 0;
    for (const QString& group : groups_()) addItem(*dialog, *list, group);
    return 1;
}

void DialogServices::addItem(const OpenDialog& dialog, DialogControl& control, const QString& item) {
    control.items.append(item);
    windows_.tellItem(dialog, control.id, item);
}

OpenDialog* DialogServices::listAt(OKU_WORD window, OKU_WORD list) {
    OpenDialog* dialog = windowAt(window);
    const DialogControl* control = dialog ? std::as_const(*dialog).control(static_cast<quint32>(list)) : nullptr;
    return control && control->kind == ControlKind::list ? dialog : nullptr;
}

OKU_WORD DialogServices::setRow(OKU_WORD param) {
    const auto* record = recordAt<OKU_ROW>(param);
    OpenDialog* dialog = record && record->row != 0 ? listAt(record->window, record->control) : nullptr;
    if (!dialog) return 0;
    windows_.setRow(*dialog, record->control, record->row, readRow(*record));
    return 1;
}

OKU_WORD DialogServices::clearRows(OKU_WORD window, OKU_WORD list) {
    OpenDialog* dialog = listAt(window, list);
    if (!dialog) return 0;
    windows_.clearRows(*dialog, static_cast<quint32>(list));
    return 1;
}

OKU_WORD DialogServices::openMenu(OKU_WORD param) {
    const auto* record = recordAt<OKU_POPUP_MENU>(param);
    OpenDialog* dialog = record ? windowAt(record->window) : nullptr;
    if (!dialog || !std::as_const(*dialog).control(record->control)) return 0;
    windows_.openMenu(*dialog, record->control, readMenu(*record));
    return 1;
}

}  // namespace oku
