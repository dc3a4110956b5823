// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the menu of one of the account's contacts offers.
#pragma once

#include "host/oku/base.h"
#include "host/services/contact_menu.h"
#include "im/contact_entry.h"
#include "plugin/client_class.h"

namespace protolink {

class ContactItems {
public:
    ContactItems(CClientClass& client, const Contacts& contacts) : client_(client), contacts_(contacts) {}

    /// The host's event before it shows a menu, with an OKU_CONTACT_MENU. Always 0.
    OKU_WORD onMenuRebuild(OKU_WORD contactMenu) const;

private:
    void permitFor(const ContactMenu& menu) const;
    bool takesFiles(const OKU_CONTACT_RECORD& contact) const;

    CClientClass& client_;
    const Contacts& contacts_;
};

}  // namespace protolink
