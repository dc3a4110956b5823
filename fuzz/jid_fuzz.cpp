// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Any text as an address, against a reading by the letter.
#include <string>

#include "fuzz/input.h"
#include "host/util/letter_case.h"
#include "host/util/utf.h"
#include "plugin/jid.h"

using namespace protolink;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string text = utow({reinterpret_cast<const char*>(data), size});
    const JID jid = parseJID(text);
    std::u16string node, domain, resource;
    std::size_t at = 0, slash = 0;
    while (at < text.size() && text[at] != u'@') ++at;
    while (slash < text.size() && text[slash] != u'/') ++slash;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (at < text.size() && i < at) node += text[i];
        if ((at == text.size() || i > at) && i < slash) domain += text[i];
        if (i > slash) resource += text[i];
    }
    fuzz::require(jid.node == lowerCase(node) && jid.domain == lowerCase(domain), "another node or domain");
    fuzz::require(jid.resource == resource && jid.hasResource == (slash < text.size()), "another resource");
    fuzz::require(jid.hasNode == (at < text.size()), "a node where there is none");
    const std::u16string bare = at < text.size() ? node + u'@' + domain : domain;
    fuzz::require(jid.bare == lowerCase(bare), "another bare address");
    fuzz::require(jid.full == (slash < text.size() ? bare + u'/' + resource : bare), "another full address");
    fuzz::require(lowerCase(lowerCase(text)) == lowerCase(text) && lowerCase(text).size() == text.size(),
                  "lower case is not settled");
    return 0;
}
