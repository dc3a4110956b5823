// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a file transfer needs of its account.
#pragma once

#include "plugin/client_class.h"
#include "router/event_dispatcher.h"
#include "stream/stream_output.h"

namespace protolink {

class Downloads;

struct TransferAccount {
    CClientClass& client;
    StreamOutput& output;
    CProtoEventDispatcher& dispatcher;
    Downloads& downloads;
};

}  // namespace protolink
