// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The user's points in the AQQ network ("aqq:iq:rank"). Log readers alone see them.
#pragma once

#include "plugin/client_class.h"
#include "router/requests.h"

namespace protolink {

class RankQuery {
public:
    RankQuery(CClientClass& client, Requests& requests) : client_(client), requests_(requests) {}

    /// Asks the account's server.
    void ask();

private:
    void onRankResult(const xmlElement& iq) const;

    CClientClass& client_;
    Requests& requests_;
};

}  // namespace protolink
