// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The service browser (XEP-0030): the items of an address, and what each of them offers.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "dialogs/dialog_account.h"
#include "ui/dialog.h"
#include "ui/list_control.h"

namespace protolink {

/// One for the whole plugin, bound to no account. The object outlives its window, which may open anew.
class CWndBrowser final : public CUIWin7Dialog, public std::enable_shared_from_this<CWndBrowser> {
public:
    /// What it is given outlives the browser's window.
    CWndBrowser(WindowFactory& windows, const Host& host, const DialogAccounts& accounts);

    /// Opens the window, or shows the one that is open.
    void open();
    void DestroyWindow() override;

    /// Lists the items of an address and a node, which may be empty, with the account that is selected.
    void Browse(const std::u16string& jid, const std::u16string& node);

private:
    WindowLayout layout() override;
    void OnInitDialog() override;
    void OnCommand(std::uint32_t control) override;
    void OnOK() override { DestroyWindow(); }
    void OnCancel() override { DestroyWindow(); }
    bool OnEvent(const WindowEvent& event) override;
    bool onKey(const WindowEvent& event);
    void go();
    void placeControls(std::int32_t width, std::int32_t height);

    /// Of the drop-down; null when none is selected.
    DialogAccount* selectedAccount();
    void warn(const std::u16string& text, const std::u16string& title);

    const Host& host_;
    const DialogAccounts& accounts_;
    DialogAccounts shown_;  // the accounts of the drop-down, in its order
    CUIListCtrl items_;
    bool live_ = false;
    int pendingInfo_ = 0;
};

}  // namespace protolink
