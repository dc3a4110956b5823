// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/screen/printable.h"

#include <unicode/uchar.h>
#include <algorithm>
#include <QList>

namespace oku::terminal {
namespace {

constexpr int kMostMarks = 4;  // on one letter; Vietnamese needs two, Hebrew and Tibetan up to four
constexpr char32_t kNonJoiner = 0x200C;
constexpr char32_t kJoiner = 0x200D;
constexpr char32_t kSoftHyphen = 0x00AD;
constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kBlackFlag = 0x1F3F4;

// What is done with a character, apart from what stands around it.
enum class Kind { Shown, Mark, Joiner, Selector, Tag, Dangerous, Unseen };

bool has(char32_t c, UProperty property) { return u_hasBinaryProperty(static_cast<UChar32>(c), property) != 0; }

uint32_t categoryOf(char32_t c) { return U_MASK(u_charType(static_cast<UChar32>(c))); }

bool isTag(char32_t c) { return c >= 0xE0000 && c <= 0xE007F; }

// Drawn over the digits behind it, and in no column of its own.
bool isNumberSign(char32_t c) { return has(c, UCHAR_PREPENDED_CONCATENATION_MARK); }

// What turns the direction of writing can make a text read as another one.
bool isDangerous(char32_t c) {
    return has(c, UCHAR_BIDI_CONTROL) || has(c, UCHAR_NONCHARACTER_CODE_POINT) ||
           (categoryOf(c) & (U_GC_CC_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK | U_GC_CS_MASK)) != 0;
}

Kind kindOf(char32_t c) {
    if (c >= 0x20 && c < 0x7F) return Kind::Shown;
    if (isDangerous(c)) return Kind::Dangerous;
    if (isTag(c)) return Kind::Tag;
    if (c == kJoiner || c == kNonJoiner) return Kind::Joiner;
    if (has(c, UCHAR_VARIATION_SELECTOR)) return Kind::Selector;
    if (c != kSoftHyphen && has(c, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) && !has(c, UCHAR_HANGUL_SYLLABLE_TYPE))
        return Kind::Unseen;
    const uint32_t category = categoryOf(c);
    if ((category & (U_GC_MN_MASK | U_GC_ME_MASK)) != 0) return Kind::Mark;
    // Annotations and musical beams are drawn by nobody; the signs of numbers are.
    const bool format = (category & U_GC_CF_MASK) != 0 && c != kSoftHyphen;
    return format && !isNumberSign(c) ? Kind::Unseen : Kind::Shown;
}

bool isEmoji(char32_t c) { return has(c, UCHAR_EXTENDED_PICTOGRAPHIC) || has(c, UCHAR_EMOJI_MODIFIER); }
bool isLetter(char32_t c) { return (categoryOf(c) & (U_GC_L_MASK | U_GC_M_MASK)) != 0; }

// Takes characters in order.
class Cleaner {
public:
    explicit Cleaner(bool lines) : lines_(lines) {}

    void take(char32_t c, char32_t next) {
        if (c == U'\n') return base(lines_ ? U'\n' : U'⏎');
        if (c == U'\t') return base(U' ');
        switch (kindOf(c)) {
            case Kind::Shown:
                if (!isNumberSign(c) || !isNumberSign(last_)) base(c);
                break;
            case Kind::Mark:
                if (base_ == 0) base(kReplacement);
                if (++marks_ <= kMostMarks) append(c);
                break;
            case Kind::Joiner:
                if (joins(next)) append(c);
                break;
            case Kind::Selector:
                if (base_ != 0 && base_ != U'\n' && last_ == base_) append(c);
                break;
            case Kind::Tag:
                // The flags of England, Scotland and Wales are a black flag with tags; terminals show the black one.
                if (base_ != kBlackFlag && last_ != kReplacement) base(kReplacement);
                break;
            case Kind::Dangerous:
                base(kReplacement);
                break;
            case Kind::Unseen:
                break;
        }
    }

    QString text() && { return std::move(text_); }

private:
    // Between two letters (Persian, the scripts of India) or two emoji.
    bool joins(char32_t next) const {
        if (last_ == kJoiner || last_ == kNonJoiner) return false;
        return isEmoji(base_) ? isEmoji(next) : isLetter(base_) && isLetter(next);
    }

    void base(char32_t c) {
        base_ = c == U'\n' ? 0 : c;
        marks_ = 0;
        append(c);
    }

    void append(char32_t c) {
        last_ = c;
        text_ += QStringView(QChar::fromUcs4(c));
    }

    bool lines_;
    QString text_;
    char32_t base_ = 0;  // what a mark would stand on; none at the beginning of a line
    char32_t last_ = 0;
    int marks_ = 0;
};

// Nothing is to be done about it, whatever stands beside it: ASCII, the Latin letters of Europe's languages, dashes and
// quotation marks.
bool isHarmless(QChar letter) {
    const char16_t c = letter.unicode();
    return (c >= 0x20 && c < 0x7F) || (c >= 0xA1 && c < 0x180 && c != kSoftHyphen) || (c >= 0x2010 && c < 0x2028);
}

}  // namespace

QString printable(const QString& text, bool lines) {
    const auto harmless = [&](QChar c) { return isHarmless(c) || (lines && c == u'\n'); };
    if (std::all_of(text.begin(), text.end(), harmless)) return text;
    QString unified = text;
    unified.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    const auto points = unified.toUcs4();
    Cleaner cleaner(lines);
    for (qsizetype at = 0; at < points.size(); ++at)
        cleaner.take(points.at(at), at + 1 < points.size() ? points.at(at + 1) : 0);
    return std::move(cleaner).text();
}

}  // namespace oku::terminal
