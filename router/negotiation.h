// From a connected socket to a bound session: encryption, registration, authentication, compression, binding.
//
// The path of a login with everything in it, each line one step of this class:
//   features -> starttls        proceed -> TLS, header
//   features -> auth            challenge -> response (twice)      success -> header
//   features -> compress        compressed -> header
//   features -> bind            bind's result -> session           session's result -> disco, roster
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/util/xml_element.h"
#include "plugin/client_class.h"
#include "router/requests.h"
#include "stream/connection.h"

/// What negotiation asks of the layers above it once the session is bound.
class SessionListener {
public:
    virtual ~SessionListener() = default;
    /// The server's answer to the question for its features.
    virtual void onServerDiscoInfo(xmlElement& iq) = 0;
    /// The server's answer to the roster request.
    virtual void rosterResult(xmlElement& iq) = 0;
};

class Negotiation {
public:
    Negotiation(CClientClass& client, CZipStream& zip, StreamOutput& output, Connection& connection, Requests& requests,
                SessionListener& listener)
        : client_(client),
          zip_(zip),
          output_(output),
          connection_(connection),
          requests_(requests),
          listener_(listener) {}

    // Stream-level elements.
    Routing onFeatures(const xmlElement& features);
    Routing onProceed(const xmlElement& proceed);
    Routing onSuccess(const xmlElement& success);
    Routing onFailure(const xmlElement& failure);
    Routing onChallenge(const xmlElement& challenge);
    Routing onCompressed(const xmlElement& compressed);

    /// An iq with a `bind` child: while no session has been asked for, it is asked for, whatever the reply says.
    Routing onBind(const Stanza& iq);

    void forgetSession() { sessionStep_ = 0; }
    void forgetAuthentication() { authStep_ = 0; }

private:
    bool tryCompression(const xmlElement& features);
    void bindResource();
    bool tryTls(const xmlElement& features);
    Routing registerAccount(const xmlElement& features);
    void registerResult(xmlElement& iq);
    void authenticate(const xmlElement& features);
    void sendPlainAuth();
    void giveUpLogin();
    void answerFirstChallenge(const xmlElement& challenge);
    void requestSession();
    void sessionResult(xmlElement& iq);
    void endForGood();
    void log(LogLevel level, const std::u16string& text) const { client_.log(level, tag::kGeneral, text); }

    CClientClass& client_;
    CZipStream& zip_;
    StreamOutput& output_;
    Connection& connection_;
    Requests& requests_;
    SessionListener& listener_;
    std::uint32_t authStep_ = 0;     // non-zero once authentication is over; DIGEST-MD5 counts its challenges in it
    std::uint32_t sessionStep_ = 0;  // 0 none, 2 the session was asked for, 3 bound
    std::u16string streamId_;
};
