#include "router/negotiation.h"

#include <algorithm>
#include <array>

#include "host/services/sockets.h"
#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"

Routing Negotiation::onFeatures(const xmlElement& features) {
    if (authStep_ != 0) {
        if (tryCompression(features)) return Routing::Abandon;
        bindResource();
        return Routing::Done;
    }
    if (tryTls(features)) return Routing::Done;
    if (connection_.registerMode) return registerAccount(features);
    authenticate(features);
    streamId_ = features.GetAttribute(u"id");
    return Routing::Done;
}

bool Negotiation::tryCompression(const xmlElement& features) {
    const xmlElement* compression = features.GetChildPtr(u"compression");
    if (!compression || !client_.settings.get(setting::kCompression)) return false;
    const bool hasZlib = std::any_of(compression->children.begin(), compression->children.end(),
                                     [](const xmlElement& method) { return method.text == u"zlib"; });
    if (!hasZlib) {
        client_.log(LogLevel::Negotiation, tag::kCompression,
                    formatText(u"Compression is available, but no supported mech found @ %s", client_.jid.bare));
        return false;
    }
    client_.log(LogLevel::Debug, tag::kCompression,
                formatText(u"Initializing stream compression (%s) @ %s", u"zlib", client_.jid.bare));
    output_.sendText(lutCPW(u"compress", lutCPW(u"method", u"zlib", {}), {{u"xmlns", ns::kCompress}}));
    return true;
}

Routing Negotiation::onCompressed(const xmlElement&) {
    // Flag and compressor together: a stanza that the host sends while it logs is compressed already.
    client_.flags |= FLAG_COMPRESSED;
    zip_.zStart();
    client_.log(LogLevel::Debug, tag::kCompression, formatText(u"Compression enabled @ %s", client_.jid.bare));
    connection_.sendStreamHeader();
    // What follows in the batch would be compressed data of the new stream.
    return Routing::Abandon;
}

bool Negotiation::tryTls(const xmlElement& features) {
    if (!features.GetChildPtr(u"starttls") || !client_.settings.get(setting::kTls)) return false;
    log(LogLevel::Debug, u"Starting TLS connection");
    output_.sendText(lutCPW(u"starttls", {}, {{u"xmlns", ns::kTls}}));
    streamId_ = features.GetAttribute(u"id");
    return true;
}

Routing Negotiation::onProceed(const xmlElement&) {
    if (!(client_.flags & FLAG_ENCRYPTION_ACTIVATED) && client_.settings.get(setting::kTls))
        Sockets(client_.host).startTls(client_.socketName);
    return Routing::Done;
}

Routing Negotiation::onSuccess(const xmlElement&) {
    log(LogLevel::Error, u"Authorization OK (" + client_.jid.bare + u")");
    ++authStep_;
    client_.flags &= ~static_cast<std::uint32_t>(FLAG_CONNECTING);
    client_.flags |= FLAG_AUTHORIZED;
    connection_.sendStreamHeader();
    return Routing::Done;
}

namespace {

/// What is logged and told when the server refuses a step of the login; "%s" is the account's bare JID.
struct FailureTexts {
    std::u16string_view xmlns;
    std::u16string_view logLine;
    std::u16string_view notice;
};

constexpr std::array<FailureTexts, 3> kFailures{{
    {ns::kSasl, u"Authorization FAILURE (%s)",
     u"Autoryzacja na koncie %s nie powiodła się, sprawdź użytkownika i hasło."},
    {ns::kCompress, u"Compression FAILURE (%s)", u"Wystapił błąd inicjowania kompresji @ %s."},
    {ns::kTls, u"TLS FAILURE (%s)",
     u"Wystapił błąd inicjowania szyfrowania (start-tls) @ %s, jeśli problem będzie się powtarzał, proszę wyłączyć "
     u"szyfrowanie dla tego konta."},
}};

}  // namespace

Routing Negotiation::onFailure(const xmlElement& failure) {
    const std::u16string_view xmlns = failure.GetAttribute(u"xmlns");
    const auto known = std::find_if(kFailures.begin(), kFailures.end(),
                                    [xmlns](const FailureTexts& texts) { return texts.xmlns == xmlns; });
    if (known != kFailures.end()) {
        client_.log(LogLevel::Negotiation, known->xmlns == ns::kCompress ? tag::kCompression : tag::kGeneral,
                    formatText(known->logLine, client_.jid.bare));
        client_.host.logUser(formatText(known->notice, client_.jid.bare));
    } else {
        log(LogLevel::Negotiation, formatText(u"Unknown FAILURE (%s, %s)", client_.jid.bare, xmlns));
    }
    endForGood();
    return Routing::Done;
}

void Negotiation::endForGood() {
    connection_.forbidReconnection();
    connection_.disconnect(false);
}

void Negotiation::bindResource() {
    log(LogLevel::Debug, u"Binding resource");
    if (!client_.jid.hasResource) {
        log(LogLevel::Negotiation, u"WARNING: No resource set (" + client_.jid.bare + u")");
        client_.host.logUser(u"Nie ustawiłeś zasobu na koncie " + client_.jid.bare +
                             u", bądź tak miły, skocz do opcji i popraw, co?");
    }
    const std::u16string resource = lutCPW(u"resource", lutXMLEscapeW(client_.jid.resource), {});
    const std::u16string bind = lutCPW(u"bind", resource, {{u"xmlns", ns::kBind}});
    // The id is registered nowhere: the reply is known by its `bind` child.
    output_.sendText(lutCPW(u"iq", bind, {{u"type", u"set"}, {u"id", generateId()}}));
    ++authStep_;
}
