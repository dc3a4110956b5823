// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The login's last step: a bound resource (RFC 6120, 7), its session (RFC 3921), and the first requests after it.
#pragma once

#include "plugin/client_class.h"
#include "router/login_progress.h"
#include "router/requests.h"
#include "router/routing.h"
#include "router/stanza.h"
#include "stream/connection.h"
#include "stream/stream_output.h"

namespace protolink {

/// What the login asks of the layers above it once the session is bound.
class SessionListener {
public:
    virtual ~SessionListener() = default;
    /// The server's answer to the question for its features.
    virtual void onServerDiscoInfo(xmlElement& iq) = 0;
    /// The server's answer to the roster request.
    virtual void rosterResult(xmlElement& iq) = 0;
};

class Binding {
public:
    Binding(CClientClass& client, StreamOutput& output, Connection& connection, Requests& requests,
            LoginProgress& progress, SessionListener& listener)
        : client_(client),
          output_(output),
          connection_(connection),
          requests_(requests),
          progress_(progress),
          listener_(listener) {}

    void begin();
    /// An iq with a `bind` child: while no session has been asked for, it is asked for, whatever the reply says.
    Routing onBind(const Stanza& iq);

private:
    void requestSession();
    void sessionResult(xmlElement& iq);
    void requestServerFeatures();
    void log(LogLevel level, const std::u16string& text) const { client_.log(level, tag::kGeneral, text); }

    CClientClass& client_;
    StreamOutput& output_;
    Connection& connection_;
    Requests& requests_;
    LoginProgress& progress_;
    SessionListener& listener_;
};

}  // namespace protolink
