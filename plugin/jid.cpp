// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/jid.h"

#include <algorithm>

#include "host/util/letter_case.h"

namespace protolink {

JID parseJID(std::u16string_view text) {
    constexpr auto kNone = std::u16string_view::npos;
    const std::size_t at = text.find(u'@');
    const std::size_t slash = text.find(u'/');
    // The two searches know nothing of each other: a "/" before the "@" leaves no room for a domain.
    const std::size_t begin = at == kNone ? 0 : at + 1;
    const std::size_t end = std::max(begin, std::min(slash, text.size()));
    const std::u16string_view bare = text.substr(0, end);
    const std::u16string_view resource = slash == kNone ? std::u16string_view() : text.substr(slash + 1);

    JID jid{.node = std::u16string(text.substr(0, at == kNone ? 0 : at)),
            .domain = std::u16string(text.substr(begin, end - begin)),
            .resource = std::u16string(resource),
            .bare = std::u16string(bare),
            .full = {},
            .hasNode = at != kNone,
            .hasResource = slash != kNone};
    // The full form keeps the case of the input on purpose.
    jid.full.reserve(bare.size() + 1 + resource.size());
    jid.full = bare;
    if (jid.hasResource) (jid.full += u'/') += resource;
    for (std::u16string* part : {&jid.domain, &jid.node, &jid.bare}) makeLowerCase(*part);
    return jid;
}

}  // namespace protolink
