// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/values/status.h"

#include <array>

namespace oku {
namespace {

constexpr std::array<const char*, 9> kStatusWords = {"",   "online",    "chat",    "dnd",  "away",
                                                     "xa", "invisible", "offline", "error"};

}  // namespace

QString statusWord(Status status) {
    const auto index = static_cast<std::size_t>(status);
    return QString::fromLatin1(index < kStatusWords.size() ? kStatusWords[index] : "online");
}

Status statusFromWord(const QString& word, bool* ok) {
    for (std::size_t index = 1; index < kStatusWords.size(); ++index) {
        if (word != QLatin1String(kStatusWords[index])) continue;
        if (ok) *ok = true;
        return static_cast<Status>(index);
    }
    if (ok) *ok = false;
    return Status::online;
}

}  // namespace oku
