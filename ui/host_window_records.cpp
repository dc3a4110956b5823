// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "ui/host_window_records.h"

#include <array>

#include "host/record.h"

namespace protolink {

namespace {

/// In the order of `ControlKind`.
constexpr std::array<std::uint32_t, 11> kKinds{OKU_CONTROL_LABEL,          OKU_CONTROL_EDIT,  OKU_CONTROL_PASSWORD,
                                               OKU_CONTROL_TEXT,           OKU_CONTROL_CHECK, OKU_CONTROL_DROP_DOWN,
                                               OKU_CONTROL_EDIT_DROP_DOWN, OKU_CONTROL_LIST,  OKU_CONTROL_BUTTON,
                                               OKU_CONTROL_SEPARATOR,      OKU_CONTROL_GROUP};

/// From OKU_WINDOW_COMMAND on.
constexpr std::array<WindowEventKind, 11> kEvents{
    WindowEventKind::Command, WindowEventKind::Changed, WindowEventKind::RowActivated, WindowEventKind::RowMenu,
    WindowEventKind::Menu,    WindowEventKind::KeyDown, WindowEventKind::KeyUp,        WindowEventKind::Sized,
    WindowEventKind::Close,   WindowEventKind::Ended,   WindowEventKind::Posted};

const char16_t* textOrNull(const std::u16string& text) { return text.empty() ? nullptr : text.c_str(); }

constexpr std::uint32_t when(bool set, std::uint32_t flag) { return set ? flag : 0; }

std::uint32_t flagsOf(const Control& control) {
    return when(control.disabled, OKU_CONTROL_DISABLED) | when(control.readOnly, OKU_CONTROL_READ_ONLY) |
           when(control.checked, OKU_CONTROL_CHECKED) | when(control.isDefault, OKU_CONTROL_DEFAULT) |
           when(control.tellsReturn, OKU_CONTROL_KEYS);
}

OKU_CONTROL controlRecord(const Control& control) {
    auto record = makeRecord<OKU_CONTROL>();
    record.kind = kKinds.at(static_cast<std::size_t>(control.kind));
    record.id = control.id;
    record.flags = flagsOf(control);
    record.text = control.text.c_str();
    record.name = textOrNull(control.name);
    record.itemCount = static_cast<std::uint32_t>(control.items.size());
    record.selection = control.selection;
    record.x = control.place.x;
    record.y = control.place.y;
    record.width = control.place.width;
    record.height = control.place.height;
    record.emptyText = textOrNull(control.emptyText);
    record.fontName = textOrNull(control.fontName);
    record.fontSize = control.fontSize;
    return record;
}

std::uint32_t placeFlags(WindowPlace::Kind kind) {
    if (kind == WindowPlace::Kind::Modal) return OKU_WINDOW_MODAL;
    return kind == WindowPlace::Kind::Child ? OKU_WINDOW_CHILD : 0;
}

}  // namespace

ControlRecords::ControlRecords(std::span<const Control> controls) {
    records_.reserve(controls.size());
    for (const Control& control : controls) {
        OKU_CONTROL record = controlRecord(control);
        if (!control.items.empty()) {
            auto& items = items_.emplace_back();
            for (const std::u16string& item : control.items) items.push_back(item.c_str());
            // The items' own memory stays where it is when the list of lists grows.
            record.items = items.data();
        }
        records_.push_back(record);
    }
}

OKU_WINDOW windowRecord(const WindowLayout& layout, WindowPlace place) {
    auto record = makeRecord<OKU_WINDOW>();
    record.templateId = layout.templateId;
    record.title = layout.title.c_str();
    record.flags = placeFlags(place.kind);
    record.parent = place.parent;
    record.width = layout.width;
    record.height = layout.height;
    record.minWidth = layout.minWidth;
    record.minHeight = layout.minHeight;
    return record;
}

std::vector<OKU_ROW_FIELD> fieldRecords(const ListRow& row) {
    std::vector<OKU_ROW_FIELD> records;
    for (const auto& [label, value] : row.fields) {
        auto record = makeRecord<OKU_ROW_FIELD>();
        record.label = label.c_str();
        record.value = value.c_str();
        records.push_back(record);
    }
    return records;
}

std::vector<OKU_POPUP_ITEM> menuRecords(std::span<const MenuRow> rows) {
    std::vector<OKU_POPUP_ITEM> records;
    for (const MenuRow& row : rows) {
        auto record = makeRecord<OKU_POPUP_ITEM>();
        record.command = row.command;
        if (row.command == 0) {
            record.flags = OKU_POPUP_SEPARATOR;
        } else {
            record.text = row.text.c_str();
            record.flags = when(!row.enabled, OKU_POPUP_DISABLED) | when(row.isDefault, OKU_POPUP_DEFAULT);
        }
        records.push_back(record);
    }
    return records;
}

std::optional<WindowEvent> readWindowEvent(OKU_WORD eventRecord) {
    const auto* record = readRecord<OKU_WINDOW_EVENT>(eventRecord);
    if (!record || record->kind < OKU_WINDOW_COMMAND || record->kind > kEvents.size()) return std::nullopt;
    return WindowEvent{.kind = kEvents.at(record->kind - OKU_WINDOW_COMMAND),
                       .control = record->control,
                       .number = record->number,
                       .width = record->width,
                       .height = record->height};
}

}  // namespace protolink
