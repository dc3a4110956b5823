// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The server refuses a step of the login.
#pragma once

#include "plugin/client_class.h"
#include "router/stanza.h"
#include "stream/connection.h"
#include "stream/reconnection.h"

namespace protolink {

class LoginFailure {
public:
    LoginFailure(CClientClass& client, Connection& connection, Reconnection& reconnection)
        : client_(client), connection_(connection), reconnection_(reconnection) {}

    /// Tells the user which step it was, and ends the connection for good.
    void onFailure(const Stanza& failure);

private:
    CClientClass& client_;
    Connection& connection_;
    Reconnection& reconnection_;
};

}  // namespace protolink
