// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/values/account.h"

#include <array>

namespace oku {

QString connectionStateWord(ConnectionState state) {
    constexpr std::array words = {"offline", "connecting", "connected", "encrypted", "authorized", "online"};
    return QString::fromLatin1(words[static_cast<std::size_t>(state)]);
}

}  // namespace oku
