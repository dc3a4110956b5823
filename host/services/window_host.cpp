// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/window_host.h"

#include "host/record.h"

namespace protolink {

namespace {

OKU_CONTROL_VALUE valueOf(OKU_WORD window, std::uint32_t control, std::uint32_t what) {
    auto record = makeRecord<OKU_CONTROL_VALUE>();
    record.window = window;
    record.control = control;
    record.what = what;
    return record;
}

}  // namespace

OKU_WORD WindowHost::open(OKU_WINDOW record) const {
    record.module = host_.module();
    return host_.call(u"UI/WindowOpen", toWord(&record));
}

void WindowHost::show(OKU_WORD window, bool visible) const { host_.call(u"UI/WindowShow", window, visible ? 1 : 0); }

void WindowHost::destroy(OKU_WORD window) const { host_.call(u"UI/WindowDestroy", window); }

void WindowHost::end(OKU_WORD window, std::int32_t result) const { host_.call(u"UI/WindowEnd", window, result); }

void WindowHost::post(OKU_WORD window, std::uint32_t number) const { host_.call(u"UI/WindowPost", window, number); }

void WindowHost::commandParent(OKU_WORD child, std::uint32_t button) const {
    host_.call(u"UI/ParentCommand", child, static_cast<OKU_WORD>(button));
}

void WindowHost::setText(OKU_WORD window, std::uint32_t which, const std::u16string& text) const {
    auto record = makeRecord<OKU_WINDOW_TEXT>();
    record.which = which;
    record.window = window;
    record.text = text.c_str();
    host_.call(u"UI/WindowText", toWord(&record));
}

void WindowHost::setNumber(OKU_WORD window, std::uint32_t control, std::uint32_t what, std::int64_t number) const {
    auto record = valueOf(window, control, what);
    record.number = number;
    host_.call(u"UI/ControlSet", toWord(&record));
}

void WindowHost::setControlText(OKU_WORD window, std::uint32_t control, std::uint32_t what,
                                const std::u16string& text) const {
    auto record = valueOf(window, control, what);
    record.text = text.c_str();
    host_.call(u"UI/ControlSet", toWord(&record));
}

std::optional<std::int64_t> WindowHost::number(OKU_WORD window, std::uint32_t control, std::uint32_t what) const {
    auto record = valueOf(window, control, what);
    if (host_.call(u"UI/ControlGet", toWord(&record)) == 0) return std::nullopt;
    return record.number;
}

std::u16string WindowHost::text(OKU_WORD window, std::uint32_t control) const {
    auto record = valueOf(window, control, OKU_VALUE_TEXT);
    return host_.call(u"UI/ControlGet", toWord(&record)) == 0 ? std::u16string() : readText(record.text);
}

void WindowHost::place(OKU_CONTROL_PLACE record) const { host_.call(u"UI/ControlPlace", toWord(&record)); }

void WindowHost::setRow(OKU_ROW record) const { host_.call(u"UI/RowSet", toWord(&record)); }

void WindowHost::clearRows(OKU_WORD window, std::uint32_t control) const {
    host_.call(u"UI/RowsClear", window, static_cast<OKU_WORD>(control));
}

void WindowHost::openMenu(OKU_WORD window, std::uint32_t control, std::span<const OKU_POPUP_ITEM> items) const {
    auto record = makeRecord<OKU_POPUP_MENU>();
    record.itemCount = static_cast<std::uint32_t>(items.size());
    record.window = window;
    record.items = items.data();
    record.control = control;
    host_.call(u"UI/MenuOpen", toWord(&record));
}

}  // namespace protolink
