// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "extensions/server_discovery.h"

#include "extensions/disco_query.h"
#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "plugin/deployment.h"
#include "router/namespaces.h"

namespace protolink {

void ServerDiscovery::onServerDiscoInfo(const xmlElement& iq) {
    const xmlElement* query = iq.GetChildPtr(u"query");
    if (!query) return;
    if (detect(*query, ns::kMailNotify, u"\tdetected: Google Mail Notify")) {
        if (client_.settings.get(setting::kMail)) mail_.requestMailbox();
        features_.serverHasMailNotify = 1;
    }
    if (detect(*query, u"presence-invisible", u"\tdetected: XEP-0018 (Invisibility, legacy)"))
        features_.serverHasInvisibility = 1;
    if (detect(*query, ns::kPrivacy, u"\tdetected: XEP-0016 (Privacy-Lists)")) enablePrivacyLists();
    if (detect(*query, ns::kPrivateStorage, u"\tdetected: XEP-0049 (Private XML Storage)"))
        features_.serverHasPrivateStorage = 1;
    if (detect(*query, ns::kSharedStatus, u"\tdetected: Google Shared Status")) requestSharedStatus();
    if (detect(*query, ns::kPubSub, u"\tdetected: XEP-0060 (Publish-Subscribe)")) detectPubSub(*query);
    if (client_.jid.domain == deployment::kAqqDomain && !features_.serverHasPrivacyLists) {
        log(formatText(u"\tdetected: XEP-0016 (enforced on not-quite-normal %s)", deployment::kAqqDomain));
        enablePrivacyLists();
    }
    if (hasFeature(*query, ns::kRank)) {
        rank_.ask();
        log(u"\tdetected: AQQ-PQPR (Poke-Points and Poke-Ranking)");
    }
}

void ServerDiscovery::enablePrivacyLists() {
    features_.serverHasPrivacyLists = 1;
    privacy_.privacyUpdate(true);
}

void ServerDiscovery::requestSharedStatus() {
    features_.serverHasSharedStatus = 1;
    const std::u16string query = lutCPW(u"query", {}, {{u"version", u"2"}, {u"xmlns", ns::kSharedStatus}});
    const auto request = [&](const std::u16string& id) {
        return lutCPW(u"iq", query, {{u"id", id}, {u"to", client_.jid.bare}, {u"type", u"get"}});
    };
    requests_.ask(request, [this](xmlElement& reply) { presence_.sharedStatusResult(reply); });
}

void ServerDiscovery::detectPubSub(const xmlElement& query) {
    features_.serverHasPubSub = 1;
    if (detect(query, ns::kPublishOptions, u"\tdetected: XEP-0060 (+Publish Options)"))
        features_.serverHasPublishOptions = 1;
    if (query.GetChildPtr(u"identity", u"type", u"pep")) {
        log(u"\tdetected: XEP-0163 (PEP Profile)");
        features_.serverHasPEP = 1;
    }
}

bool ServerDiscovery::detect(const xmlElement& query, std::u16string_view feature, std::u16string_view text) const {
    if (!hasFeature(query, feature)) return false;
    log(std::u16string(text));
    return true;
}

}  // namespace protolink
