// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Received bytes into whole top-level elements.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/oku/netlib.h"
#include "plugin/client_class.h"
#include "stream/connection_control.h"
#include "stream/received_text.h"
#include "stream/stream_listener.h"
#include "stream/xml_probe.h"
#include "stream/zip_stream.h"

namespace protolink {

class StreamInput {
public:
    StreamInput(CClientClass& client, CZipStream& zip, ConnectionControl& connection, StreamListener& listener)
        : client_(client), zip_(zip), connection_(connection), listener_(listener) {}

    /// One received piece. Its buffer may be written to.
    void onReceive(const NL_RECEIVED& piece);

    /// Forgets the text that waits for its next part.
    void resetPartialInput();
    /// Frees the compressed bytes that were not inflated yet.
    void freeZInput();
    /// The present run of input is taken for valid again: a new connection begins.
    void forgetInvalidTime() { firstInvalidTime_ = 0; }

    /// Seconds since the epoch of the last valid input.
    std::int64_t lastValidRecv() const { return lastValidRecv_; }

    /// The constructor of an account takes its own moment for the beginning of an invalid run.
    void startInvalidTime(std::int64_t now) { firstInvalidTime_ = now; }

private:
    void onText(std::string_view piece);
    void onValid(ReceivedText& text);
    void onInvalid(const ProbeResult& probe);
    bool inflatePiece(std::string_view piece, std::string& text);

    CClientClass& client_;
    CZipStream& zip_;
    ConnectionControl& connection_;
    StreamListener& listener_;
    ReceivedText partialInput_;
    XmlProbe probe_;  // of the text that waits
    std::int64_t firstInvalidTime_ = 0;
    std::int64_t lastValidRecv_ = 0;
    std::string zInput_;
};

}  // namespace protolink
