// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What contacts' clients can do (XEP-0115, XEP-0030).
#pragma once

#include <string_view>

#include "extensions/caps_cache.h"
#include "im/contact_entry.h"
#include "im/presence.h"
#include "plugin/client_class.h"
#include "router/stanza.h"
#include "stream/stream_output.h"

namespace protolink {

class ContactCapabilities final : public CapabilityAsker {
public:
    ContactCapabilities(CClientClass& client, StreamOutput& output, Contacts& contacts, CapsCache& cache)
        : client_(client), output_(output), contacts_(contacts), cache_(cache) {}

    /// Learns what a new resource can do: from the cache when its hash is known, else by asking it.
    void requestResourceCaps(const xmlElement& presence, std::u16string_view fromFullJid,
                             ResourceEntry& resourceRecord) override;

    /// A reply, asked for or not, of a resource that is online.
    void onDiscoInfo(const Stanza& iq);

private:
    bool replayFromCache(std::u16string_view fullJid, std::u16string_view hash);
    void takeResult(std::u16string_view from, std::u16string_view id, const xmlElement& query);
    void log(const std::u16string& text) const { client_.log(LogLevel::Debug, tag::kGeneral, text); }

    CClientClass& client_;
    StreamOutput& output_;
    Contacts& contacts_;
    CapsCache& cache_;
};

}  // namespace protolink
