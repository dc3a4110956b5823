// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Addresses (RFC 6122) in their parsed form.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace protolink {

/// An address split at its first "@" and its first "/". Any input parses; nothing is checked.
struct JID {
    std::u16string node;      // before "@", lower case
    std::u16string domain;    // the server part, lower case
    std::u16string resource;  // after "/", case kept
    std::u16string bare;      // node@domain, lower case
    std::u16string full;      // bare and resource, with the case of the input
    std::uint32_t hasNode = 0;
    std::uint32_t hasResource = 0;
};

JID parseJID(std::u16string_view text);

}  // namespace protolink
