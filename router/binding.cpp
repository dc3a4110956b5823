// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "router/binding.h"

#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"

namespace protolink {

void Binding::begin() {
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
    ++progress_.authStep;
}

Routing Binding::onBind(const Stanza&) {
    if (progress_.sessionAsked) return Routing::Next;
    requestSession();
    return Routing::Done;
}

void Binding::requestSession() {
    const std::u16string id = requests_.await([this](xmlElement& iq) { sessionResult(iq); });
    const std::u16string session = lutCPW(u"session", {}, {{u"xmlns", ns::kSession}});
    ++progress_.authStep;
    output_.sendText(lutCPW(u"iq", session, {{u"id", id}, {u"type", u"set"}}));
    log(LogLevel::Debug, u"Session binding");
    progress_.sessionAsked = true;
}

void Binding::sessionResult(xmlElement& iq) {
    // Written before the test, and so on failure too.
    log(LogLevel::Debug, formatText(u"%s :: session binded, requesting server caps", client_.jid.bare));
    if (iq.GetAttribute(u"type") != u"result") {
        log(LogLevel::Warning, formatText(u"%s :: Session binding ERROR;", client_.jid.bare));
        connection_.disconnect(false);
        return;
    }
    requestServerFeatures();
    // Also where a new header had come between the question and its answer: this session stands.
    progress_.sessionAsked = true;

    const std::u16string rosterId = requests_.await([this](xmlElement& reply) { listener_.rosterResult(reply); });
    client_.hooks.notice(HookKind::SessionBound);
    log(LogLevel::Debug, formatText(u"%s :: session binded, requesting roster items", client_.jid.bare));
    output_.sendText(
        lutCPW(u"iq", lutCPW(u"query", {}, {{u"xmlns", ns::kRoster}}), {{u"id", rosterId}, {u"type", u"get"}}));
}

void Binding::requestServerFeatures() {
    const auto disco = [this](const std::u16string& id) {
        return lutCPW(u"iq", lutCPW(u"query", {}, {{u"xmlns", ns::kDiscoInfo}}),
                      {{u"to", client_.jid.domain}, {u"id", id}, {u"type", u"get"}});
    };
    requests_.ask(disco, [this](xmlElement& reply) { listener_.onServerDiscoInfo(reply); });
}

}  // namespace protolink
