// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Requests to see the account's presence (RFC 6121, 3) and their answers.
#pragma once

#include "im/contact_entry.h"
#include "im/presence.h"
#include "im/roster.h"
#include "plugin/client_class.h"
#include "router/stanza.h"

namespace protolink {

class Subscriptions {
public:
    Subscriptions(CClientClass& client, Contacts& contacts, Roster& roster, Presence& presence)
        : client_(client), contacts_(contacts), roster_(roster), presence_(presence) {}

    /// A request, decided by the account's setting: asked of the user, refused, accepted or left unanswered.
    void onSubscribe(const Stanza& presence);

    /// The user's answer. 1 when not logged in, and the answer is lost; else 0.
    OKU_WORD onContactAuth(OKU_WORD record, OKU_WORD answer);

private:
    CClientClass& client_;
    Contacts& contacts_;
    Roster& roster_;
    Presence& presence_;
};

}  // namespace protolink
