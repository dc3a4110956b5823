// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/xml/xml_text.h"

#include <algorithm>

namespace oku {
namespace {

/// How many units the character at `at` takes; 0 when it may not stand in XML 1.0.
qsizetype xmlCharacter(const QString& text, qsizetype at) {
    const QChar unit = text[at];
    if (unit.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate()) return 2;
    const bool blank = unit == u'\t' || unit == u'\n' || unit == u'\r';
    return blank || (unit >= u' ' && !unit.isSurrogate() && unit < QChar(0xfffe)) ? 1 : 0;
}

}  // namespace

bool isXmlText(const QString& text) {
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype length = xmlCharacter(text, at);
        if (length == 0) return false;
        at += length;
    }
    return true;
}

QString xmlEscaped(const QString& text) {
    QString clean;
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype length = xmlCharacter(text, at);
        clean += text.mid(at, length);
        at += std::max<qsizetype>(length, 1);
    }
    return clean.toHtmlEscaped().replace(u'\'', QStringLiteral("&apos;"));
}

}  // namespace oku
