// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// How the stream's parts end the connection that they belong to.
#pragma once

#include "host/oku/base.h"

namespace protolink {

class ConnectionControl {
public:
    virtual ~ConnectionControl() = default;

    /// Ends the stream. With `closeSocket` the socket is closed too; without, the server closes it. Returns the result
    /// of the close, 1 when the stream ended without one, 0 when there was nothing to end.
    virtual OKU_WORD disconnect(bool closeSocket) = 0;

    /// The next close is not expected: reconnection follows it.
    virtual void expectReconnection() = 0;
};

}  // namespace protolink
