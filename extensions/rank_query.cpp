// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "extensions/rank_query.h"

#include "host/util/format.h"
#include "host/util/numbers.h"
#include "host/util/xml_compose.h"
#include "router/namespaces.h"

namespace protolink {

void RankQuery::ask() {
    const std::u16string query = lutCPW(u"query", {}, {{u"xmlns", ns::kRank}});
    const auto request = [&](const std::u16string& id) {
        return lutCPW(u"iq", query, {{u"id", id}, {u"type", u"get"}});
    };
    requests_.ask(request, [this](const xmlElement& reply) { onRankResult(reply); });
}

void RankQuery::onRankResult(const xmlElement& iq) const {
    if (iq.GetAttribute(u"type") != u"result") return;
    const xmlElement* query = iq.GetChildPtr(u"query", ns::kRank);
    if (!query) return;
    const std::int32_t points = parseInt32(query->GetAttribute(u"points"));
    const std::int32_t ranking = parseInt32(query->GetAttribute(u"ranking"));
    client_.log(LogLevel::Error, tag::kGeneral,
                formatText(u"Your AQQ poke-points count is %d (ranking: %d) ;)", points, ranking));
}

}  // namespace protolink
