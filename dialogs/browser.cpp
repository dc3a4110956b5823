// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "dialogs/browser.h"

#include <utility>

#include "dialogs/browser_layout.h"
#include "dialogs/browser_rows.h"
#include "plugin/boundary.h"

namespace protolink {

CWndBrowser::CWndBrowser(WindowFactory& windows, const Host& host, const DialogAccounts& accounts)
    : CUIWin7Dialog(windows), windows_(windows), host_(host), accounts_(accounts), items_(browser::kItems) {
    SetHeaders(u"Przeglądarka usług XMPP", u"");
}

void CWndBrowser::open() {
    if (isOpen()) {
        ShowWindow(true);
    } else {
        SetHeaderDesc(u"");
        Create();
    }
}

WindowLayout CWndBrowser::layout() {
    WindowLayout window = browser::layout();
    shown_ = accounts_;
    for (Control& control : window.controls) {
        if (control.id == browser::kJid) control.items = jids_.items();
        if (control.id == browser::kNode) control.items = nodes_.items();
        if (control.id != browser::kAccount) continue;
        for (const DialogAccount* account : shown_) control.items.push_back(account->client.files.displayName);
        control.selection = shown_.empty() ? -1 : 0;
    }
    return window;
}

void CWndBrowser::OnInitDialog() {
    live_ = true;
    if (!view().text(browser::kJid).empty()) return;
    if (const DialogAccount* const account = selectedAccount())
        view().setText(browser::kJid, account->client.jid.domain);
}

void CWndBrowser::DestroyWindow() {
    live_ = false;
    commandResults_.clear();
    if (const std::shared_ptr<CWndForm> form = form_) form->DestroyWindow();
    CUIWin7Dialog::DestroyWindow();
    items_.Forget();
}

void CWndBrowser::OnCommand(std::uint32_t control) {
    if (control == browser::kGo) {
        const std::u16string jid = view().text(browser::kJid);
        Browse(jid, view().text(browser::kNode));
    } else {
        CUIWin7Dialog::OnCommand(control);
    }
}

bool CWndBrowser::OnEvent(const WindowEvent& event) {
    switch (event.kind) {
        case WindowEventKind::KeyDown:
        case WindowEventKind::KeyUp:
            return onKey(event);
        case WindowEventKind::RowActivated:
            onActivated(items_.FindRow(event.number));
            break;
        case WindowEventKind::RowMenu:
            openMenuOf(items_.FindRow(event.number));
            break;
        case WindowEventKind::Menu:
            onMenu(event.number);
            break;
        case WindowEventKind::Sized:
            placeControls(event.width, event.height);
            break;
        case WindowEventKind::Posted:
            if (event.number == browser::kCommandAnswered) takeCommandResults();
            break;
        default:
            break;
    }
    return false;
}

/// Return in the field of the address begins, and goes no further.
bool CWndBrowser::onKey(const WindowEvent& event) {
    if (event.control != browser::kJid || event.number != kReturnKey) return false;
    if (event.kind == WindowEventKind::KeyUp) OnCommand(browser::kGo);
    return true;
}

void CWndBrowser::onActivated(const CUITreeNode* row) {
    // Copies: browsing empties the list.
    if (row) Browse(std::u16string(row->getDataValue(u"jid")), std::u16string(row->getDataValue(u"node")));
}

void CWndBrowser::openMenuOf(const CUITreeNode* row) {
    if (row) view().openMenu(browser::kItems, browser::menuOf(*row));
}

void CWndBrowser::onMenu(std::int64_t command) {
    const CUITreeNode* const row = items_.GetFirstSelected(view());
    if (command == browser::kGoTo) return onActivated(row);
    DialogAccount* const account = selectedAccount();
    if (!row || !account) return;
    switch (command) {
        case browser::kRegisterWith:
            return registerWith(*account, *row);
        case browser::kUnregister:
            return unregister(*account, *row);
        case browser::kExecute:
            return execute(*account, *row);
        default:
            return;
    }
}

void CWndBrowser::placeControls(std::int32_t width, std::int32_t height) {
    for (const browser::Placed& placed : browser::places(width, height)) view().place(placed.control, placed.rectangle);
}

DialogAccount* CWndBrowser::selectedAccount() {
    const auto selected = view().selection(browser::kAccount);
    return selected && *selected < shown_.size() ? shown_[*selected] : nullptr;
}

void CWndBrowser::warn(const std::u16string& text, const std::u16string& title) {
    notice(text, title, BoxStyle::Warning);
}

void CWndBrowser::notice(const std::u16string& text, std::u16string_view title, BoxStyle style) {
    MessageBoxes(host_).show(text, std::u16string(title), style, handle());
}

void CWndBrowser::openForm(std::shared_ptr<CWndForm> form) {
    // Another one that is before the window takes all input; a host that tells of some is not heard.
    if (form_) return;
    form_ = form;
    const auto gone = [this](std::int32_t) {
        releaseAfterCall(std::exchange(form_, nullptr));
        takeCommandResults();
    };
    // One that has gone again may have made room for the next one already.
    if (!form->DoModal(handle(), gone) && form_ == form) form_.reset();
}

}  // namespace protolink
