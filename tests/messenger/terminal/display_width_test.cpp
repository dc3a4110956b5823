// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/screen/display_width.h"

#include <gtest/gtest.h>
#include <QStringList>

namespace oku::terminal::test {
namespace {

struct WidthCase {
    const char* text;
    int width;
};

TEST(DisplayWidthTest, CountsTheColumnsThatTerminalsUse) {
    const WidthCase cases[] = {
        {"", 0},
        {"abc", 3},
        {"zażółć gęślą jaźń", 17},
        {"z\u0307o\u0301", 2},  // letters with combining marks
        {"李梅", 4},
        {"ﾊﾝｶｸ", 4},  // half-width forms
        {"ＡＢ", 4},  // full-width forms
        {"한국", 4},
        {"\u1112\u1161\u11ab", 2},  // one Hangul syllable from its parts
        {"🦆", 2},
        {"👩‍👩‍👧", 2},  // joined by U+200D
        {"👍🏽", 2},            // with a skin tone
        {"🏽", 2},                // a skin tone alone
        {"🇵🇱", 2},                  // a flag
        {"☕", 2},
        {"e\u200B", 1},  // zero width space
        {"\u00AD", 1},   // soft hyphen
        {"─│…→", 4},
        {"🫠🫷", 4},      // emoji of Unicode 14 and 15
        {"\u1175\ud7b0", 0},  // vowels of Hangul, also of its extension
        {"㌀〶", 4},
        {"नमस्ते", 4},
    };
    for (const WidthCase& one : cases) EXPECT_EQ(displayWidth(QString::fromUtf8(one.text)), one.width) << one.text;
}

TEST(DisplayWidthTest, CutsBetweenCharactersOnly) {
    EXPECT_EQ(cutToWidth("abcdef", 3), "abc");
    EXPECT_EQ(cutToWidth("李梅", 3), "李");
    EXPECT_EQ(cutToWidth("李梅", 1), "");
    EXPECT_EQ(cutToWidth(QString::fromUtf8("z\u0307z\u0307"), 1), QString::fromUtf8("z\u0307"));
    EXPECT_EQ(cutToWidth("👩‍👩‍👧x", 2), "👩‍👩‍👧");
    EXPECT_EQ(cutToWidth("abc", 0), "");
    EXPECT_EQ(cutToWidth("abc", -4), "");
}

TEST(DisplayWidthTest, FitsExactly) {
    EXPECT_EQ(fitToWidth("ab", 4), "ab  ");
    EXPECT_EQ(fitToWidth("abcd", 4), "abcd");
    EXPECT_EQ(fitToWidth("abcde", 4), "abc…");
    EXPECT_EQ(fitToWidth("李梅李", 4), "李… ");
    EXPECT_EQ(fitToWidth("abc", 0), "");
    for (int columns = 1; columns < 20; ++columns)
        EXPECT_EQ(displayWidth(fitToWidth("Ewa 李梅 🦆 Żółć", columns)), columns);
}

QString wrapped(const QString& text, int first, int rest) {
    QStringList lines;
    for (const QString& line : wrapText(text, first, rest)) lines.append(line);
    return lines.join(u'|');
}

TEST(DisplayWidthTest, WrapsAtBlanksAndInsideLongWords) {
    EXPECT_EQ(wrapped("", 5, 5), "");
    EXPECT_EQ(wrapped("raz dwa trzy", 7, 7), "raz dwa|trzy");
    EXPECT_EQ(wrapped("raz dwa trzy", 8, 4), "raz dwa|trzy");
    EXPECT_EQ(wrapped("raz  dwa", 4, 4), "raz|dwa");
    EXPECT_EQ(wrapped("konstantynopol", 5, 6), "konst|antyno|pol");
    EXPECT_EQ(wrapped("a konstantynopol", 5, 5), "a|konst|antyn|opol");
    EXPECT_EQ(wrapped("raz\n\ndwa\n", 9, 9), "raz||dwa|");
    EXPECT_EQ(wrapped("  wcięte", 20, 20), "  wcięte");
    EXPECT_EQ(wrapped("李梅李", 1, 1), "李|梅|李");
    EXPECT_EQ(wrapped("李梅李", 4, 4), "李梅|李");
}

TEST(DisplayWidthTest, WrapsEveryTextIntoItsWidthWithoutLosingLetters) {
    const QString text = QString::fromUtf8(
        "Zażółć gęślą jaźń, 李梅! 👩‍👩‍👧 i jeszczeDłuższeSłowo\ndrugi wiersz z\u0307o\u0301");
    for (int columns = 2; columns < 60; ++columns) {
        QString together;
        for (const QString& line : wrapText(text, columns, columns)) {
            EXPECT_LE(displayWidth(line), columns);
            together += line;
        }
        EXPECT_EQ(together.remove(u' '), QString(text).remove(u' ').remove(u'\n')) << columns;
    }
}

TEST(DisplayWidthTest, FindsTheNeighbouringPlacesOfACursor) {
    const QString text = QString::fromUtf8("az\u0307🦆👩‍👩‍👧x");
    QList<qsizetype> forward{0};
    while (forward.last() < text.size()) forward.append(nextBoundary(text, forward.last()));
    QList<qsizetype> backward{text.size()};
    while (backward.first() > 0) backward.prepend(previousBoundary(text, backward.first()));
    EXPECT_EQ(forward, backward);
    EXPECT_EQ(forward.size(), 6);
    EXPECT_EQ(nextBoundary(text, text.size()), text.size());
    EXPECT_EQ(previousBoundary(text, 0), 0);
}

TEST(DisplayWidthTest, StaysQuickWithAMessageOfAMegabyte) {
    const QString text = QString("Zażółć gęślą jaźń ").repeated(60000);
    EXPECT_EQ(displayWidth(cutToWidth(text, 80)), 80);
    EXPECT_EQ(previousBoundary(text, text.size()), text.size() - 1);
}

}  // namespace
}  // namespace oku::terminal::test
