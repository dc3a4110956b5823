// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "extensions/version_reply.h"

#include "host/util/xml_compose.h"
#include "platform/platform.h"
#include "router/namespaces.h"

namespace protolink {

void VersionReply::onVersionIq(const Stanza& iq) const {
    if (iq.type != u"get") return;
    client_.log(LogLevel::Debug, tag::kGeneral, u"Version info request form: " + std::u16string(iq.from));
    const std::u16string content = lutCPW(u"name", u"OKF") + lutCPW(u"version", u"0.7.61.1311") +
                                   lutCPW(u"os", lutXMLEscapeW(platform::operatingSystem())) +
                                   lutCPW(u"plugin", u"protoLink");
    output_.sendText(lutCPW(u"iq", lutCPW(u"query", content, {{u"xmlns", ns::kVersion}}),
                            {{u"type", u"result"}, {u"to", iq.from}, {u"id", iq.id}}));
}

}  // namespace protolink
