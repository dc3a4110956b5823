// One decision chain for all received top-level elements: each goes to exactly one handler, and the order decides.
#pragma once

#include "host/util/xml_parse.h"
#include "plugin/client_class.h"
#include "router/event_dispatcher.h"
#include "router/negotiation.h"
#include "router/stanza_handlers.h"
#include "stream/stream_output.h"

class StanzaRouter {
public:
    StanzaRouter(CClientClass& client, CProtoEventDispatcher& dispatcher, Negotiation& negotiation,
                 StreamOutput& output, StanzaHandlers& handlers)
        : client_(client), dispatcher_(dispatcher), negotiation_(negotiation), output_(output), handlers_(handlers) {}

    /// Routes the elements of one received text in order. An element that fits nowhere is dropped without a word;
    /// senders are not checked, and nothing unknown is answered.
    void routeElements(XmlSequence& batch);

private:
    struct Iq;
    struct IqRow;
    struct PresenceRow;
    struct StreamRow;
    static const IqRow kIqRows[];
    static const PresenceRow kPresenceRows[];
    static const StreamRow kStreamRows[];

    BatchFate route(xmlElement& element);
    void routeMessage(const Stanza& message);
    void routePresence(const Stanza& presence);
    void routeIq(const Stanza& iq);
    BatchFate routeStreamLevel(const xmlElement& element);

    void showErrorAsStatus(const Stanza& presence);
    void onErrorPresence(const Stanza& presence);
    void answerNewMail(const Iq& iq);

    CClientClass& client_;
    CProtoEventDispatcher& dispatcher_;
    Negotiation& negotiation_;
    StreamOutput& output_;
    StanzaHandlers& handlers_;
};
