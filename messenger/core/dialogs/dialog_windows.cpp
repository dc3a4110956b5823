// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/dialogs/dialog_windows.h"

#include <algorithm>
#include <utility>

namespace oku {

qsizetype DialogRows::placeOf(qint64 number) const {
    // Compared before it is taken apart: a person may name any number.
    return number > before && number - before <= rows.size() ? number - before - 1 : -1;
}

DialogControl* OpenDialog::control(quint32 id) {
    const auto place = places.constFind(id);
    return place == places.constEnd() ? nullptr : &window.controls[*place];
}

const DialogControl* OpenDialog::control(quint32 id) const {
    const auto place = places.constFind(id);
    return place == places.constEnd() ? nullptr : &window.controls.at(*place);
}

const DialogRows* OpenDialog::list(quint32 id) const {
    const auto found = lists.constFind(id);
    return found == lists.constEnd() ? nullptr : &*found;
}

OpenDialog* DialogWindows::find(int number) {
    const auto found = windows_.find(number);
    return found == windows_.end() ? nullptr : &found->second;
}

const OpenDialog* DialogWindows::find(int number) const {
    const auto found = windows_.find(number);
    return found == windows_.end() ? nullptr : &found->second;
}

bool DialogWindows::seen(const OpenDialog& dialog) const {
    for (const OpenDialog* at = &dialog; at && at->shown; at = find(at->window.parent)) {
        if (!at->window.child) return true;
    }
    return false;
}

bool DialogWindows::takesInput(const OpenDialog& dialog) const {
    for (const OpenDialog* at = &dialog; at; at = find(at->window.parent)) {
        if (!at->shown || !at->enabled || at->ended || at->modals > 0) return false;
        if (!at->window.child) return true;
    }
    return false;
}

QList<int> DialogWindows::numbersSeen() const {
    QList<int> numbers;
    for (const auto& [number, dialog] : windows_) {
        if (seen(dialog)) numbers.append(number);
    }
    return numbers;
}

std::optional<DialogWindow> DialogWindows::value(int number) const {
    const OpenDialog* dialog = find(number);
    if (!dialog || !seen(*dialog)) return std::nullopt;
    DialogWindow window = dialog->window;
    window.takesInput = takesInput(*dialog);
    for (const int inside : dialog->inside) {
        if (find(inside)->shown) window.children.append(inside);
    }
    return window;
}

int DialogWindows::open(OpenDialog dialog) {
    if (!find(dialog.window.parent)) {
        if (dialog.window.child || dialog.window.modal) return 0;
        // A number that is not given yet is nobody's: the window itself might get it.
        dialog.window.parent = 0;
    }
    const int number = dialog.window.number = ++lastNumber_;
    for (qsizetype place = 0; place < dialog.window.controls.size(); ++place) {
        const quint32 id = dialog.window.controls.at(place).id;
        // 0 stands for the whole window, and of two that share a number the first one has it.
        if (id != 0 && id != 0xFFFFFFFFU && !dialog.places.contains(id)) dialog.places.insert(id, place);
    }
    OpenDialog& kept = windows_.emplace(number, std::move(dialog)).first->second;
    if (kept.window.child) find(kept.window.parent)->inside.push_back(number);
    if (OpenDialog* owner = ownerOf(kept)) {
        ++owner->modals;
        tellChanged(*owner);
    }
    return number;
}

// The whole frame rests, also where the modal one was opened by a page inside it.
OpenDialog* DialogWindows::ownerOf(const OpenDialog& modal) {
    OpenDialog* owner = modal.window.modal ? find(modal.window.parent) : nullptr;
    while (owner && owner->window.child) owner = find(owner->window.parent);
    return owner;
}

// Whoever hears that the modal one is closed finds its owner as it is then.
void DialogWindows::closeModal(OpenDialog& modal) {
    OpenDialog* const owner = std::exchange(modal.ended, true) ? nullptr : ownerOf(modal);
    if (owner) --owner->modals;
    const int waited = owner ? owner->window.number : 0;
    hide(modal);
    const OpenDialog* const still = find(waited);
    if (still) tellChanged(*still);
}

void DialogWindows::show(int number, bool shown) {
    OpenDialog* dialog = find(number);
    if (!dialog || dialog->ended) return;
    if (shown) {
        dialog->shown = true;
        if (seen(*dialog)) tellOpened(number);
    } else {
        hide(*dialog);
    }
}

void DialogWindows::hide(OpenDialog& dialog) {
    const bool wasSeen = seen(dialog);
    dialog.shown = false;
    if (wasSeen) tellClosed(dialog.window.number);
}

// Listeners may do to windows what they like, so none is held across a signal.
void DialogWindows::tellOpened(int number) {
    emit opened(number);
    const OpenDialog* dialog = find(number);
    if (!dialog) return;
    for (const int inside : std::vector<int>(dialog->inside)) {
        const OpenDialog* child = find(inside);
        if (child && seen(*child)) tellOpened(inside);
    }
}

void DialogWindows::tellClosed(int number) {
    const OpenDialog* dialog = find(number);
    if (!dialog) return;
    for (const int inside : std::vector<int>(dialog->inside)) {
        const OpenDialog* child = find(inside);
        if (child && child->shown) tellClosed(inside);
    }
    emit closed(number);
}

void DialogWindows::destroy(int number) {
    std::vector<int> dependent;
    for (const auto& [other, dialog] : windows_) {
        if (dialog.window.parent == number) dependent.push_back(other);
    }
    for (const int other : dependent) destroy(other);
    OpenDialog* dialog = find(number);
    if (!dialog) return;
    dialog->window.modal ? closeModal(*dialog) : hide(*dialog);
    dialog = find(number);
    if (!dialog) return;
    if (OpenDialog* parent = find(dialog->window.parent)) std::erase(parent->inside, number);
    windows_.erase(number);
    emit destroyed(number);
}

bool DialogWindows::end(int number) {
    OpenDialog* dialog = find(number);
    if (!dialog || !dialog->window.modal || dialog->ended) return false;
    closeModal(*dialog);
    return find(number) != nullptr;
}

void DialogWindows::setEnabled(int number, bool enabled) {
    OpenDialog* dialog = find(number);
    if (!dialog || dialog->enabled == enabled) return;
    dialog->enabled = enabled;
    tellChanged(*dialog);
}

void DialogWindows::setRow(OpenDialog& dialog, quint32 list, OKU_WORD key, DialogRow row) {
    DialogRows& rows = dialog.lists[list];
    const auto known = rows.places.constFind(key);
    const bool isNew = known == rows.places.constEnd();
    const qsizetype place = isNew ? rows.rows.size() : *known;
    row.number = rows.before + place + 1;
    if (isNew) {
        rows.places.insert(key, place);
        rows.keys.push_back(key);
        rows.rows.append(row);
    } else {
        rows.rows[place] = row;
    }
    if (!seen(dialog)) return;
    if (isNew)
        emit rowAdded(dialog.window.number, list, row);
    else
        emit rowChanged(dialog.window.number, list, row);
}

void DialogWindows::clearRows(OpenDialog& dialog, quint32 list) {
    DialogRows& rows = dialog.lists[list];
    rows.before += rows.rows.size();
    rows.rows.clear();
    rows.keys.clear();
    rows.places.clear();
    rows.selected = -1;
    if (seen(dialog)) emit rowsCleared(dialog.window.number, list);
}

void DialogWindows::openMenu(OpenDialog& dialog, quint32 control, QList<DialogMenuItem> items) {
    dialog.window.menu = std::move(items);
    if (!seen(dialog)) return;
    const QList<DialogMenuItem> menu = dialog.window.menu;
    emit menuOpened(dialog.window.number, control, menu);
}

void DialogWindows::dropAll() {
    while (!windows_.empty()) destroy(windows_.rbegin()->first);
}

void DialogWindows::tellChanged(const OpenDialog& dialog) {
    if (seen(dialog)) emit changed(dialog.window.number);
}

void DialogWindows::tellControl(const OpenDialog& dialog, quint32 control) {
    if (seen(dialog)) emit controlChanged(dialog.window.number, control);
}

void DialogWindows::tellItem(const OpenDialog& dialog, quint32 control, const QString& item) {
    if (seen(dialog)) emit itemAdded(dialog.window.number, control, item);
}

void DialogWindows::tellNoItems(const OpenDialog& dialog, quint32 control) {
    if (seen(dialog)) emit itemsCleared(dialog.window.number, control);
}

void DialogWindows::tellFocus(const OpenDialog& dialog, quint32 control) {
    if (seen(dialog)) emit focused(dialog.window.number, control);
}

}  // namespace oku
