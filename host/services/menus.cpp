// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/menus.h"

#include "host/oku/menu.h"
#include "host/record.h"

namespace protolink {

namespace {

/// An item without a text of its own has a null pointer there, not an empty text.
const char16_t* textOrNull(const std::u16string& text) { return text.empty() ? nullptr : text.c_str(); }

OKU_MENU_RECORD menuRecord(const MenuItem& item) {
    auto record = makeRecord<OKU_MENU_RECORD>();
    record.id = textOrNull(item.id);
    record.parent = textOrNull(item.parent);
    record.caption = textOrNull(item.caption);
    record.flags = item.flags;
    record.order = item.order;
    record.icon = textOrNull(item.icon);
    record.callback = item.callback;
    record.context = item.context;
    return record;
}

}  // namespace

void Menus::add(const MenuItem& item) const {
    auto record = menuRecord(item);
    record.module = host_.module();
    host_.call(u"OKU/Menu/Add", toWord(&record));
}

void Menus::modify(const MenuItem& item) const {
    auto record = menuRecord(item);
    host_.call(u"OKU/Menu/Modify", toWord(&record));
}

}  // namespace protolink
