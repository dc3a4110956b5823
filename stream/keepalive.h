// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Pings while the account is logged in, and the end of a connection that has gone silent.
#pragma once

#include "plugin/client_class.h"
#include "stream/connection.h"
#include "stream/stream_output.h"

namespace protolink {

class Keepalive {
public:
    Keepalive(CClientClass& client, StreamOutput& output, Connection& connection)
        : client_(client), output_(output), connection_(connection) {}

    /// The host's callback for the account's timer. Always 0.
    OKU_WORD onTimer(OKU_WORD timerEvent);
    void onTick();

private:
    void sendPing();
    void resetDeadConnection();

    CClientClass& client_;
    StreamOutput& output_;
    Connection& connection_;
};

}  // namespace protolink
