// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/services/directories.h"

#include <algorithm>
#include <array>

#include "host/oku/windows.h"
#include "host/record.h"

namespace protolink {

namespace {

constexpr std::size_t kDirectoryCapacity = 261;

}  // namespace

Directories askDirectories(const Host& host) {
    std::array<char16_t, kDirectoryCapacity> buffer{};
    auto record = makeRecord<OKU_DIRECTORY>();
    record.buffer = buffer.data();
    record.capacity = kDirectoryCapacity;
    record.subdirectory = u"config";
    // One record and one buffer serve both calls, so a host that fills the buffer only once gives the same twice.
    const auto ask = [&](const char16_t* service) {
        host.call(service, toWord(&record));
        return std::u16string(buffer.begin(), std::find(buffer.begin(), buffer.end() - 1, u'\0'));
    };
    Directories directories;
    directories.cache = ask(u"OKU/Info/GetCacheDir");
    directories.profile = ask(u"OKU/Info/GetProfileDir");
    return directories;
}

}  // namespace protolink
