#include "extensions/discovery.h"

#include <array>

#include "extensions/own_caps.h"
#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "plugin/deployment.h"
#include "plugin/identifiers.h"
#include "plugin/plugin_state.h"
#include "router/namespaces.h"

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

bool hasFeature(const xmlElement& query, std::u16string_view feature) {
    return query.GetChildPtr(u"feature", u"var", feature) != nullptr;
}

/// The hash that a reply names in its node; a "#" at the very beginning names none.
std::u16string_view hashOfNode(std::u16string_view node) {
    const std::size_t mark = node.find(u'#');
    return mark == std::u16string_view::npos || mark == 0 ? std::u16string_view() : node.substr(mark + 1);
}

}  // namespace

void Discovery::onDiscoInfo(const Stanza& iq, const xmlElement& query) {
    if (iq.type == u"get") {
        reply(iq);
    } else if (iq.type == u"result") {
        takeResult(iq, query);
    }
}

void Discovery::reply(const Stanza& iq) {
    log(u"Disco#info request form: " + std::u16string(iq.from));
    std::u16string content = lutCPW(u"identity", {},
                                    {{u"category", ownCaps::kIdentityCategory},
                                     {u"type", ownCaps::kIdentityType},
                                     {u"name", ownCaps::kIdentityName}});
    for (const std::u16string_view feature : ownCaps::kFeatures) content += lutCPW(u"feature", {}, {{u"var", feature}});
    const std::u16string node = formatText(u"%s#%s", deployment::CAPS_NODE, ownCapsVer());
    const std::u16string query = lutCPW(u"query", content, {{u"xmlns", ns::kDiscoInfo}, {u"node", node}});
    output_.sendText(lutCPW(u"iq", query, {{u"to", iq.from}, {u"id", iq.id}, {u"type", u"result"}}));
}

void Discovery::requestResourceCaps(const xmlElement& presence, std::u16string_view fullJid, ResourceEntry& resource) {
    if (const xmlElement* caps = presence.GetChildPtr(u"c", ns::kCaps)) {
        const std::u16string_view hash = caps->GetAttribute(u"ver");
        if (caps->GetAttribute(u"hash") == u"sha-1" && !hash.empty()) {
            resource.resCapsVer = hash;
            if (replayFromCache(fullJid, hash)) return;
        }
    }
    // The answer is registered nowhere: it comes back through the router.
    output_.sendText(lutCPW(u"iq", lutCPW(u"query", {}, {{u"xmlns", ns::kDiscoInfo}}),
                            {{u"to", fullJid}, {u"id", generateId()}, {u"type", u"get"}}));
}

bool Discovery::replayFromCache(std::u16string_view fullJid, std::u16string_view hash) {
    const xmlElement* entry = cache_.find(hash);
    if (!entry) return false;
    // Looked up before the host is called: it may call back and add to the cache.
    const xmlElement* query = entry->GetChildPtr(u"query");
    log(formatText(u"Caps in cache, creating fake response (%s)", fullJid));
    if (query) {
        xmlElement iq(u"iq");
        onDiscoInfo({iq, fullJid, u"result", kReplayId}, *query);
    }
    return true;
}

void Discovery::takeResult(const Stanza& iq, const xmlElement& query) {
    log(u"disco#info result form: " + std::u16string(iq.from));
    const JID sender = parseJID(iq.from);
    ResourceEntry* resource = contacts_.findResource(sender.bare, sender.resource);
    if (!resource) return;
    resource->resDiscoDone = 1;
    if (iq.id != kReplayId) {
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

bool Discovery::detect(const xmlElement& query, std::u16string_view feature, std::u16string_view text) const {
    if (!hasFeature(query, feature)) return false;
    log(std::u16string(text));
    return true;
}
