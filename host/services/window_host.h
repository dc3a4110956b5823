// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The plugin's own windows, which the host draws. Each method is one service.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "host/host.h"
#include "host/oku/dialogs.h"

namespace protolink {

/// Texts are needed only during a call. A handle of 0 is a window that did not open.
class WindowHost {
public:
    explicit WindowHost(const Host& host) : host_(host) {}

    /// Opens a window that the user does not see yet. The record needs no module. Gives its handle, 0 for none.
    OKU_WORD open(OKU_WINDOW record) const;
    void show(OKU_WORD window, bool visible) const;
    void destroy(OKU_WORD window) const;
    /// Ends a modal window; the host tells the result back by its callback, later.
    void end(OKU_WORD window, std::int32_t result) const;
    /// The host tells the number back by the window's callback, later.
    void post(OKU_WORD window, std::uint32_t number) const;
    /// Presses a button of the window that a child lies in; the host does it later.
    void commandParent(OKU_WORD child, std::uint32_t button) const;
    /// `which` is OKU_WINDOW_TITLE or its kin.
    void setText(OKU_WORD window, std::uint32_t which, const std::u16string& text) const;

    /// `what` is OKU_VALUE_CHECKED or its kin.
    void setNumber(OKU_WORD window, std::uint32_t control, std::uint32_t what, std::int64_t number) const;
    void setControlText(OKU_WORD window, std::uint32_t control, std::uint32_t what, const std::u16string& text) const;
    /// Nothing when the host does not answer.
    std::optional<std::int64_t> number(OKU_WORD window, std::uint32_t control, std::uint32_t what) const;
    /// Empty when the host does not answer.
    std::u16string text(OKU_WORD window, std::uint32_t control) const;
    void place(OKU_CONTROL_PLACE record) const;

    void setRow(OKU_ROW record) const;
    void clearRows(OKU_WORD window, std::uint32_t control) const;
    void openMenu(OKU_WORD window, std::uint32_t control, std::span<const OKU_POPUP_ITEM> items) const;

private:
    const Host& host_;
};

}  // namespace protolink
