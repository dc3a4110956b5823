// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A contact's menu that the host is about to show.
#pragma once

#include "host/oku/menu.h"

namespace protolink {

/// What the user can do with a contact, each a service of the host's.
enum class ContactItem { Archive, SendFile, Message, Chat, Delete, Edit, Directory };

class ContactMenu {
public:
    /// The record lives during the host's call only, and so does this.
    explicit ContactMenu(const OKU_CONTACT_MENU& record) : record_(record) {}

    /// Null for a menu that is not about a contact.
    const OKU_CONTACT_RECORD* contact() const { return record_.contact; }
    bool ofOneContact() const { return record_.contactCount == 1; }
    /// Whether a chat with the contact is open around the menu.
    bool insideChat() const;
    /// The item may stand in the menu.
    void permit(ContactItem item) const;

private:
    const OKU_CONTACT_MENU& record_;
};

}  // namespace protolink
