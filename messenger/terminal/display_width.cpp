#include "messenger/terminal/display_width.h"

#include <algorithm>
#include <array>
#include <QStringList>
#include <QTextBoundaryFinder>

namespace oku::terminal {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// Code points of East_Asian_Width W and F, from Unicode 14 (UAX #11); gaps that hold only unassigned ones are closed.
constexpr std::array kWide = std::to_array<Range>({
    {0x1100, 0x115F},   {0x231A, 0x231B},   {0x2329, 0x232A},   {0x23E9, 0x23EC},   {0x23F0, 0x23F0},
    {0x23F3, 0x23F3},   {0x25FD, 0x25FE},   {0x2614, 0x2615},   {0x2648, 0x2653},   {0x267F, 0x267F},
    {0x2693, 0x2693},   {0x26A1, 0x26A1},   {0x26AA, 0x26AB},   {0x26BD, 0x26BE},   {0x26C4, 0x26C5},
    {0x26CE, 0x26CE},   {0x26D4, 0x26D4},   {0x26EA, 0x26EA},   {0x26F2, 0x26F3},   {0x26F5, 0x26F5},
    {0x26FA, 0x26FA},   {0x26FD, 0x26FD},   {0x2705, 0x2705},   {0x270A, 0x270B},   {0x2728, 0x2728},
    {0x274C, 0x274C},   {0x274E, 0x274E},   {0x2753, 0x2755},   {0x2757, 0x2757},   {0x2795, 0x2797},
    {0x27B0, 0x27B0},   {0x27BF, 0x27BF},   {0x2B1B, 0x2B1C},   {0x2B50, 0x2B50},   {0x2B55, 0x2B55},
    {0x2E80, 0x303E},   {0x3041, 0x3247},   {0x3250, 0x4DBF},   {0x4E00, 0xA4C6},   {0xA960, 0xA97C},
    {0xAC00, 0xD7A3},   {0xF900, 0xFAD9},   {0xFE10, 0xFE6B},   {0xFF01, 0xFF60},   {0xFFE0, 0xFFE6},
    {0x16FE0, 0x1B2FB}, {0x1F004, 0x1F004}, {0x1F0CF, 0x1F0CF}, {0x1F18E, 0x1F18E}, {0x1F191, 0x1F19A},
    {0x1F200, 0x1F320}, {0x1F32D, 0x1F335}, {0x1F337, 0x1F37C}, {0x1F37E, 0x1F393}, {0x1F3A0, 0x1F3CA},
    {0x1F3CF, 0x1F3D3}, {0x1F3E0, 0x1F3F0}, {0x1F3F4, 0x1F3F4}, {0x1F3F8, 0x1F43E}, {0x1F440, 0x1F440},
    {0x1F442, 0x1F4FC}, {0x1F4FF, 0x1F53D}, {0x1F54B, 0x1F54E}, {0x1F550, 0x1F567}, {0x1F57A, 0x1F57A},
    {0x1F595, 0x1F596}, {0x1F5A4, 0x1F5A4}, {0x1F5FB, 0x1F64F}, {0x1F680, 0x1F6C5}, {0x1F6CC, 0x1F6CC},
    {0x1F6D0, 0x1F6D2}, {0x1F6D5, 0x1F6DF}, {0x1F6EB, 0x1F6EC}, {0x1F6F4, 0x1F6FC}, {0x1F7E0, 0x1F7F0},
    {0x1F90C, 0x1F93A}, {0x1F93C, 0x1F945}, {0x1F947, 0x1F9FF}, {0x1FA70, 0x1FAF6}, {0x20000, 0x3134A},
});

bool isWide(char32_t c) {
    const auto* range =
        std::upper_bound(kWide.begin(), kWide.end(), c, [](char32_t value, const Range& r) { return value < r.first; });
    return range != kWide.begin() && c <= std::prev(range)->last;
}

constexpr char32_t kJoiner = 0x200D;
constexpr int kUnitsPerColumn = 16;

bool isSkinTone(char32_t c) { return c >= 0x1F3FB && c <= 0x1F3FF; }

// What turns the direction of writing can make a text read as another one.
bool isDirectional(char32_t c) {
    return (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) || c == 0x200E || c == 0x200F || c == 0x061C;
}

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
    if (c < 0x300) return 1;                   // the soft hyphen too: terminals draw it
    if (c >= 0x1160 && c <= 0x11FF) return 0;  // vowels and finals of Hangul join the consonant before them
    switch (QChar::category(c)) {
        case QChar::Mark_NonSpacing:
        case QChar::Mark_Enclosing:
        case QChar::Other_Format:
            return 0;
        default:
            return isWide(c) ? 2 : 1;
    }
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

QString printable(const QString& text, bool lines) {
    QString result;
    result.reserve(text.size());
    QString unified = text;
    unified.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    for (const char32_t c : unified.toUcs4()) {
        if (c == U'\n')
            result += lines ? u'\n' : u'⏎';
        else if (c == U'\t')
            result += u' ';
        else if (c < 0x20 || (c >= 0x7F && c < 0xA0) || isDirectional(c) || c == 0x2028 || c == 0x2029)
            result += QChar(QChar::ReplacementCharacter);
        else
            result += QStringView(QChar::fromUcs4(c));
    }
    return result;
}

}  // namespace oku::terminal
