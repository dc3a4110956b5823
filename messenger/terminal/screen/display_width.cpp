// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/screen/display_width.h"

#include <unicode/uchar.h>
#include <algorithm>
#include <QStringList>
#include <QTextBoundaryFinder>

namespace oku::terminal {
namespace {

constexpr char32_t kJoiner = 0x200D;
constexpr int kUnitsPerColumn = 16;

bool isSkinTone(char32_t c) { return c >= 0x1F3FB && c <= 0x1F3FF; }

// Adds up columns over code points in order. A joined or toned emoji takes the cells of the one before it.
class WidthCounter {
public:
    int next(char32_t c) {
        const int own = codePointWidth(c);
        const bool merged = own > 0 && ((previous_ == kJoiner && base_ == 2) || (isSkinTone(c) && base_ == 2));
        previous_ = c;
        if (merged) return 0;
        if (own > 0) base_ = own;
        return own;
    }

private:
    char32_t previous_ = 0;
    int base_ = 0;
};

// Looking at a piece around the place only keeps editing cheap in long texts.
constexpr qsizetype kBoundaryWindow = 256;

// Where to break `line` so that its beginning fits `columns`: behind the last blank that fits, or inside a long word.
qsizetype breakPlace(const QString& line, int columns) {
    const qsizetype fits = std::max(cutToWidth(line, columns).size(), nextBoundary(line, 0));
    if (fits >= line.size()) return line.size();
    if (line.at(fits) == u' ') return fits;
    const qsizetype blank = line.lastIndexOf(u' ', fits - 1);
    return blank > 0 ? blank + 1 : fits;
}

}  // namespace

int codePointWidth(char32_t c) {
    if (c < 0x20 || (c >= 0x7F && c < 0xA0)) return 0;
    if (c < 0x300) return 1;  // the soft hyphen too: terminals draw it
    const auto point = static_cast<UChar32>(c);
    // Vowels and finals of Hangul join the consonant before them.
    const int syllable = u_getIntPropertyValue(point, UCHAR_HANGUL_SYLLABLE_TYPE);
    if (syllable == U_HST_VOWEL_JAMO || syllable == U_HST_TRAILING_JAMO) return 0;
    if ((U_MASK(u_charType(point)) & (U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK)) != 0) return 0;
    const int width = u_getIntPropertyValue(point, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

int displayWidth(QStringView text) {
    WidthCounter counter;
    int width = 0;
    for (const char32_t c : text.toUcs4()) width += counter.next(c);
    return width;
}

qsizetype nextBoundary(const QString& text, qsizetype at) {
    if (at >= text.size()) return text.size();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.mid(at, kBoundaryWindow));
    return at + std::max<qsizetype>(finder.toNextBoundary(), 1);
}

qsizetype previousBoundary(const QString& text, qsizetype at) {
    if (at <= 0) return 0;
    const qsizetype start = std::max<qsizetype>(0, at - kBoundaryWindow);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.mid(start, at - start));
    finder.toEnd();
    return start + std::max<qsizetype>(finder.toPreviousBoundary(), 0);
}

QString cutToWidth(const QString& whole, int columns) {
    // Looking at a beginning only keeps long texts cheap, and heaps of marks on one letter short.
    const QString text = whole.left(std::max(columns, 0) * kUnitsPerColumn + kUnitsPerColumn);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    int width = 0;
    for (qsizetype next = finder.toNextBoundary(); next > 0; next = finder.toNextBoundary()) {
        width += displayWidth(QStringView(text).mid(end, next - end));
        if (width > columns) break;
        end = next;
    }
    return text.left(end);
}

QString fitToWidth(const QString& text, int columns) {
    if (columns <= 0) return {};
    int width = displayWidth(text);
    QString result = text;
    if (width > columns) {
        result = cutToWidth(text, columns - 1) + u'…';
        width = displayWidth(result);
    }
    return result + QString(columns - width, u' ');
}

std::vector<QString> wrapText(const QString& text, int first, int rest) {
    std::vector<QString> lines;
    for (QString line : text.split(u'\n')) {
        do {
            const qsizetype place = breakPlace(line, std::max(1, lines.empty() ? first : rest));
            QString taken = line.left(place);
            line = line.mid(place);
            if (!line.isEmpty()) {
                while (taken.endsWith(u' ')) taken.chop(1);
                while (line.startsWith(u' ')) line.remove(0, 1);
            }
            lines.push_back(taken);
        } while (!line.isEmpty());
    }
    return lines;
}

}  // namespace oku::terminal
