// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/values/message.h"

#include <array>

namespace oku {

QString deliveryStateWord(DeliveryState state) {
    constexpr std::array words = {"received", "queued", "sent", "unconfirmed", "failed", "cancelled"};
    return QString::fromLatin1(words[static_cast<std::size_t>(state)]);
}

}  // namespace oku
