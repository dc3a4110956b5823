// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "profile/pep_listeners.h"

#include "host/record.h"

namespace protolink {

OKU_CONTACT_IDENTITY PepListeners::identity(const std::u16string& bareJid) const {
    OKU_CONTACT_IDENTITY contact{};
    contact.id = bareJid.c_str();
    contact.pfClass = kProtocolClass;
    contact.netId = client_.netId;
    return contact;
}

bool PepListeners::take(PepKind kind, const std::u16string& bareJid, const void* data) const {
    auto record = makeRecord<OKU_PEP_EVENT>();
    // A listener may have the account dial anew, which replaces its address.
    const std::u16string own = client_.jid.bare;
    record.own = identity(own);
    record.contact = identity(bareJid);
    record.kind = static_cast<std::uint32_t>(kind);
    return client_.host.notifyEvent(event_, toWord(&record), toWord(data)) != 0;
}

}  // namespace protolink
