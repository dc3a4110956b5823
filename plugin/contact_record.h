// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A contact as the host names it.
#pragma once

#include <string>

#include "host/oku/contact.h"
#include "host/record.h"
#include "plugin/client_class.h"

namespace protolink {

/// The record of one of the account's contacts; it holds the address of `bareJid`, which has to live as long.
inline OKU_CONTACT_RECORD contactRecord(const CClientClass& client, const std::u16string& bareJid) {
    auto contact = makeRecord<OKU_CONTACT_RECORD>();
    contact.id = bareJid.c_str();
    contact.pfClass = kProtocolClass;
    contact.netId = client.netId;
    return contact;
}

/// Whether the host means one of the account's contacts, and not another account's or another plugin's.
inline bool isOfAccount(const CClientClass& client, const OKU_CONTACT_RECORD* contact) {
    return contact && readText(contact->pfClass) == kProtocolClass && contact->netId == client.netId;
}

}  // namespace protolink
