// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The one persistent cache of what clients can do, by capability hash; all accounts share it.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "extensions/caps_cache.h"
#include "host/util/xml_element.h"

namespace protolink {

/// The file is XML without a declaration: a root of `entry` elements, each with its `hash` and one `query` as a peer
/// sent it. Whatever the first root is named, it serves. Entries are never changed or removed.
class CClientDatabase final : public CapsCache {
public:
    /// Reads the file in `directory`; one that is missing or cannot be read leaves the database empty, one that is
    /// damaged gives what could be read.
    void load(const std::u16string& directory);
    /// Replaces the file in `directory`. A failure is not reported, and the old file stays.
    void save(const std::u16string& directory) const;

    const xmlElement* find(std::u16string_view hash) const override;
    void add(const xmlElement& query, std::u16string_view hash) override;

private:
    /// The first root, or null.
    const xmlElement* dbRootPtr() const { return roots_.empty() ? nullptr : &roots_.front(); }

    std::vector<xmlElement> roots_;  // the first one serves, as it came
    // Place among the root's children. In order, as strangers choose the keys: chosen ones could all meet in one bucket
    // of a hash table.
    std::map<std::u16string, std::size_t, std::less<>> index_;
};

}  // namespace protolink
