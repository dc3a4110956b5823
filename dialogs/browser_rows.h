// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the service browser shows of an item, and what can be done with it, as plain rows.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "host/util/xml_element.h"
#include "ui/list_control.h"

namespace protolink {

namespace browser {

enum Command : std::uint32_t { kGoTo = 1000, kRegisterWith = 1002, kUnregister = 1003, kExecute = 1004 };

/// The key of the row of an item.
std::u16string rowKey(std::u16string_view jid, std::u16string_view node);

/// The row of an `item` element before anything is known of it.
CUITreeNode rowOf(const xmlElement& item);

/// Takes over what an answer to disco#info tells. True when the item can be asked for its version.
bool addInfo(CUITreeNode& row, std::u16string_view jid, const xmlElement& query);

/// Takes over what an answer about the version tells.
void addVersion(CUITreeNode& row, const xmlElement& query);

/// The menu of a row.
std::array<MenuRow, 6> menuOf(const CUITreeNode& row);

}  // namespace browser

}  // namespace protolink
