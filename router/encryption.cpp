// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "router/encryption.h"

#include "host/services/sockets.h"
#include "host/util/xml_compose.h"
#include "router/namespaces.h"

namespace protolink {

bool Encryption::begin(const xmlElement& features) {
    if (!features.GetChildPtr(u"starttls") || !client_.settings.get(setting::kTls)) return false;
    client_.log(LogLevel::Debug, tag::kGeneral, u"Starting TLS connection");
    output_.sendText(lutCPW(u"starttls", {}, {{u"xmlns", ns::kTls}}));
    return true;
}

void Encryption::onProceed(const Stanza&) {
    if (!(client_.flags & FLAG_ENCRYPTION_ACTIVATED) && client_.settings.get(setting::kTls))
        Sockets(client_.host).startTls(client_.socketName);
}

}  // namespace protolink
