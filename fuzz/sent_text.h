// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Whatever comes in, what goes out has to be whole: one stanza, or the stream's opening or closing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/input.h"
#include "host/oku/protocol.h"
#include "host/util/xml_parse.h"
#include "tests/support/plain_probe.h"
#include "tests/torture/client.h"

namespace fuzz {

/// Of a stream that is compressed nothing is looked at here: any server may begin that, and all that goes out then are
/// the bytes of zlib.
inline void requireWhole(const torture::Client& client, std::uint32_t net, std::string_view sent) {
    if (client.flags(net) & OKU_FLAG_COMPRESSED) return;
    if (sent.starts_with("<?xml version=\"1.0\"?><stream:stream ") || sent == "</stream:stream>") return;
    require(probePlainly(sent).balanced, "what is sent is not balanced");
    std::vector<xmlElement> elements;
    lutXMLParseA(elements, sent);
    require(elements.size() == 1, "what is sent is not one element");
}

}  // namespace fuzz
