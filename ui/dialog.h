// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the plugin's windows have in common: a view that somebody draws, headers, and buttons.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "ui/window_view.h"

namespace protolink {

/// A window with headers. The object outlives its window, which may open anew. Whoever lets one go while a call is on
/// the stack hands it to `releaseAfterCall`.
class CUIWin7Dialog : private WindowListener {
public:
    explicit CUIWin7Dialog(WindowFactory& windows) : windows_(windows) {}
    ~CUIWin7Dialog() override;
    CUIWin7Dialog(const CUIWin7Dialog&) = delete;
    CUIWin7Dialog& operator=(const CUIWin7Dialog&) = delete;

    /// Both keep what they are given for a window that opens later.
    void SetHeaders(const std::u16string& heading, const std::u16string& description);
    void SetHeaderDesc(const std::u16string& description);

    /// Opens the window and shows it. False when no window opens, or when it has gone again already.
    bool Create();
    /// The same inside another window, or inside the page whose parent's word the host gave.
    bool CreateChild(OKU_WORD parent, const Rectangle& inside = {});
    /// The same as a window that takes the input of its parent away. Returns at once; `ended` is called once, when the
    /// window has gone, with the result that it ended with, or with 0.
    bool DoModal(OKU_WORD parent, std::function<void(std::int32_t result)> ended);
    /// Takes the window away; nothing comes of it any more.
    virtual void DestroyWindow();

    bool isOpen() const { return view_ && view_->handle() != 0; }
    /// Of the open window, 0 without one.
    OKU_WORD handle() const { return view_ ? view_->handle() : 0; }
    void ShowWindow(bool visible);
    /// Places a child inside its parent. A rectangle that is none changes nothing.
    void MoveWindow(const Rectangle& inside);

protected:
    /// What the window holds when it opens.
    virtual WindowLayout layout() = 0;
    /// The window is open, and nobody has seen it.
    virtual void OnInitDialog() {}
    /// A button was pressed, or a check clicked.
    virtual void OnCommand(std::uint32_t control);
    virtual void OnOK() { EndDialog(static_cast<std::int32_t>(kOkButton)); }
    /// Also for a window that the user wants to close.
    virtual void OnCancel() { EndDialog(static_cast<std::int32_t>(kCancelButton)); }
    /// All other events. True takes a key away from its control.
    virtual bool OnEvent(const WindowEvent&) { return false; }

    /// Ends a modal window with a result; of any other it does nothing.
    void EndDialog(std::int32_t result);
    void SetWindowText(const std::u16string& title);

    /// Of the window that opened last. Does nothing any more once that has gone.
    WindowView& view() { return *view_; }
    const WindowView& view() const { return *view_; }

private:
    bool open(WindowPlace place);
    bool onWindowEvent(const WindowEvent& event) final;

    WindowFactory& windows_;
    std::shared_ptr<WindowView> view_;
    std::u16string heading_;
    std::u16string description_;
    std::function<void(std::int32_t result)> ended_;
    std::int32_t result_ = 0;
    bool opening_ = false;  // the host opens the window now, and it is wanted
    bool ending_ = false;   // the host was told that the window ends
};

}  // namespace protolink
