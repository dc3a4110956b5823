// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/values/dialogs.h"

namespace oku {

QString controlKindWord(ControlKind kind) {
    switch (kind) {
        case ControlKind::label:
            return QStringLiteral("label");
        case ControlKind::edit:
            return QStringLiteral("edit");
        case ControlKind::password:
            return QStringLiteral("password");
        case ControlKind::text:
            return QStringLiteral("text");
        case ControlKind::check:
            return QStringLiteral("check");
        case ControlKind::dropDown:
            return QStringLiteral("drop-down");
        case ControlKind::editDropDown:
            return QStringLiteral("edit-drop-down");
        case ControlKind::list:
            return QStringLiteral("list");
        case ControlKind::button:
            return QStringLiteral("button");
        case ControlKind::separator:
            return QStringLiteral("separator");
        case ControlKind::group:
            return QStringLiteral("group");
    }
    return {};
}

bool DialogControl::takesText() const {
    return kind == ControlKind::edit || kind == ControlKind::password || kind == ControlKind::text ||
           kind == ControlKind::editDropDown;
}

bool DialogControl::takesChoice() const { return kind == ControlKind::dropDown || kind == ControlKind::editDropDown; }

}  // namespace oku
