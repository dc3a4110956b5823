// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The login's step that proves who the account is (RFC 6120, 6): choice of the mechanism, and the exchange that
// follows.
#pragma once

#include "plugin/client_class.h"
#include "router/login_progress.h"
#include "router/stanza.h"
#include "stream/connection.h"
#include "stream/stream_output.h"

namespace protolink {

class Authentication {
public:
    Authentication(CClientClass& client, StreamOutput& output, Connection& connection, LoginProgress& progress)
        : client_(client), output_(output), connection_(connection), progress_(progress) {}

    /// Begins with the best mechanism that the server offers, or gives up.
    void begin(const xmlElement& features);
    void onChallenge(const Stanza& challenge);
    void onSuccess(const Stanza& success);

private:
    void sendPlainAuth();
    void giveUpLogin();
    void answerFirstChallenge(const xmlElement& challenge);
    void log(LogLevel level, const std::u16string& text) const { client_.log(level, tag::kGeneral, text); }

    CClientClass& client_;
    StreamOutput& output_;
    Connection& connection_;
    LoginProgress& progress_;
};

}  // namespace protolink
