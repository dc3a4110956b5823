// Service discovery (XEP-0030) and entity capabilities (XEP-0115): what this client tells of itself, and what it learns
// of contacts' clients and of its server.
#pragma once

#include <string>
#include <string_view>

#include "extensions/caps_cache.h"
#include "host/util/xml_element.h"
#include "im/contact_entry.h"
#include "im/presence.h"
#include "im/privacy_lists.h"
#include "im/server_features.h"
#include "plugin/client_class.h"
#include "router/event_dispatcher.h"
#include "router/stanza_handlers.h"
#include "stream/stream_output.h"

class Discovery final : public CapabilityAsker {
public:
    Discovery(CClientClass& client, StreamOutput& output, CProtoEventDispatcher& dispatcher, Contacts& contacts,
              ServerFeatures& features, PrivacyLists& privacy, CapsCache& cache)
        : client_(client),
          output_(output),
          dispatcher_(dispatcher),
          contacts_(contacts),
          features_(features),
          privacy_(privacy),
          cache_(cache) {}
    void attach(Presence& presence) { presence_ = &presence; }

    /// A request or a result; anything else is ignored.
    void onDiscoInfo(const Stanza& iq, const xmlElement& query);

    /// Learns what a new resource can do: from the cache when its hash is known, else by asking it.
    void requestResourceCaps(const xmlElement& presence, std::u16string_view fullJid, ResourceEntry& resource) override;

    /// The server's answer to the question for its features.
    void onServerDiscoInfo(const xmlElement& iq);

private:
    void reply(const Stanza& iq);
    void takeResult(const Stanza& iq, const xmlElement& query);
    bool replayFromCache(std::u16string_view fullJid, std::u16string_view hash);
    void requestSharedStatus();
    void enablePrivacyLists();
    void detectPubSub(const xmlElement& query);
    bool detect(const xmlElement& query, std::u16string_view feature, std::u16string_view text) const;
    void log(const std::u16string& text) const { client_.log(LogLevel::Debug, tag::kGeneral, text); }

    CClientClass& client_;
    StreamOutput& output_;
    CProtoEventDispatcher& dispatcher_;
    Contacts& contacts_;
    ServerFeatures& features_;
    PrivacyLists& privacy_;
    CapsCache& cache_;
    Presence* presence_ = nullptr;
};
