// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "ui/dialog.h"

#include <utility>

#include "plugin/boundary.h"

namespace protolink {

CUIWin7Dialog::~CUIWin7Dialog() {
    if (view_) view_->destroy();
}

void CUIWin7Dialog::SetHeaders(const std::u16string& heading, const std::u16string& description) {
    heading_ = heading;
    if (view_) view_->setHeading(heading);
    SetHeaderDesc(description);
}

void CUIWin7Dialog::SetHeaderDesc(const std::u16string& description) {
    description_ = description;
    if (view_) view_->setDescription(description);
}

void CUIWin7Dialog::SetWindowText(const std::u16string& title) { view_->setTitle(title); }

bool CUIWin7Dialog::Create() { return open({}); }

bool CUIWin7Dialog::CreateChild(OKU_WORD parent, const Rectangle& inside) {
    return open({WindowPlace::Kind::Child, parent, inside});
}

bool CUIWin7Dialog::DoModal(OKU_WORD parent, std::function<void(std::int32_t result)> ended) {
    if (isOpen()) return false;
    ended_ = std::move(ended);
    result_ = 0;
    if (open({WindowPlace::Kind::Modal, parent})) return true;
    ended_ = nullptr;
    return false;
}

bool CUIWin7Dialog::open(WindowPlace place) {
    if (isOpen()) return false;
    opening_ = true;
    std::shared_ptr<WindowView> view = windows_.open(layout(), heading_, description_, place, *this);
    if (!std::exchange(opening_, false)) {
        // It was not wanted any more before it was there.
        if (view) view->destroy();
        return isOpen();
    }
    if (!view) return false;
    // The view before may still be on the stack.
    releaseAfterCall(std::exchange(view_, std::move(view)));
    ending_ = false;
    OnInitDialog();
    MoveWindow(place.inside);
    view_->show(true);
    return isOpen();
}

void CUIWin7Dialog::DestroyWindow() {
    opening_ = false;
    if (!isOpen()) return;
    view_->destroy();
    if (const auto ended = std::exchange(ended_, nullptr)) ended(result_);
}

void CUIWin7Dialog::ShowWindow(bool visible) {
    if (view_) view_->show(visible);
}

void CUIWin7Dialog::MoveWindow(const Rectangle& inside) {
    if (view_ && inside != Rectangle()) view_->place(kWholeWindow, inside);
}

void CUIWin7Dialog::EndDialog(std::int32_t result) {
    if (!ended_ || ending_) return;
    result_ = result;
    ending_ = true;
    view_->end(result);
}

void CUIWin7Dialog::OnCommand(std::uint32_t control) {
    if (control == kOkButton) OnOK();
    if (control == kCancelButton) OnCancel();
}

bool CUIWin7Dialog::onWindowEvent(const WindowEvent& event) {
    switch (event.kind) {
        case WindowEventKind::Command:
            OnCommand(event.control);
            return false;
        case WindowEventKind::Close:
            OnCancel();
            return false;
        case WindowEventKind::Ended:
            if (ending_) DestroyWindow();
            return false;
        default:
            return OnEvent(event);
    }
}

}  // namespace protolink
