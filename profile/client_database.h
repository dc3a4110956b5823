// The one persistent cache of what clients can do, by capability hash; all accounts share it.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "extensions/caps_cache.h"
#include "host/util/xml_element.h"

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
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::u16string_view text) const { return std::hash<std::u16string_view>()(text); }
    };

    std::vector<xmlElement> roots_;                                                 // the first one serves, as it came
    std::unordered_map<std::u16string, std::size_t, Hash, std::equal_to<>> index_;  // place among the root's children
};
