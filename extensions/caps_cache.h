// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What is remembered of clients by their capability hash.
#pragma once

#include <string_view>

#include "host/util/xml_element.h"

namespace protolink {

class CapsCache {
public:
    virtual ~CapsCache() = default;

    /// The entry stored under exactly this hash, with the client's `query` as its child, or null. The entry is valid
    /// until the next `add`, its children as long as the cache.
    virtual const xmlElement* find(std::u16string_view hash) const = 0;
    /// Stores a copy of `query`. The first answer for a hash is kept, a later one is not.
    virtual void add(const xmlElement& query, std::u16string_view hash) = 0;
};

}  // namespace protolink
