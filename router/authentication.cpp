// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "router/authentication.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "host/util/base64.h"
#include "host/util/utf.h"
#include "host/util/xml_compose.h"
#include "platform/platform.h"
#include "router/namespaces.h"
#include "router/sasl.h"

namespace protolink {

namespace {

std::u16string ascii(std::string_view text) { return std::u16string(text.begin(), text.end()); }

/// Client nonce of one challenge: a fresh seed each time, and two values of the generator.
std::string makeCnonce() {
    platform::seedRandom(platform::tickCount());
    std::array<char, 17> text{};
    const std::uint32_t first = platform::nextRandom();
    const std::uint32_t second = platform::nextRandom();
    std::snprintf(text.data(), text.size(), "%08X%08X", first, second);
    return text.data();
}

}  // namespace

void Authentication::begin(const xmlElement& features) {
    const xmlElement mechanisms = features.GetChild(u"mechanisms", ns::kSasl);
    const auto offers = [&mechanisms](std::u16string_view name) {
        return std::any_of(mechanisms.children.begin(), mechanisms.children.end(),
                           [name](const xmlElement& mechanism) { return mechanism.text == name; });
    };
    if (offers(u"DIGEST-MD5")) {
        log(LogLevel::Debug, u"Authorization (DIGEST-MD5)");
        output_.sendText(lutCPW(u"auth", {}, {{u"xmlns", ns::kSasl}, {u"mechanism", u"DIGEST-MD5"}}));
    } else if (offers(u"PLAIN")) {
        log(LogLevel::Debug, u"Authorization (PLAIN)");
        if (!(client_.flags & FLAG_ENCRYPTION_ACTIVATED))
            log(LogLevel::Negotiation, u"WARNING: Plain text auth over unencrypted connection!");
        sendPlainAuth();
    } else {
        giveUpLogin();
    }
}

void Authentication::sendPlainAuth() {
    const std::string payload = lutBase64Encode(plainPayload(wtou(client_.jid.node), wtou(client_.password)));
    output_.sendText(lutCPW(u"auth", ascii(payload), {{u"xmlns", ns::kSasl}, {u"mechanism", u"PLAIN"}}));
}

void Authentication::giveUpLogin() {
    log(LogLevel::Negotiation, u"Sorry, no supported login mechanisms found (no DIGEST-MD5, nor PLAIN).");
    client_.host.logUser(
        u"Wtyczka XMPP nie może się zalogować do serwera, nie da się określić ani jednej obsługiwanej metody "
        u"autoryzacji (konto: " +
        client_.jid.bare + u"). Prawdopodobna przyczyna: to nie jest serwer zgodny z XMPP.");
    connection_.disconnect(false);
}

void Authentication::onChallenge(const Stanza& challenge) {
    if (progress_.authStep == 2) {
        log(LogLevel::Debug, u"Authorization final challenge");
        // What the server proves of itself here is not looked at.
        output_.sendText(lutCPW(u"response", {}, {{u"xmlns", ns::kSasl}}));
        ++progress_.authStep;
    } else if (++progress_.authStep == 1) {
        answerFirstChallenge(challenge.element);
    }
}

void Authentication::onSuccess(const Stanza&) {
    log(LogLevel::Error, u"Authorization OK (" + client_.jid.bare + u")");
    ++progress_.authStep;
    client_.flags &= ~static_cast<std::uint32_t>(FLAG_CONNECTING);
    client_.flags |= FLAG_AUTHORIZED;
    connection_.sendStreamHeader();
}

void Authentication::answerFirstChallenge(const xmlElement& challenge) {
    const std::string text = lutBase64Decode(wtou(challenge.text));
    const std::string cnonce = makeCnonce();
    log(LogLevel::Debug, u"Authorization challenge");
    std::string realm = digestParam(text, "realm");
    const std::string nonce = digestParam(text, "nonce");
    const std::string password = wtou(client_.password);
    const std::string user = wtou(client_.jid.node);
    const std::string host = wtou(client_.jid.domain);

    // A realm too short to be one counts as absent: the digest-uri names the host, and the realm is empty.
    const bool hasRealm = realm.size() >= 2;
    const std::string digestUri = "xmpp/" + (hasRealm ? realm : host);
    if (!hasRealm) realm.clear();

    const std::string response = digestResponse(user, realm, nonce, cnonce, password, digestUri);
    const std::string answer = "username=\"" + user + "\",realm=\"" + realm + "\",nonce=\"" + nonce + "\",cnonce=\"" +
                               cnonce + "\",nc=00000001,digest-uri=\"" + digestUri +
                               "\",qop=auth,response=" + response + ",charset=utf-8";
    output_.sendText(lutCPW(u"response", ascii(lutBase64Encode(answer)), {{u"xmlns", ns::kSasl}}));
    ++progress_.authStep;
}

}  // namespace protolink
