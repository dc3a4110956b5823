// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <QByteArray>
#include <QString>

#include "messenger/core/values/cards.h"

namespace oku {

struct StoredCard {
    OwnCard card;
    bool there = false;  ///< or else the server says that there is none
};

/// A card as the server keeps it (XEP-0054), read from its answer to a request for the user's own: its fields as the
/// plugin reads them, and what else it holds. Nothing for another error, and for an answer that is none.
std::optional<StoredCard> readStoredCard(const QByteArray& answer, const QString& ownJid);

/// The text of a field as it can stand in a card: one line, only characters that XML bears, at most
/// kLongestCardField.
QString cardFieldText(const QString& text);

}  // namespace oku
