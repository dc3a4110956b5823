// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/screen/printable.h"

#include <gtest/gtest.h>

#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/screen/printable.h"

namespace oku::terminal::test {
namespace {

QString joined(std::initializer_list<char32_t> points) {
    return QString::fromUcs4(std::data(points), static_cast<qsizetype>(points.size()));
}

TEST(PrintableTest, TakesTheTeethOutOfTextFromOutside) {
    EXPECT_EQ(printable("a\tb"), "a b");
    EXPECT_EQ(printable("a\r\nb\nc"), "a⏎b⏎c");
    EXPECT_EQ(printable("a\r\nb\nc", true), "a\nb\nc");
    EXPECT_EQ(printable("\x1B[2Jx\x07"), "\uFFFD[2Jx\uFFFD");
    EXPECT_EQ(printable(QString::fromUtf8("\u009B31mx\u007F")), "\uFFFD31mx\uFFFD");
    EXPECT_EQ(printable(QString::fromUtf8("abc\u202Etxt.exe\u2066")), "abc\uFFFDtxt.exe\uFFFD");
    EXPECT_EQ(printable(QString::fromUtf8("a\u2028b")), "a\uFFFDb");
    EXPECT_EQ(printable("🦆 李 ż"), "🦆 李 ż");
    EXPECT_EQ(printable(QString(QChar(0xD800)) + u'x').back(), u'x');
}

TEST(PrintableTest, LeavesALetterFourMarks) {
    const QString marks = QString(30, QChar(0x0301));
    EXPECT_EQ(printable('a' + marks + "b\u0307"), 'a' + marks.left(4) + "b\u0307");
    EXPECT_EQ(printable("שָׁ\u0591"), "שָׁ\u0591");
    EXPECT_EQ(printable(marks + 'a'), QChar(0xFFFD) + marks.left(4) + 'a') << "not on what stands before";
    EXPECT_EQ(printable("a\n" + marks, true), "a\n\uFFFD" + marks.left(4));
    EXPECT_EQ(printable("a" + QString(9, QChar(0x20DD))), "a" + QString(4, QChar(0x20DD))) << "enclosing ones";
}

TEST(PrintableTest, TakesOutWhatCannotBeSeen) {
    EXPECT_EQ(printable("o\u200Bk\uFEFFu\u2060\u2063\u180E\u034F\u3164\u206A!"), "oku!");
    EXPECT_EQ(printable("Auf\u00ADgabe"), "Auf\u00ADgabe") << "terminals draw a soft hyphen";
    EXPECT_EQ(printable(joined({'a', 0xE0001, 0xE0041, 0xE0042, 0xE007F, 'b'})), "a\uFFFDb") << "hidden tags show once";
    EXPECT_EQ(printable(joined({'a', 0x200D, 0x200D, 0x200C, '1'})), "a1");
    EXPECT_EQ(printable(joined({'a', 0xFE0F, 0xFE0F, 0xE0100, 'b'})), joined({'a', 0xFE0F, 'b'}));
    EXPECT_EQ(printable(joined({0xFFF9, 'a', 0xFFFB, 0xFFFF})), "a\uFFFD");
}

TEST(PrintableTest, KeepsWhatScriptsAndEmojiNeed) {
    for (const QString& text :
         {QString("👩‍👩‍👧 ❤️ 👍🏽 🇵🇱 1️⃣ 🏳️‍🌈 👩🏽‍🚀"),
          QString("می‌خواهم"), QString("नमस्ते क्‍ष"), QString("한국 \u1112\u1161\u11ab"),
          QString("ภาษาไทย"), QString("葛\U000E0100"), QString("\u0600123"), QString("za\u017Co\u0301")}) {
        EXPECT_EQ(printable(text), text);
    }
    EXPECT_EQ(printable(joined({0x1F3F4, 0xE0067, 0xE0062, 0xE0065, 0xE006E, 0xE0067, 0xE007F})), joined({0x1F3F4}))
        << "the flag of England shows as terminals draw it";
}

TEST(PrintableTest, GivesEveryCharacterItsOwnColumns) {
    for (char32_t c = 0x20; c < 0x30000; ++c) {
        const QString shown = printable(joined({'x', c, c, c, c, c, c, c, c, 'y'}));
        EXPECT_LE(shown.size(), 18) << std::hex << static_cast<unsigned>(c);
        if (displayWidth(shown) == 2) {
            EXPECT_LE(shown.size(), 10) << std::hex << static_cast<unsigned>(c);
        }
    }
}

}  // namespace
}  // namespace oku::terminal::test
