// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The user's own vCard (XEP-0054): from the server into the host's form, and from the form to the server.
#pragma once

#include <string>

#include "host/util/xml_element.h"
#include "plugin/client_class.h"
#include "profile/own_card_request.h"
#include "router/requests.h"

namespace protolink {

class OwnVCard {
public:
    OwnVCard(CClientClass& client, Requests& requests, OwnCardRequest& request)
        : client_(client), requests_(requests), request_(request) {}

    /// The host's service that fetches the card. 0, always.
    OKU_WORD onGetMyVCard(OKU_WORD requestRecord);
    /// The host's service that stores what its form holds. 0, always. The server replaces the whole card: what the form
    /// does not know is gone afterwards.
    OKU_WORD onSetMyVCard(OKU_WORD requestRecord);

private:
    void onMyVCardResult(const xmlElement& iq);
    void onSetMyVCardResult(const xmlElement& iq);
    void fillForm(const xmlElement& vCard) const;
    std::u16string readForm(OKU_WORD token) const;

    CClientClass& client_;
    Requests& requests_;
    OwnCardRequest& request_;
};

}  // namespace protolink
