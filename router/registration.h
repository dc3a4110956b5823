// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// In-band registration of a new account (XEP-0077) on the stream that will then log in with it.
#pragma once

#include "plugin/client_class.h"
#include "router/requests.h"
#include "router/routing.h"
#include "stream/connection.h"
#include "stream/reconnection.h"

namespace protolink {

class Registration {
public:
    /// The dialog that asked for the account waits for the server's reply under this id.
    static constexpr char16_t kDialogId[] = u"dummy-reg-result";

    Registration(CClientClass& client, Connection& connection, Reconnection& reconnection, Requests& requests)
        : client_(client), connection_(connection), reconnection_(reconnection), requests_(requests) {}

    /// Asks for the account, or gives up when the server does not offer it.
    Routing begin(const xmlElement& features);

private:
    void registerResult(xmlElement& iq);
    void giveUp();

    CClientClass& client_;
    Connection& connection_;
    Reconnection& reconnection_;
    Requests& requests_;
};

}  // namespace protolink
