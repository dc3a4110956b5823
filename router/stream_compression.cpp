// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "router/stream_compression.h"

#include <algorithm>

#include "host/util/format.h"
#include "host/util/xml_compose.h"
#include "router/namespaces.h"

namespace protolink {

bool StreamCompression::begin(const xmlElement& features) {
    const xmlElement* compression = features.GetChildPtr(u"compression");
    if (!compression || !client_.settings.get(setting::kCompression)) return false;
    const bool hasZlib = std::any_of(compression->children.begin(), compression->children.end(),
                                     [](const xmlElement& method) { return method.text == u"zlib"; });
    if (!hasZlib) {
        client_.log(LogLevel::Negotiation, tag::kCompression,
                    formatText(u"Compression is available, but no supported mech found @ %s", client_.jid.bare));
        return false;
    }
    client_.log(LogLevel::Debug, tag::kCompression,
                formatText(u"Initializing stream compression (%s) @ %s", u"zlib", client_.jid.bare));
    output_.sendText(lutCPW(u"compress", lutCPW(u"method", u"zlib", {}), {{u"xmlns", ns::kCompress}}));
    return true;
}

Routing StreamCompression::onCompressed(const Stanza&) {
    client_.flags |= FLAG_COMPRESSED;
    client_.log(LogLevel::Debug, tag::kCompression, formatText(u"Compression enabled @ %s", client_.jid.bare));
    zip_.zStart();
    connection_.sendStreamHeader();
    // What follows in the batch would be compressed data of the new stream.
    return Routing::Abandon;
}

}  // namespace protolink
