// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "extensions/disco_replies.h"

#include "extensions/own_caps.h"
#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "plugin/deployment.h"
#include "router/namespaces.h"

namespace protolink {

void DiscoReplies::onDiscoInfo(const Stanza& iq) const {
    client_.log(LogLevel::Debug, tag::kGeneral, u"Disco#info request form: " + std::u16string(iq.from));
    std::u16string content = lutCPW(u"identity", {},
                                    {{u"category", ownCaps::kIdentityCategory},
                                     {u"type", ownCaps::kIdentityType},
                                     {u"name", ownCaps::kIdentityName}});
    for (const std::u16string_view feature : ownCaps::kFeatures) content += lutCPW(u"feature", {}, {{u"var", feature}});
    const std::u16string node = formatText(u"%s#%s", deployment::CAPS_NODE, own_.ownCapsVer);
    const std::u16string query = lutCPW(u"query", content, {{u"xmlns", ns::kDiscoInfo}, {u"node", node}});
    output_.sendText(lutCPW(u"iq", query, {{u"to", iq.from}, {u"id", iq.id}, {u"type", u"result"}}));
}

}  // namespace protolink
