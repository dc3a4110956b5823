// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What other plugins publish of the user: tune, mood and location (XEP-0163).
#pragma once

#include <string>

#include "im/server_features.h"
#include "plugin/client_class.h"
#include "router/requests.h"

namespace protolink {

class PepPublisher {
public:
    PepPublisher(CClientClass& client, Requests& requests, const ServerFeatures& features)
        : client_(client), requests_(requests), features_(features) {}

    /// The host's service that publishes: a kind, and the record of that kind. 1 when a stanza went out, else 0, as
    /// on a server without personal events.
    OKU_WORD onPublishData(OKU_WORD publishRecord, OKU_WORD dataRecord);

private:
    struct Kind;

    bool publish(const Kind& kind, const std::u16string& children);

    CClientClass& client_;
    Requests& requests_;
    const ServerFeatures& features_;
};

}  // namespace protolink
