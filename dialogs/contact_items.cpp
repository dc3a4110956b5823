// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "dialogs/contact_items.h"

#include <algorithm>

#include "plugin/contact_record.h"

namespace protolink {

OKU_WORD ContactItems::onMenuRebuild(OKU_WORD contactMenu) const {
    const auto* record = readRecord<OKU_CONTACT_MENU>(contactMenu);
    if (record && isOfAccount(client_, record->contact)) permitFor(ContactMenu(*record));
    return 0;
}

void ContactItems::permitFor(const ContactMenu& menu) const {
    const OKU_CONTACT_RECORD& contact = *menu.contact();
    if (menu.ofOneContact()) {
        menu.permit(ContactItem::Archive);
        if (takesFiles(contact)) menu.permit(ContactItem::SendFile);
    }
    menu.permit(ContactItem::Message);
    if (!(client_.flags & FLAG_AUTHORIZED)) return;
    if (!menu.insideChat()) menu.permit(ContactItem::Chat);
    if (client_.contactList.find(contact)) {
        menu.permit(ContactItem::Delete);
        menu.permit(ContactItem::Edit);
    }
    menu.permit(ContactItem::Directory);
}

bool ContactItems::takesFiles(const OKU_CONTACT_RECORD& contact) const {
    const ContactEntry* const entry = contacts_.find(readText(contact.id));
    return entry && std::any_of(entry->resources.begin(), entry->resources.end(),
                                [](const ResourceEntry& resource) { return resource.resFileTransfer != 0; });
}

}  // namespace protolink
