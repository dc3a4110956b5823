// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the stream tells the layers above it.
#pragma once

#include <string>

#include "host/util/xml_parse.h"
#include "plugin/status.h"

namespace protolink {

class StreamListener {
public:
    virtual ~StreamListener() = default;

    /// A stream begins anew: the session that was bound on the old one is void.
    virtual void forgetSession() = 0;
    /// The account returned to its unconnected form.
    virtual void onStateReset() = 0;
    /// The socket has connected; nothing of the last connection holds any more.
    virtual void onSocketConnected() = 0;
    /// The socket is closed; answers to requests of this connection can no longer come.
    virtual void onSocketClosed() = 0;
    /// The complete top-level elements of one received text, in order. Each is read when its turn comes.
    virtual void routeElements(XmlSequence& batch) = 0;
    /// The status that the user chose while logged in has to go out.
    virtual void publishStatus(Status status, const std::u16string& description) = 0;
};

}  // namespace protolink
