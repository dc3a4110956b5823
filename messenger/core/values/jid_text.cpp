// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/values/jid_text.h"

#include <algorithm>
#include <QCoreApplication>

#include "messenger/core/xml/xml_text.h"

namespace oku {
namespace {

bool isClean(const QString& bare) {
    return isXmlText(bare) && std::none_of(bare.begin(), bare.end(), [](QChar letter) {
               return letter.isSpace() || letter.category() == QChar::Other_Control ||
                      QStringLiteral("\"&'<>:").contains(letter);
           });
}

char folded(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; }

}  // namespace

bool sameAddress(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char left, char right) { return folded(left) == folded(right); });
}

QString bareJid(const QString& jid) {
    const qsizetype slash = jid.indexOf(u'/');
    const QString bare = slash < 0 ? jid : jid.left(slash);
    const auto isSmall = [](QChar letter) { return letter < QChar(0x80) && (letter < u'A' || letter > u'Z'); };
    return std::all_of(bare.begin(), bare.end(), isSmall) ? bare : bare.toLower();
}

bool looksLikeJid(const QString& jid) {
    const QString bare = bareJid(jid);
    return isClean(bare) && bare.count(u'@') == 1 && !nodeOf(bare).isEmpty() && !domainOf(bare).isEmpty();
}

QString addressFault(const QString& jid) {
    if (jid.isEmpty()) return QCoreApplication::translate("Contacts", "Nie podano adresu.");
    const QString bare = bareJid(jid);
    const bool isDomain = !bare.isEmpty() && !bare.contains(u'@') && isClean(bare);
    if (isDomain || looksLikeJid(bare)) return {};
    return QCoreApplication::translate("Contacts", "To nie jest adres: %1").arg(jid);
}

}  // namespace oku
