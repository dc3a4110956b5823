// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What each event of the account's socket does.
#pragma once

#include "plugin/client_class.h"
#include "stream/connection.h"
#include "stream/reconnection.h"
#include "stream/stream_listener.h"

namespace protolink {

class SocketEvents {
public:
    SocketEvents(CClientClass& client, Connection& connection, Reconnection& reconnection, StreamListener& listener)
        : client_(client), connection_(connection), reconnection_(reconnection), listener_(listener) {}

    /// The host's callback for the socket. `data` is the word that came with the event. Gives the answer to the
    /// question for a certificate, -1 for a missing record, else 0.
    OKU_WORD onSocketEvent(OKU_WORD eventRecord, OKU_WORD data);

private:
    void onDestroyed();
    void onConnected();
    void onClosed(OKU_WORD data);
    OKU_WORD onReceived(OKU_WORD data);
    void onTlsState(OKU_WORD data);
    OKU_WORD onCertificateCheck();

    CClientClass& client_;
    Connection& connection_;
    Reconnection& reconnection_;
    StreamListener& listener_;
};

}  // namespace protolink
