// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The pictures of contacts as files, one for each announced hash; all accounts share them.
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace protolink {

/// A hash is whatever text a peer announced: nothing proves that it is that of the content. It is a name, and one that
/// leads out of the folder names no file.
class AvatarCache {
public:
    /// `cacheDirectory` ends in the separator.
    void open(const std::u16string& cacheDirectory);

    /// The full name of a hash's file, for those that `avatarFileExists` or `store` said yes to.
    std::u16string path(std::u16string_view hash) const;
    /// Whether there is a file for the hash, an empty one included.
    bool avatarFileExists(std::u16string_view hash) const;
    /// Makes or replaces the hash's file as a whole. False when it cannot be opened or written.
    bool store(std::u16string_view hash, std::string_view content) const;
    /// Deletes the pictures of all accounts. False when one is left.
    bool clear() const;

    /// Hashes that somebody was asked for. One stays until all are forgotten, whether its picture came or not.
    std::set<std::u16string, std::less<>> avatarFetchesInFlight;

private:
    std::u16string folder_;
};

}  // namespace protolink
