// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The host's request about the user's own card or picture that is under way.
#pragma once

#include <string>

#include "host/oku/cards.h"
#include "host/record.h"
#include "host/services/cards.h"
#include "plugin/client_class.h"

namespace protolink {

/// One for card and picture together: a request that comes while another is under way takes its place.
class OwnCardRequest {
public:
    explicit OwnCardRequest(CClientClass& client) : client_(client) {}

    /// Tells the window what the request under way has come to.
    void tell(const std::u16string& text) const { tell(myVCardToken, text); }
    /// The same for a request that has not begun.
    void tell(OKU_WORD request, const std::u16string& text) const {
        OwnCard(client_.host).setStatus(client_.netId, request, text);
    }

    OKU_WORD myVCardToken = 0;  // the host's word for it; 0 for none

private:
    CClientClass& client_;
};

}  // namespace protolink
