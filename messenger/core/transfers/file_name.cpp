// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/file_name.h"

namespace oku {
namespace {

constexpr qsizetype kLongestName = 255;  // bytes, of the usual file systems

bool isHarmful(char32_t c) {
    switch (QChar::category(c)) {
        case QChar::Other_Control:
        case QChar::Other_Format:  // among them the marks that turn the direction of writing
        case QChar::Separator_Line:
        case QChar::Separator_Paragraph:
            return true;
        default:
            return c == U'/' || c == U'\\' || c == U':';
    }
}

// Cut between characters. A unit is a byte at least, so that what a stranger made huge goes at once.
QString shortened(QString name) {
    if (name.size() > kLongestName) name.truncate(kLongestName - (name[kLongestName].isLowSurrogate() ? 1 : 0));
    while (name.toUtf8().size() > kLongestName) name.chop(name.back().isLowSurrogate() && name.size() > 1 ? 2 : 1);
    return name;
}

}  // namespace

QString cleanFileName(const QString& name) {
    QString clean;
    for (const char32_t c : name.toUcs4()) {
        const bool leading = clean.isEmpty() && (c == U'.' || QChar::isSpace(c));
        if (!leading && !isHarmful(c)) clean += QString::fromUcs4(&c, 1);
    }
    clean = shortened(clean.trimmed());
    return clean.isEmpty() ? QStringLiteral("_") : clean;
}

OfferedFile readOffer(const QString& question, const QString& sender) {
    const QString front = QStringLiteral("Czy chcesz odebrać ");
    const QString back = QStringLiteral("b) od %1?").arg(sender);
    OfferedFile file;
    file.name = question;
    if (!question.startsWith(front) || !question.endsWith(back) || question.size() < front.size() + back.size())
        return file;
    const QString middle = question.mid(front.size(), question.size() - front.size() - back.size());
    const QString between = QStringLiteral(" (");
    const qsizetype last = middle.lastIndexOf(between);
    if (last < 0) return file;
    file.name = middle.left(last);
    // No file has a longer one, and all of them together would cost the square of what a stranger sent.
    for (qsizetype at = middle.indexOf(between); at >= 0 && at <= kLongestName; at = middle.indexOf(between, at + 1))
        file.possibleNames.append(middle.left(at));
    bool isNumber = false;
    const qint64 size = middle.mid(file.name.size() + between.size()).toLongLong(&isNumber);
    if (isNumber && size >= 0) file.size = size;
    return file;
}

}  // namespace oku
