// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The page of settings of a contact, of one that is there and of one that is to be added.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "dialogs/dialog_account.h"
#include "im/contact_entry.h"
#include "im/presence.h"
#include "im/privacy_lists.h"
#include "im/roster.h"
#include "im/server_features.h"
#include "ui/options_dialog.h"

namespace protolink {

/// What of an account its contacts' pages work on.
struct ContactParts {
    DialogAccount& account;
    const Contacts& contacts;
    const ServerFeatures& features;
    Roster& roster;
    PrivacyLists& privacy;
    Presence& presence;
};

class CWndPropertiesXMPP final : public COptionsDialog {
public:
    /// `contact` is its bare JID; nothing for a new one. The parts outlive the page's window.
    CWndPropertiesXMPP(WindowFactory& windows, const ContactParts& client, std::optional<std::u16string> contact)
        : COptionsDialog(windows), client_(client), contact_(std::move(contact)) {}

    void DestroyWindow() override;
    /// Changes the contact. Does nothing for one that is not on the roster.
    bool OptionsSave() override;
    /// Adds a contact, and asks it for its presence.
    bool OptionsAdd() override;

private:
    WindowLayout layout() override;
    void OptionsLoad() override;
    void OnCommand(std::uint32_t control) override;
    // Those of the window around the page are meant.
    void OnOK() override { view().commandParent(kOkButton); }
    void OnCancel() override { view().commandParent(kCancelButton); }

    /// What the user entered of the contact itself.
    struct Entered {
        std::u16string jid;
        std::u16string name;
        std::u16string group;
    };
    Entered entered() const;
    /// What is to be denied to the contact, as the page shows it now.
    PrivacyEntry marks() const;

    /// Null when the page is about no contact, or the roster does not know it.
    const ContactEntry* onRoster() const;
    void showPrivacy(std::u16string_view jid);
    /// Writes the contact into the roster. False when that cannot be, which the user is told.
    bool store(const Entered& contact);
    /// Carries out what `wanted` denies to its contact.
    void deny(const PrivacyEntry& wanted);
    /// Tells whoever has the address on the page something of subscriptions.
    void tell(std::u16string_view type);

    ContactParts client_;
    std::optional<std::u16string> contact_;
};

}  // namespace protolink
