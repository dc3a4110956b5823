#include "messenger/core/values/types.h"

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

QString connectionStateWord(ConnectionState state) {
    constexpr std::array words = {"offline", "connecting", "connected", "encrypted", "authorized", "online"};
    return QString::fromLatin1(words[static_cast<std::size_t>(state)]);
}

QString deliveryStateWord(DeliveryState state) {
    constexpr std::array words = {"received", "queued", "sent", "unconfirmed", "failed", "cancelled"};
    return QString::fromLatin1(words[static_cast<std::size_t>(state)]);
}

QString boxStyleWord(BoxStyle style) {
    constexpr std::array words = {"error", "warning", "information", "question"};
    return QString::fromLatin1(words[static_cast<std::size_t>(style)]);
}

}  // namespace oku
