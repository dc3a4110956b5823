// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <QString>

namespace oku {

/// A status as the host and the plugin number it.
enum class Status : std::uint32_t { online = 1, chat, dnd, away, xa, invisible, offline, error };

/// `online` `chat` `dnd` `away` `xa` `invisible` `offline` `error`.
QString statusWord(Status status);
/// The inverse; `ok` (may be null) tells whether the word is one of them. An unknown word gives `online`.
Status statusFromWord(const QString& word, bool* ok = nullptr);

}  // namespace oku
