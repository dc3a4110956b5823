// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The host's contact list, and what contacts do.
#pragma once

#include <string>

#include "host/host.h"
#include "host/oku/contact.h"

namespace protolink {

/// One for each account, as it knows whether the account keeps the list from being drawn.
class ContactList {
public:
    explicit ContactList(const Host& host) : host_(host) {}

    void deleteAll(std::uint32_t netId) const;
    void setAllOffline(std::uint32_t netId) const;
    /// Adds or updates a contact and gives it its icon. The record's handle is filled by the host.
    void add(OKU_CONTACT_ADD& record) const;
    OKU_WORD find(const OKU_CONTACT_ADD& record) const;
    OKU_WORD find(const OKU_CONTACT_RECORD& contact) const;
    /// A further icon beside the contact; `icon` names a class that the plugin made.
    void addIcon(OKU_WORD handle, const char16_t* icon, const std::u16string& tooltip) const;
    void removeIcon(OKU_WORD handle, const char16_t* icon) const;
    void remove(OKU_WORD handle) const;
    void setState(const OKU_CONTACT_STATE& state) const;
    void setTyping(const OKU_CONTACT_RECORD& contact, bool composing) const;
    /// The contact's picture lies in the file `path` from now on.
    void setAvatar(const OKU_CONTACT_RECORD& contact, const std::u16string& path) const;
    /// Puts the names of the host's groups into a drop-down, which is named as `WindowView::nameOf` gives it.
    void listGroups(OKU_WORD window, OKU_WORD control) const;
    void askForAuthorization(const OKU_CONTACT_RECORD& contact) const;

    /// For an account that ends while one of its own calls keeps the list from being drawn: it is drawn again.
    void endPauses() const;

private:
    friend class DrawingPause;
    void draw(bool on) const;

    const Host& host_;
    int pauses_ = 0;
};

/// Keeps the contact list from being drawn while it lives. However a change of many contacts ends, the list is drawn
/// again.
class DrawingPause {
public:
    explicit DrawingPause(ContactList& list);
    ~DrawingPause();
    DrawingPause(const DrawingPause&) = delete;
    DrawingPause& operator=(const DrawingPause&) = delete;

private:
    ContactList& list_;
};

}  // namespace protolink
