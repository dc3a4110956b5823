// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// One account's connection: begun by a status, ended by one, and everything that holds for its length.
#pragma once

#include <cstdint>
#include <string>

#include "plugin/client_class.h"
#include "stream/connection_control.h"
#include "stream/endpoint.h"
#include "stream/reconnection.h"
#include "stream/stream_input.h"
#include "stream/stream_listener.h"
#include "stream/stream_output.h"
#include "stream/zip_stream.h"

namespace protolink {

class Connection final : public ConnectionControl {
public:
    Connection(CClientClass& client, CZipStream& zip, StreamOutput& output, Reconnection& reconnection,
               StreamListener& listener);

    StreamInput& input() { return input_; }

    /// The one door to connecting and disconnecting. The third argument is accepted and read by nobody.
    OKU_WORD setStatus(Status status, const std::u16string& description, OKU_WORD flagsWord);
    void connect();
    OKU_WORD disconnect(bool closeSocket) override;
    void expectReconnection() override { reconnection_.expect(); }
    /// Sends the opening of the stream, again at each restart. Returns the send's result.
    std::int32_t sendStreamHeader();
    /// Returns the account to its unconnected form.
    void resetState();

    /// The host's callback for the reconnection timer. Always 1.
    OKU_WORD onReconnectTimer(OKU_WORD timerEvent);

    /// The connection that follows is to register a new account, with the address and password that the account has
    /// now.
    void beginRegistration();
    /// Nobody waits for that account any more. A connection that stands may still make it; no later one will, as it
    /// would be taken for the login of the account that the user has.
    void leaveRegistration();
    /// Whether the connection that has ended stood only for an account that was given up and not made so far, and no
    /// status was chosen since. Told once.
    bool takeEndForNobody();

    std::uint32_t registerMode = 0;  // this connection exists to register a new account
    std::uint32_t avatarEnabled = 0;

private:
    bool hasCredentials() const;
    void dial(const Endpoint& endpoint);

    CClientClass& client_;
    CZipStream& zip_;
    StreamOutput& output_;
    Reconnection& reconnection_;
    StreamListener& listener_;
    StreamInput input_;
    bool registrationLeft_ = false;  // `registerMode` ends with the connection
    bool endForNobody_ = false;
};

}  // namespace protolink
