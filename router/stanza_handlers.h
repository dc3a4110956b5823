// What the router hands stanzas to: the layers above it.
#pragma once

#include <string>
#include <string_view>

#include "host/util/xml_element.h"

/// One top-level element with what every handler asks of it. The views point into the element.
struct Stanza {
    xmlElement& element;
    std::u16string_view from;
    std::u16string_view type;
    std::u16string_view id;
};

class StanzaHandlers {
public:
    virtual ~StanzaHandlers() = default;

    virtual void onMessage(const Stanza& message) = 0;
    virtual void onPresence(const Stanza& presence) = 0;
    virtual void onSubscribe(const Stanza& presence) = 0;
    virtual void rosterItems(const Stanza& iq, const xmlElement& query) = 0;
    virtual void onSharedStatus(const Stanza& iq, const xmlElement& query) = 0;
    virtual void onDiscoInfo(const Stanza& iq, const xmlElement& query) = 0;
    virtual void onVersionIq(const Stanza& iq) = 0;
    virtual void onTimeIq(const Stanza& iq) = 0;
    virtual void onPingIq(const Stanza& iq) = 0;

    /// The answer to the request for the privacy list. True when the stanza was it.
    virtual bool onPrivacyReply(const Stanza& stanza) = 0;
    /// The name of an old numeric error code.
    virtual std::u16string_view httpStatusText(std::u16string_view code) const = 0;
};
