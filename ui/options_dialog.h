// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A page of the plugin inside one of the host's own windows.
#pragma once

#include "ui/dialog.h"

namespace protolink {

/// It lives from its first showing until the host leaves the window that it lies in.
class COptionsDialog : public CUIWin7Dialog {
public:
    using CUIWin7Dialog::CUIWin7Dialog;

    /// Stores what is on the page. False when that cannot be done; the page stays as it is.
    virtual bool OptionsSave() = 0;
    /// The same for something that is new.
    virtual bool OptionsAdd() { return true; }

protected:
    /// Fills in the page, which nobody has seen yet.
    virtual void OptionsLoad() = 0;
    /// The page is open and empty.
    virtual void prepare() {}

    void OnInitDialog() final {
        prepare();
        OptionsLoad();
    }
    // The window around the page ends, and the page with it.
    void OnOK() override {}
    void OnCancel() override {}
};

}  // namespace protolink
