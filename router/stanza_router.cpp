#include "router/stanza_router.h"

#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"

/// An iq with the children that decide where it goes, all looked up before the first decision.
struct StanzaRouter::Iq : Stanza {
    explicit Iq(const Stanza& stanza)
        : Stanza(stanza),
          query(element.GetChildPtr(u"query")),
          queryNamespace(query ? query->GetAttribute(u"xmlns") : std::u16string_view()) {}

    bool has(std::u16string_view child) const { return element.GetChildPtr(child) != nullptr; }
    bool has(std::u16string_view child, std::u16string_view xmlns) const {
        return element.GetChildPtr(child, xmlns) != nullptr;
    }
    bool asks(std::u16string_view xmlns) const { return query && queryNamespace == xmlns; }

    const xmlElement* query;
    std::u16string_view queryNamespace;
};

struct StanzaRouter::IqRow {
    const char* name;
    bool (*matches)(const StanzaRouter& router, const Iq& iq);
    void (*handle)(StanzaRouter& router, const Iq& iq);
};

namespace {

/// Rows whose feature the plugin does not have claim their element all the same, and it goes no further.
constexpr auto kDrop = [](auto&, const auto&) {};

bool firstChildIs(const xmlElement& element, std::u16string_view xmlns) {
    return !element.children.empty() && element.children.front().GetAttribute(u"xmlns") == xmlns;
}

}  // namespace

// clang-format off
const StanzaRouter::IqRow StanzaRouter::kIqRows[] = {
    {"in-band bytes",
     [](const StanzaRouter&, const Iq& iq) { return firstChildIs(iq.element, ns::kIbb); }, kDrop},
    {"stream initiation",
     [](const StanzaRouter&, const Iq& iq) { return iq.has(u"si", ns::kStreamInitiation); }, kDrop},
    {"http confirmation",
     [](const StanzaRouter&, const Iq& iq) { return iq.has(u"confirm", ns::kHttpAuth); }, kDrop},
    {"time",
     [](const StanzaRouter&, const Iq& iq) { return iq.has(u"time", ns::kTime); },
     [](StanzaRouter& router, const Iq& iq) { router.handlers_.onTimeIq(iq); }},
    {"ping",
     [](const StanzaRouter&, const Iq& iq) { return iq.type == u"get" && iq.has(u"ping", ns::kPing); },
     [](StanzaRouter& router, const Iq& iq) { router.handlers_.onPingIq(iq); }},
    {"disco",
     [](const StanzaRouter&, const Iq& iq) { return iq.asks(ns::kDiscoInfo); },
     [](StanzaRouter& router, const Iq& iq) { router.handlers_.onDiscoInfo(iq, *iq.query); }},
    {"shared status",
     [](const StanzaRouter&, const Iq& iq) { return iq.asks(ns::kSharedStatus); },
     [](StanzaRouter& router, const Iq& iq) { router.handlers_.onSharedStatus(iq, *iq.query); }},
    {"roster push",
     [](const StanzaRouter&, const Iq& iq) { return iq.asks(ns::kRoster); },
     [](StanzaRouter& router, const Iq& iq) { router.handlers_.rosterItems(iq, *iq.query); }},
    {"version",
     [](const StanzaRouter&, const Iq& iq) { return iq.asks(ns::kVersion); },
     [](StanzaRouter& router, const Iq& iq) { router.handlers_.onVersionIq(iq); }},
    {"avatar reply",
     [](const StanzaRouter&, const Iq& iq) { return iq.type == u"result" && iq.asks(ns::kAvatar); }, kDrop},
    {"avatar request",
     [](const StanzaRouter&, const Iq& iq) { return iq.type == u"get" && iq.asks(ns::kAvatar); }, kDrop},
    {"mailbox",
     [](const StanzaRouter&, const Iq& iq) { return iq.has(u"mailbox"); }, kDrop},
    {"new mail",
     [](const StanzaRouter&, const Iq& iq) { return iq.has(u"new-mail"); },
     [](StanzaRouter& router, const Iq& iq) { router.answerNewMail(iq); }},
    {"bind",
     [](const StanzaRouter& router, const Iq& iq) { return !router.negotiation_.sessionRequested() && iq.has(u"bind"); },
     [](StanzaRouter& router, const Iq&) { router.negotiation_.requestSession(); }},
};
// clang-format on

