// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Whatever comes in, what goes out has to be whole: one stanza, or the stream's opening or closing.
#pragma once

#include <string>
#include <string_view>

#include "fuzz/input.h"
#include "host/util/xml_parse.h"
#include "tests/support/plain_probe.h"

namespace fuzz {

inline void requireWhole(std::string_view sent) {
    if (sent.starts_with("<?xml version=\"1.0\"?><stream:stream ") || sent == "</stream:stream>") return;
    require(probePlainly(sent).balanced, "what is sent is not balanced");
    std::vector<xmlElement> elements;
    lutXMLParseA(elements, sent);
    require(elements.size() == 1, "what is sent is not one element");
}

}  // namespace fuzz
