// The session behind a bound resource (RFC 3921), and the first requests after it.
#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "router/namespaces.h"
#include "router/negotiation.h"

Routing Negotiation::onBind(const Stanza&) {
    if (sessionStep_ != 0) return Routing::Next;
    requestSession();
    return Routing::Done;
}

void Negotiation::requestSession() {
    const std::u16string id = requests_.await([this](xmlElement& iq) { sessionResult(iq); });
    const std::u16string session = lutCPW(u"session", {}, {{u"xmlns", ns::kSession}});
    ++authStep_;
    output_.sendText(lutCPW(u"iq", session, {{u"id", id}, {u"type", u"set"}}));
    log(LogLevel::Debug, u"Session binding");
    sessionStep_ = 2;
}

void Negotiation::sessionResult(xmlElement& iq) {
    // Written before the test, and so on failure too.
    log(LogLevel::Debug, formatText(u"%s :: session binded, requesting server caps", client_.jid.bare));
    if (iq.GetAttribute(u"type") != u"result") {
        log(LogLevel::Warning, formatText(u"%s :: Session binding ERROR;", client_.jid.bare));
        connection_.disconnect(false);
        return;
    }
    const auto disco = [this](const std::u16string& id) {
        return lutCPW(u"iq", lutCPW(u"query", {}, {{u"xmlns", ns::kDiscoInfo}}),
                      {{u"to", client_.jid.domain}, {u"id", id}, {u"type", u"get"}});
    };
    requests_.ask(disco, [this](xmlElement& reply) { listener_.onServerDiscoInfo(reply); });
    ++sessionStep_;

    const std::u16string rosterId = requests_.await([this](xmlElement& reply) { listener_.rosterResult(reply); });
    client_.hooks.notice(HookKind::SessionBound);
    log(LogLevel::Debug, formatText(u"%s :: session binded, requesting roster items", client_.jid.bare));
    output_.sendText(
        lutCPW(u"iq", lutCPW(u"query", {}, {{u"xmlns", ns::kRoster}}), {{u"id", rosterId}, {u"type", u"get"}}));
}