struct StanzaRouter::PresenceRow {
    std::u16string_view type;
    void (*handle)(StanzaRouter& router, const Stanza& presence);
};

// The roster pushes that follow a change of subscription carry it, so the presences that announce one are dropped.
const StanzaRouter::PresenceRow StanzaRouter::kPresenceRows[] = {
    {u"error", [](StanzaRouter& router, const Stanza& presence) { router.onErrorPresence(presence); }},
    {u"subscribe", [](StanzaRouter& router, const Stanza& presence) { router.handlers_.onSubscribe(presence); }},
    {u"subscribed", kDrop},
    {u"unsubscribe", kDrop},
    {u"unsubscribed", kDrop},
    {u"probe", kDrop},
};

struct StanzaRouter::StreamRow {
    std::u16string_view name;
    BatchFate (Negotiation::*handle)(const xmlElement&);
};

const StanzaRouter::StreamRow StanzaRouter::kStreamRows[] = {
    {u"compressed", &Negotiation::onCompressed}, {u"stream:features", &Negotiation::onFeatures},
    {u"proceed", &Negotiation::onProceed},       {u"success", &Negotiation::onSuccess},
    {u"failure", &Negotiation::onFailure},       {u"challenge", &Negotiation::onChallenge},
};

void StanzaRouter::routeElements(XmlSequence& batch) {
    xmlElement element;
    while (batch.next(element))
        if (route(element) == BatchFate::Abandon) return;
}

BatchFate StanzaRouter::route(xmlElement& element) {
    if (dispatcher_.dispatch(element)) return BatchFate::GoOn;
    const Stanza stanza{element, element.GetAttribute(u"from"), element.GetAttribute(u"type"),
                        element.GetAttribute(u"id")};
    if (handlers_.onPrivacyReply(stanza)) return BatchFate::GoOn;
    if (element.name == u"message") {
        routeMessage(stanza);
    } else if (element.name == u"presence") {
        routePresence(stanza);
    } else if (element.name == u"iq") {
        routeIq(stanza);
    } else {
        return routeStreamLevel(element);
    }
    return BatchFate::GoOn;
}

void StanzaRouter::routeMessage(const Stanza& message) {
    // Events of PubSub and questions for a confirmation are no conversation; the plugin drops both.
    if (message.element.GetChildPtr(u"event", ns::kPubSubEvent)) return;
    if (message.element.GetChildPtr(u"confirm", ns::kHttpAuth)) return;
    handlers_.onMessage(message);
}

void StanzaRouter::routePresence(const Stanza& presence) {
    for (const PresenceRow& row : kPresenceRows)
        if (row.type == presence.type) return row.handle(*this, presence);
    handlers_.onPresence(presence);
}

void StanzaRouter::routeIq(const Stanza& stanza) {
    const Iq iq(stanza);
    for (const IqRow& row : kIqRows)
        if (row.matches(*this, iq)) return row.handle(*this, iq);
}

BatchFate StanzaRouter::routeStreamLevel(const xmlElement& element) {
    for (const StreamRow& row : kStreamRows)
        if (row.name == element.name) return (negotiation_.*row.handle)(element);
    return BatchFate::GoOn;
}

void StanzaRouter::onErrorPresence(const Stanza& presence) {
    showErrorAsStatus(presence);
    handlers_.onPresence(presence);
}

void StanzaRouter::showErrorAsStatus(const Stanza& presence) {
    xmlElement* status = presence.element.GetChildPtr(u"status");
    if (!status) return;
    const xmlElement error = presence.element.GetChild(u"error");
    const std::u16string_view code = error.GetAttribute(u"code");
    status->text = error.text.empty() ? formatText(u"Błąd (%s): %s", code, handlers_.httpStatusText(code)) : error.text;
}

void StanzaRouter::answerNewMail(const Iq& iq) {
    output_.sendText(lutCPW(u"iq", {}, {{u"type", u"result"}, {u"to", iq.from}, {u"id", iq.id}}));
    const std::u16string query = lutCPW(u"query", {}, {{u"xmlns", u"google:mail:notify"}});
    output_.sendText(lutCPW(u"iq", query, {{u"to", client_.jid.bare}, {u"id", generateId()}, {u"type", u"get"}}));
}
