// The session behind a bound resource (RFC 3921), and the first requests after it.
#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"
#include "router/negotiation.h"

void Negotiation::requestSession() {
    const std::u16string id = generateId();
    const std::u16string session = lutCPW(u"session", {}, {{u"xmlns", ns::kSession}});
    dispatcher_.addHandler([this](xmlElement& iq, void*) { sessionResult(iq); }, id, &client_);
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
    const std::u16string discoId = generateId();
    dispatcher_.addHandler([this](xmlElement& reply, void*) { listener_.onServerDiscoInfo(reply); }, discoId, &client_);
    output_.sendText(lutCPW(u"iq", lutCPW(u"query", {}, {{u"xmlns", ns::kDiscoInfo}}),
                            {{u"to", client_.jid.domain}, {u"id", discoId}, {u"type", u"get"}}));
    ++sessionStep_;

    const std::u16string rosterId = generateId();
    dispatcher_.addHandler([this](xmlElement& reply, void*) { listener_.rosterResult(reply); }, rosterId, &client_);
    client_.hooks.notice(HookKind::SessionBound);
    log(LogLevel::Debug, formatText(u"%s :: session binded, requesting roster items", client_.jid.bare));
    output_.sendText(
        lutCPW(u"iq", lutCPW(u"query", {}, {{u"xmlns", ns::kRoster}}), {{u"id", rosterId}, {u"type", u"get"}}));
}
