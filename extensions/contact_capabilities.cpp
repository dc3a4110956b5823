// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "extensions/contact_capabilities.h"

#include <array>

#include "extensions/disco_query.h"
#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "plugin/identifiers.h"
#include "router/namespaces.h"

namespace protolink {

namespace {

/// The id of a reply that was made up from the cache, and is not to be stored again.
constexpr std::u16string_view kReplayId = u"fake";

struct ResourceFeature {
    std::u16string_view feature;
    std::uint32_t ResourceEntry::*field;
    std::u16string_view logText;
};

constexpr std::array<ResourceFeature, 4> kResourceFeatures{{
    {ns::kChatStates, &ResourceEntry::resChatStates, u"\tdetected: XEP-0085 (Chat States)"},
    {ns::kPing, &ResourceEntry::resPing, u"\tdetected: XEP-0199 (Ping)"},
    {ns::kCaps, &ResourceEntry::resCaps, u"\tdetected: XEP-0115 (Caps)"},
    {ns::kFileTransfer, &ResourceEntry::resFileTransfer, u"\tdetected: XEP-0096 (FileTransfer)"},
}};

/// The hash that a reply names in its node; a "#" at the very beginning names none.
std::u16string_view hashOfNode(std::u16string_view node) {
    const std::size_t mark = node.find(u'#');
    return mark == std::u16string_view::npos || mark == 0 ? std::u16string_view() : node.substr(mark + 1);
}

}  // namespace

void ContactCapabilities::requestResourceCaps(const xmlElement& presence, std::u16string_view fromFullJid,
                                              ResourceEntry& resourceRecord) {
    if (const xmlElement* caps = presence.GetChildPtr(u"c", ns::kCaps)) {
        const std::u16string_view hash = caps->GetAttribute(u"ver");
        if (caps->GetAttribute(u"hash") == u"sha-1" && !hash.empty()) {
            resourceRecord.resCapsVer = hash;
            if (replayFromCache(fromFullJid, hash)) return;
        }
    }
    // The answer is registered nowhere: it comes back through the router.
    output_.sendText(lutCPW(u"iq", lutCPW(u"query", {}, {{u"xmlns", ns::kDiscoInfo}}),
                            {{u"to", fromFullJid}, {u"id", generateId()}, {u"type", u"get"}}));
}

bool ContactCapabilities::replayFromCache(std::u16string_view fullJid, std::u16string_view hash) {
    const xmlElement* entry = cache_.find(hash);
    if (!entry) return false;
    // Looked up before the host is called: it may call back and add to the cache.
    const xmlElement* query = entry->GetChildPtr(u"query");
    log(formatText(u"Caps in cache, creating fake response (%s)", fullJid));
    if (query) takeResult(fullJid, kReplayId, *query);
    return true;
}

void ContactCapabilities::onDiscoInfo(const Stanza& iq) { takeResult(iq.from, iq.id, *iq.query()); }

void ContactCapabilities::takeResult(std::u16string_view from, std::u16string_view id, const xmlElement& query) {
    log(u"disco#info result form: " + std::u16string(from));
    const JID sender = parseJID(from);
    ResourceEntry* resource = contacts_.findResource(sender.bare, sender.resource);
    if (!resource) return;
    resource->resDiscoDone = 1;
    if (id != kReplayId) {
        const std::u16string_view named = hashOfNode(query.GetAttribute(u"node"));
        const std::u16string_view hash = named.empty() ? std::u16string_view(resource->resCapsVer) : named;
        // Whether the answer really has this hash is not computed: the first one to claim it is believed.
        if (!hash.empty()) cache_.add(query, hash);
    }
    for (const ResourceFeature& row : kResourceFeatures) {
        if (!hasFeature(query, row.feature)) continue;
        // Looked up each time: the host may call back while it logs, and the resource may go.
        resource = contacts_.findResource(sender.bare, sender.resource);
        if (resource) resource->*row.field = 1;
        log(std::u16string(row.logText));
    }
}

}  // namespace protolink
