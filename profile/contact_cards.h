// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Contacts' vCards (XEP-0054) in the host's window.
#pragma once

#include "host/util/xml_element.h"
#include "plugin/client_class.h"
#include "profile/avatar_cache.h"
#include "profile/contact_avatars.h"
#include "router/requests.h"

namespace protolink {

class ContactVCards {
public:
    ContactVCards(CClientClass& client, Requests& requests, ContactAvatars& avatars, const AvatarCache& cache)
        : client_(client), requests_(requests), avatars_(avatars), cache_(cache) {}

    /// The host's service that asks for a contact's card. 0, always.
    OKU_WORD onGetContactVCard(OKU_WORD requestRecord);

private:
    void onContactVCardResult(OKU_WORD vcardToken, const xmlElement& iq);
    void showFields(OKU_WORD vcardToken, const xmlElement& vCard) const;
    void showPhoto(OKU_WORD vcardToken, const xmlElement& iq, const xmlElement& vCard);

    CClientClass& client_;
    Requests& requests_;
    ContactAvatars& avatars_;
    const AvatarCache& cache_;
};

}  // namespace protolink
