// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/values/news.h"

namespace oku {

QStringList moodNames() {
    static const QStringList names =
        QStringLiteral(
            "afraid amazed amorous angry annoyed anxious aroused ashamed bored brave calm cautious cold confident "
            "confused contemplative contented cranky crazy creative curious dejected depressed disappointed disgusted "
            "dismayed distracted embarrassed envious excited flirtatious frustrated grateful grieving grumpy guilty "
            "happy hopeful hot humbled humiliated hungry hurt impressed in_awe in_love indignant interested "
            "intoxicated invincible jealous lonely lost lucky mean moody nervous neutral offended outraged playful "
            "proud relaxed relieved remorseful restless sad sarcastic satisfied serious shocked shy sick sleepy "
            "spontaneous stressed strong surprised thankful thirsty tired undefined weak worried")
            .split(u' ');
    return names;
}

QString popupKindWord(PopupKind kind) {
    constexpr std::array words = {"tune", "mood", "mail", "other"};
    return QString::fromLatin1(words[static_cast<std::size_t>(kind)]);
}

}  // namespace oku
