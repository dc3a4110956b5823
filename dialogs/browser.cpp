// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "dialogs/browser.h"

#include "dialogs/browser_layout.h"
#include "host/services/message_boxes.h"

namespace protolink {

namespace {

constexpr std::size_t kShortestJid = 3;

}  // namespace

CWndBrowser::CWndBrowser(WindowFactory& windows, const Host& host, const DialogAccounts& accounts)
    : CUIWin7Dialog(windows), host_(host), accounts_(accounts), items_(browser::kItems) {
    SetHeaders(u"Przeglądarka usług XMPP", u"");
}

void CWndBrowser::open() {
    if (isOpen()) {
        ShowWindow(true);
    } else {
        Create();
    }
}

WindowLayout CWndBrowser::layout() {
    WindowLayout window = browser::layout();
    shown_ = accounts_;
    for (Control& control : window.controls) {
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
    CUIWin7Dialog::DestroyWindow();
}

void CWndBrowser::OnCommand(std::uint32_t control) {
    if (control == browser::kGo) {
        go();
    } else {
        CUIWin7Dialog::OnCommand(control);
    }
}

bool CWndBrowser::OnEvent(const WindowEvent& event) {
    switch (event.kind) {
        case WindowEventKind::KeyDown:
        case WindowEventKind::KeyUp:
            return onKey(event);
        case WindowEventKind::Sized:
            placeControls(event.width, event.height);
            return false;
        default:
            return false;
    }
}

/// Return in the field of the address begins, and goes no further.
bool CWndBrowser::onKey(const WindowEvent& event) {
    if (event.control != browser::kJid || event.number != kReturnKey) return false;
    if (event.kind == WindowEventKind::KeyUp) OnCommand(browser::kGo);
    return true;
}

void CWndBrowser::go() {
    const std::u16string jid = view().text(browser::kJid);
    Browse(jid, view().text(browser::kNode));
}

void CWndBrowser::placeControls(std::int32_t width, std::int32_t height) {
    for (const browser::Placed& placed : browser::places(width, height)) view().place(placed.control, placed.rectangle);
}

DialogAccount* CWndBrowser::selectedAccount() {
    const auto selected = view().selection(browser::kAccount);
    return selected && *selected < shown_.size() ? shown_[*selected] : nullptr;
}

void CWndBrowser::warn(const std::u16string& text, const std::u16string& title) {
    MessageBoxes(host_).show(text, title, BoxStyle::Warning, handle());
}

void CWndBrowser::Browse(const std::u16string& jid, const std::u16string&) {
    items_.DeleteAll(view());
    DialogAccount* const account = selectedAccount();
    if (!account) return;
    SetHeaderDesc(u"Pobieranie listy usług...");
    pendingInfo_ = 0;
    if (!(account->client.flags & FLAG_AUTHORIZED)) return warn(u"Brak połączenia z siecią!", u"Błąd");
    if (jid.size() < kShortestJid) {
        return warn(
            u"Ta funkcja ma jedną zasadniczą wadę, musisz podać adres serwera (lub usługi) którą chcesz "
            u"'przepytać'. I niestety nie da się tego obejśc.",
            u"Błąd");
    }
}

}  // namespace protolink
