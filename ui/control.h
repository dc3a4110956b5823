// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a window holds, as plain rows: its controls in reading order, and the items of its menus.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace protolink {

enum class ControlKind {
    Label,
    Edit,
    Password,
    Text,
    Check,
    DropDown,
    EditDropDown,
    List,
    Button,
    Separator,
    Group,
};

/// A rectangle of the design, in points of 1/96 inch. All zero: none was given.
struct Rectangle {
    std::int32_t x = 0;
    std::int32_t y = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool operator==(const Rectangle&) const = default;
};

/// The number of controls that nobody has to name.
inline constexpr std::uint32_t kNoControlId = 0xFFFFFFFF;
/// The whole window, where a control can be named.
inline constexpr std::uint32_t kWholeWindow = 0;

/// The buttons that every dialog may have.
inline constexpr std::uint32_t kOkButton = 1;
inline constexpr std::uint32_t kCancelButton = 2;

/// One control as it is when its window opens.
struct Control {
    ControlKind kind = ControlKind::Label;
    std::uint32_t id = kNoControlId;
    std::u16string text = {};
    std::u16string name = {};  // what it is called where no label stands before it
    Rectangle place = {};
    bool disabled = false;
    bool readOnly = false;
    bool checked = false;
    bool isDefault = false;  // the button that Return presses
    bool tellsReturn = false;
    std::vector<std::u16string> items = {};
    std::int32_t selection = -1;
    std::u16string emptyText = {};  // of a list without rows
    std::u16string fontName = {};
    std::uint32_t fontSize = 0;
};

/// A heading over the controls that follow.
inline Control CUISeparator(std::uint32_t id, std::u16string text) {
    return {.kind = ControlKind::Separator, .id = id, .text = std::move(text)};
}

/// A window as it is when it opens.
struct WindowLayout {
    std::uint32_t templateId = 0;
    std::u16string title = {};
    std::vector<Control> controls = {};
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t minWidth = 0;
    std::int32_t minHeight = 0;
};

struct MenuRow {
    std::uint32_t command = 0;  // 0: a separator
    std::u16string text = {};
    bool enabled = true;
    bool isDefault = false;
};

}  // namespace protolink
