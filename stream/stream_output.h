// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Outgoing text into bytes on the socket.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "plugin/client_class.h"
#include "stream/connection_control.h"
#include "stream/zip_stream.h"

namespace protolink {

class StreamOutput {
public:
    StreamOutput(CClientClass& client, CZipStream& zip) : client_(client), zip_(zip) {}
    void attach(ConnectionControl& connection) { connection_ = &connection; }

    /// Sends a stanza, or the opening or closing of the stream. Returns the socket's result, 0 when a listener of the
    /// host took the data, -1 on a compression fault.
    std::int32_t sendText(std::u16string_view text);

    /// Sends bytes. `raw` tells the host's listeners that they did not come from the plugin itself.
    std::int32_t sendBytes(std::string_view data, bool raw);

    /// The host's service that sends bytes. 0 when there are none or the account is not logged in.
    OKU_WORD onRawSend(OKU_WORD rawRecord);

private:
    bool offerToListeners(std::string_view data, bool raw);
    std::int32_t compressionFault();

    CClientClass& client_;
    CZipStream& zip_;
    ConnectionControl* connection_ = nullptr;
    bool endingAfterFault_ = false;
};

}  // namespace protolink
