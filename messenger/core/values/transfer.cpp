// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/values/transfer.h"

#include <array>

namespace oku {

QString transferStateWord(TransferState state) {
    static constexpr std::array words = {"negotiating", "running", "done", "incomplete", "failed", "cancelled"};
    return QString::fromLatin1(words.at(static_cast<std::size_t>(state)));
}

QString offerReplyWord(OfferReply reply) {
    static constexpr std::array words = {"accept", "refuse", "ignore"};
    return QString::fromLatin1(words.at(static_cast<std::size_t>(reply)));
}

}  // namespace oku
