// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "profile/avatar_cache.h"

#include "host/util/file_name.h"
#include "platform/platform.h"

namespace protolink {

namespace {

std::u16string fileName(std::u16string_view hash) { return u'L' + std::u16string(hash); }

}  // namespace

void AvatarCache::open(const std::u16string& cacheDirectory) {
    folder_ = cacheDirectory + u".xmppAvatar" + platform::kPathSeparator;
}

std::u16string AvatarCache::path(std::u16string_view hash) const { return folder_ + fileName(hash); }

bool AvatarCache::avatarFileExists(std::u16string_view hash) const {
    return isPlainFileName(fileName(hash)) && platform::fileExists(path(hash));
}

bool AvatarCache::store(std::u16string_view hash, std::string_view content) const {
    // Made each time: the user may have emptied the cache meanwhile.
    platform::createFolder(folder_);
    return isPlainFileName(fileName(hash)) && platform::replaceFile(path(hash), content);
}

bool AvatarCache::clear() const { return platform::emptyFolder(folder_); }

}  // namespace protolink
