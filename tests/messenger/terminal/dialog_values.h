// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include "tests/messenger/terminal/fake_messenger.h"

namespace oku::terminal::test {

inline DialogControl control(ControlKind kind, quint32 id, const char* name, const char* text = "") {
    DialogControl control;
    control.kind = kind;
    control.id = id;
    control.name = QString::fromUtf8(name);
    control.text = QString::fromUtf8(text);
    return control;
}

/// A window with a control of each kind that matters.
inline DialogWindow form() {
    DialogWindow window;
    window.number = 7;
    window.parent = 3;
    window.modal = true;
    window.title = QStringLiteral("Rejestracja");
    window.description = QStringLiteral("Proszę wypełnić");
    DialogControl label = control(ControlKind::label, 0xFFFFFFFF, "", "Nick");
    label.namesNext = true;
    DialogControl check = control(ControlKind::check, 25, "", "Zgoda");
    check.checked = true;
    DialogControl choice = control(ControlKind::dropDown, 23, "Rodzaj");
    choice.items = {QStringLiteral("mały"), QStringLiteral("duży")};
    choice.selection = 1;
    DialogControl ok = control(ControlKind::button, 26, "", "OK");
    ok.isDefault = true;
    DialogControl later = control(ControlKind::button, 27, "", "Później");
    later.enabled = false;
    window.controls = {label,
                       control(ControlKind::edit, 21, "Nick", "ala"),
                       control(ControlKind::password, 22, "Hasło", "tajne"),
                       check,
                       choice,
                       control(ControlKind::list, 24, "Usługi"),
                       ok,
                       later};
    return window;
}

inline QList<DialogRow> formRows() {
    return {{11, QStringLiteral("pierwszy"), {}},
            {12, QStringLiteral("drugi"), {{QStringLiteral("Stan:"), QStringLiteral("ok")}}}};
}

}  // namespace oku::terminal::test
