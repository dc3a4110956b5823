// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/contact_menu.h"

#include <array>

#include "host/record.h"

namespace protolink {

namespace {

/// In the order of `ContactItem`.
constexpr std::array<const char16_t*, 7> kServices{
    u"OKU/Contact/Archive", u"OKU/Contact/SendFile", u"OKU/Contact/Message", u"OKU/Contact/Chat",
    u"OKU/Contact/Delete",  u"OKU/Contact/Edit",     u"OKU/Contact/PubDir",
};

}  // namespace

bool ContactMenu::insideChat() const { return readText(record_.menu) == u"OKU/Loc/ChatWND"; }

void ContactMenu::permit(ContactItem item) const {
    if (record_.add) record_.add(toWord(kServices.at(static_cast<std::size_t>(item))), 0, record_.addContext);
}

}  // namespace protolink
