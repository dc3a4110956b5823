// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/dialogs/dialog_input.h"

#include <algorithm>
#include <QCoreApplication>
#include <utility>

#include "host/oku/dialogs.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/xml/xml_text.h"

namespace oku {
namespace {

constexpr std::int64_t kReturn = 13;
constexpr quint32 kConfirming = 1;  // the number of every button that means yes

QString oneLine(QString text) {
    return text.replace(QLatin1String("\r\n"), QLatin1String(" ")).replace(u'\n', u' ').replace(u'\r', u' ');
}

QString cannot() {
    return QCoreApplication::translate("Dialogs", "Tego pola nie ma w oknie albo nie można tego z nim zrobić.");
}

}  // namespace

QString DialogInput::windowFault(int window) const {
    const OpenDialog* dialog = std::as_const(windows_).find(window);
    if (!dialog || !windows_.seen(*dialog)) return QCoreApplication::translate("Dialogs", "Nie ma takiego okna.");
    if (!windows_.takesInput(*dialog))
        return QCoreApplication::translate("Dialogs", "To okno czeka teraz na inne albo na odpowiedź.");
    return {};
}

QString DialogInput::controlFault(int window, quint32 control, const Rule& rule) const {
    if (QString fault = windowFault(window); !fault.isEmpty()) return fault;
    const DialogControl* found = std::as_const(windows_).find(window)->control(control);
    if (!found || !rule(*found)) return cannot();
    return found->enabled ? QString() : QCoreApplication::translate("Dialogs", "To pole jest teraz nieaktywne.");
}

QString DialogInput::take(int window, std::function<QString()> fault, std::function<void()> run) {
    // While something waits, only its turn tells what will be there.
    if (waiting_ == 0) {
        if (QString reason = fault(); !reason.isEmpty()) return reason;
    }
    ++waiting_;
    const auto inTurn = [this, window, fault = std::move(fault), run = std::move(run)] {
        --waiting_;
        if (const QString reason = fault(); !reason.isEmpty())
            emit refused(window, reason);
        else
            run();
    };
    // From the event loop: a callback may open a question, which holds whoever called until it is answered.
    QMetaObject::invokeMethod(
        this, [this, inTurn] { queue_.post({}, inTurn); }, Qt::QueuedConnection);
    return {};
}

OKU_WORD DialogInput::raise(int window, std::uint32_t kind, quint32 control, std::int64_t number) {
    const OpenDialog* dialog = std::as_const(windows_).find(window);
    if (!dialog || !dialog->callback) return 0;
    auto event = makeRecord<OKU_WINDOW_EVENT>();
    event.kind = kind;
    event.window = static_cast<OKU_WORD>(window);
    event.control = control;
    event.number = number;
    // The window may go while its callback runs.
    const OKU_HANDLER callback = dialog->callback;
    return callback(wordOf(&event), 0, dialog->context);
}

void DialogInput::raiseLater(int window, std::uint32_t kind, std::int64_t number) {
    queue_.post({}, [this, window, kind, number] { raise(window, kind, 0, number); });
}

QString DialogInput::fill(int window, quint32 control, const QString& text) {
    if (!isXmlText(text))
        return QCoreApplication::translate("Dialogs", "Tekst zawiera znaki, których nie można wysłać.");
    const Rule writable = [](const DialogControl& one) { return one.takesText() && !one.readOnly; };
    return take(
        window, [=, this] { return controlFault(window, control, writable); },
        [=, this] {
            DialogControl& field = *windows_.find(window)->control(control);
            field.text = field.kind == ControlKind::text
                             ? QString(text).replace(QLatin1String("\r\n"), QLatin1String("\n"))
                             : oneLine(text);
            field.selection = -1;
            raise(window, OKU_WINDOW_CHANGED, control);
        });
}

QString DialogInput::choose(int window, quint32 control, qint64 item) {
    const Rule has = [item](const DialogControl& one) {
        return one.takesChoice() && !one.readOnly && item >= -1 && item < one.items.size();
    };
    return take(
        window, [=, this] { return controlFault(window, control, has); },
        [=, this] {
            DialogControl& field = *windows_.find(window)->control(control);
            field.selection = item;
            if (field.kind == ControlKind::editDropDown) field.text = field.items.value(item);
            raise(window, OKU_WINDOW_CHANGED, control);
        });
}

QString DialogInput::setChecked(int window, quint32 control, bool checked) {
    const Rule check = [](const DialogControl& one) { return one.kind == ControlKind::check && !one.readOnly; };
    return take(
        window, [=, this] { return controlFault(window, control, check); },
        [=, this] {
            DialogControl& field = *windows_.find(window)->control(control);
            if (std::exchange(field.checked, checked) != checked) raise(window, OKU_WINDOW_COMMAND, control);
        });
}

QString DialogInput::press(int window, quint32 button) {
    const Rule isButton = [](const DialogControl& one) { return one.kind == ControlKind::button; };
    return take(
        window, [=, this] { return controlFault(window, button, isButton); },
        [=, this] { raise(window, OKU_WINDOW_COMMAND, button); });
}

QString DialogInput::pressReturn(int window, quint32 control) {
    const auto fault = [=, this] {
        return control == 0 ? windowFault(window)
                            : controlFault(window, control, [](const DialogControl&) { return true; });
    };
    return take(window, fault, [=, this] {
        const OpenDialog* dialog = std::as_const(windows_).find(window);
        const DialogControl* field = dialog->control(control);
        bool taken = false;
        if (field && field->tellsReturn) {
            taken = raise(window, OKU_WINDOW_KEY_DOWN, control, kReturn) != 0;
            taken = raise(window, OKU_WINDOW_KEY_UP, control, kReturn) != 0 || taken;
        }
        if (!taken) pressDefault(window);
    });
}

// A page that lies in a window has no button of its own to confirm it: the window's is meant.
void DialogInput::pressDefault(int window) {
    for (const OpenDialog* at = std::as_const(windows_).find(window); at;
         at = at->window.child ? std::as_const(windows_).find(at->window.parent) : nullptr) {
        const auto& controls = at->window.controls;
        const auto button = std::find_if(controls.begin(), controls.end(), [](const DialogControl& one) {
            return one.kind == ControlKind::button && one.isDefault;
        });
        if (button == controls.end()) continue;
        if (button->enabled && windows_.takesInput(*at)) raise(at->window.number, OKU_WINDOW_COMMAND, button->id);
        return;
    }
    confirmInside(window);
}

// Where no button is the default one, the window itself hears of it, as if it had one.
void DialogInput::confirmInside(int window) {
    const OpenDialog* dialog = std::as_const(windows_).find(window);
    while (dialog && !dialog->callback)
        dialog = dialog->inside.empty() ? nullptr : std::as_const(windows_).find(dialog->inside.front());
    if (dialog && windows_.takesInput(*dialog)) raise(dialog->window.number, OKU_WINDOW_COMMAND, kConfirming);
}

void DialogInput::commandParent(int child, quint32 button) {
    const OpenDialog* dialog = std::as_const(windows_).find(child);
    const int parent = dialog && dialog->window.child ? dialog->window.parent : 0;
    const OpenDialog* around = std::as_const(windows_).find(parent);
    if (!around) return;
    if (!around->callback) {
        emit pageCommanded(parent, button);
        return;
    }
    queue_.post({}, [this, parent, button] { raise(parent, OKU_WINDOW_COMMAND, button); });
}

QString DialogInput::onRow(int window, quint32 list, qint64 row, std::uint32_t event) {
    const auto fault = [=, this] {
        const auto isList = [](const DialogControl& one) { return one.kind == ControlKind::list; };
        if (QString reason = controlFault(window, list, isList); !reason.isEmpty()) return reason;
        const DialogRows* rows = std::as_const(windows_).find(window)->list(list);
        if (rows && rows->placeOf(row) >= 0) return QString();
        return QCoreApplication::translate("Dialogs", "Nie ma takiego wiersza.");
    };
    return take(window, fault, [=, this] {
        DialogRows& rows = windows_.find(window)->lists[list];
        rows.selected = rows.placeOf(row);
        raise(window, event, list, static_cast<std::int64_t>(rows.keys[static_cast<std::size_t>(rows.selected)]));
    });
}

QString DialogInput::takeFromMenu(int window, quint32 command) {
    const auto fault = [=, this] {
        if (QString reason = windowFault(window); !reason.isEmpty()) return reason;
        const auto& menu = std::as_const(windows_).find(window)->window.menu;
        const bool there = std::any_of(menu.begin(), menu.end(), [command](const DialogMenuItem& item) {
            return item.command == command && item.enabled && !item.separator;
        });
        return there ? QString() : QCoreApplication::translate("Dialogs", "Nie ma takiej pozycji menu.");
    };
    return take(window, fault, [=, this] {
        windows_.find(window)->window.menu.clear();
        raise(window, OKU_WINDOW_MENU, 0, command);
    });
}

QString DialogInput::close(int window) {
    return take(
        window, [=, this] { return windowFault(window); }, [=, this] { raise(window, OKU_WINDOW_CLOSE); });
}

}  // namespace oku
