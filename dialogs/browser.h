// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The service browser (XEP-0030): the items of an address, what each of them offers, and what can be done with it.
#pragma once

#include <deque>
#include <memory>
#include <string>

#include "dialogs/browser_history.h"
#include "dialogs/dialog_account.h"
#include "dialogs/form.h"
#include "host/host.h"
#include "host/services/message_boxes.h"
#include "ui/dialog.h"
#include "ui/list_control.h"

namespace protolink {

/// One for the whole plugin, bound to no account. The object outlives its window, which may open anew. An answer that
/// comes while the window is closed is dropped.
///
/// Long, because the list, the menu of a row and the answers that arrive late all look at the same rows.
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
    /// An answer, with the account that it came to.
    using Handler = void (CWndBrowser::*)(DialogAccount& account, xmlElement& stanza);

    WindowLayout layout() override;
    void OnInitDialog() override;
    void OnCommand(std::uint32_t control) override;
    void OnOK() override { DestroyWindow(); }
    void OnCancel() override { DestroyWindow(); }
    bool OnEvent(const WindowEvent& event) override;
    bool onKey(const WindowEvent& event);
    void onActivated(const CUITreeNode* row);
    void openMenuOf(const CUITreeNode* row);
    void onMenu(std::int64_t command);
    void placeControls(std::int32_t width, std::int32_t height);

    void await(DialogAccount& account, const std::u16string& id, Handler handler);
    /// Asks an address for something of its node, by a query of this namespace.
    void query(DialogAccount& account, const std::u16string& id, std::u16string_view xmlns, std::u16string_view jid,
               std::u16string_view node, Handler handler);
    void remember(std::uint32_t control, BrowserHistory& history, const std::u16string& text);

    void OnItemsResult(DialogAccount& account, xmlElement& stanza);
    void listItem(DialogAccount& account, const xmlElement& item);
    void OnInfoResult(DialogAccount& account, xmlElement& stanza);
    void OnVersionResult(DialogAccount& account, xmlElement& stanza);
    void OnUnregisterResult(DialogAccount& account, xmlElement& stanza);
    void OnCommandResult(DialogAccount& account, xmlElement& stanza);

    void registerWith(DialogAccount& account, const CUITreeNode& row);
    void unregister(DialogAccount& account, const CUITreeNode& row);
    void execute(DialogAccount& account, const CUITreeNode& row);
    /// What commands answered, as long as no form is before the window.
    void takeCommandResults();
    void onCommandResult(const xmlElement& stanza);
    void openForm(std::shared_ptr<CWndForm> form);

    /// Of the drop-down; null when none is selected.
    DialogAccount* selectedAccount();
    void describeProgress(const char16_t* unfinished);
    void warn(const std::u16string& text, const std::u16string& title);
    void notice(const std::u16string& text, std::u16string_view title, BoxStyle style);

    WindowFactory& windows_;
    const Host& host_;
    const DialogAccounts& accounts_;
    DialogAccounts shown_;  // the accounts of the drop-down, in its order
    CUIListCtrl items_;
    BrowserHistory jids_;
    BrowserHistory nodes_;
    bool live_ = false;
    int pendingInfo_ = 0;
    std::deque<xmlElement> commandResults_;
    std::shared_ptr<CWndForm> form_;  // null while none is open
};

}  // namespace protolink
