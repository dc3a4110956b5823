// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Between the plain rows of a window and the records that the host reads.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "host/oku/dialogs.h"
#include "ui/window_view.h"

namespace protolink {

/// The records of a window's controls. Their texts are those of the rows, which outlive this object.
class ControlRecords {
public:
    explicit ControlRecords(std::span<const Control> controls);

    std::span<const OKU_CONTROL> records() const { return records_; }

private:
    std::vector<OKU_CONTROL> records_;
    std::vector<std::vector<const char16_t*>> items_;  // of each control that has some
};

/// All but texts, controls and callback.
OKU_WINDOW windowRecord(const WindowLayout& layout, WindowPlace place);
std::vector<OKU_ROW_FIELD> fieldRecords(const ListRow& row);
std::vector<OKU_POPUP_ITEM> menuRecords(std::span<const MenuRow> rows);
/// Nothing for a null record, and for a kind that is not known.
std::optional<WindowEvent> readWindowEvent(OKU_WORD eventRecord);

}  // namespace protolink
