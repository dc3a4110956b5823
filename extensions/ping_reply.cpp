// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "extensions/ping_reply.h"

#include "host/util/xml_compose.h"

namespace protolink {

void PingReply::onPingIq(const Stanza& iq) const {
    if (iq.id.empty() || iq.from.empty()) return;
    output_.sendText(lutCPW(u"iq", {}, {{u"to", iq.from}, {u"id", iq.id}, {u"type", u"result"}}));
}

}  // namespace protolink
