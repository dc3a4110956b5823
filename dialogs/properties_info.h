// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The page that tells by which clients a contact is logged in (XEP-0092).
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "dialogs/dialog_account.h"
#include "im/contact_entry.h"
#include "ui/options_dialog.h"

namespace protolink {

class CWndPropertiesInfo final : public COptionsDialog, public CXMLTarget {
public:
    /// `contact` is its bare JID. What the page is given outlives its window.
    CWndPropertiesInfo(WindowFactory& windows, DialogAccount& client, const Contacts& contacts, std::u16string contact)
        : COptionsDialog(windows), client_(client), contacts_(contacts), contact_(std::move(contact)) {}

    void DestroyWindow() override;
    /// There is nothing to store.
    bool OptionsSave() override { return true; }
    /// A resource's answer.
    void onXMLResult(xmlElement& element, void* user) override;

private:
    WindowLayout layout() override;
    void OptionsLoad() override { refresh(); }
    void OnCommand(std::uint32_t control) override;

    /// Asks every resource for its version.
    void refresh();

    DialogAccount& client_;
    const Contacts& contacts_;
    std::u16string contact_;
};

}  // namespace protolink
