// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/file_name.h"

#include <gtest/gtest.h>

namespace oku::test {
namespace {

std::string clean(const QString& name) { return cleanFileName(name).toStdString(); }

TEST(CleanFileNameTest, LeavesAPlainNameAlone) {
    EXPECT_EQ(clean(QStringLiteral("zdjęcie z lata (2).tar.gz")), "zdjęcie z lata (2).tar.gz");
    EXPECT_EQ(clean(QStringLiteral("\U0001F40D.txt")), "\U0001F40D.txt");
}

TEST(CleanFileNameTest, TakesOutWhatLeadsElsewhere) {
    EXPECT_EQ(clean(QStringLiteral("../../etc/passwd")), "etcpasswd");
    EXPECT_EQ(clean(QStringLiteral("C:\\x\\y")), "Cxy");
    EXPECT_EQ(clean(QStringLiteral(" . ..bashrc")), "bashrc");
    EXPECT_EQ(clean(QStringLiteral("a..b.")), "a..b.");
    EXPECT_EQ(clean(QStringLiteral("a.txt \u2028 ")), "a.txt") << "what an end of blanks hides";
}

TEST(CleanFileNameTest, TakesOutWhatIsNotSeen) {
    EXPECT_EQ(clean(QStringLiteral("a\u0007\n\u007f\u0085b")), "ab");
    EXPECT_EQ(clean(QStringLiteral("gpj\u202Eexe\u200B\u2066\uFEFF")), "gpjexe");
    EXPECT_EQ(clean(QStringLiteral("a\u2028\u2029b")), "ab");
    EXPECT_EQ(clean(QStringLiteral("a") + QChar(0) + QStringLiteral("b")), "ab");
    EXPECT_EQ(clean(QStringLiteral("a") + QChar(0xD800) + QStringLiteral("b")), "a\uFFFDb") << "half of a character";
}

TEST(CleanFileNameTest, IsNeverEmpty) {
    EXPECT_EQ(clean({}), "_");
    EXPECT_EQ(clean(QStringLiteral("..")), "_");
    EXPECT_EQ(clean(QStringLiteral("/ \u202E\t")), "_");
}

TEST(CleanFileNameTest, FitsIntoAFileSystemAndIsCutBetweenCharacters) {
    EXPECT_EQ(clean(QString(300, u'a')).size(), 255U);
    EXPECT_EQ(clean(QString(255, u'a')).size(), 255U);
    EXPECT_EQ(cleanFileName(QString(300, u'ż')), QString(127, u'ż'));
    const QString snake = QStringLiteral("\U0001F40D");
    EXPECT_EQ(cleanFileName(snake.repeated(100)), snake.repeated(63));
    EXPECT_EQ(cleanFileName(QString(254, u'a') + snake), QString(254, u'a'));
    EXPECT_EQ(cleanFileName(QString(255, u'a') + snake), QString(255, u'a'));
    EXPECT_EQ(cleanFileName(QString(1 << 20, u'ż')), QString(127, u'ż'));
}

TEST(ReadOfferTest, FindsAllNamesThatAFileMayHave) {
    const OfferedFile file =
        readOffer(QStringLiteral("Czy chcesz odebrać a (1b) (2).txt (5b) od bob@example.org?"), "bob@example.org");
    EXPECT_EQ(file.name, QStringLiteral("a (1b) (2).txt"));
    EXPECT_EQ(file.size, 5);
    EXPECT_EQ(file.possibleNames, QStringList({"a", "a (1b)", "a (1b) (2).txt"}));
}

TEST(ReadOfferTest, KeepsNoMoreNamesThanAFileCanHave) {
    const QString name = QStringLiteral("x") + QStringLiteral(" (").repeated(100'000);
    const OfferedFile file =
        readOffer(QStringLiteral("Czy chcesz odebrać %1 (5b) od bob@example.org?").arg(name), "bob@example.org");
    EXPECT_EQ(file.name, name);
    EXPECT_EQ(file.size, 5);
    EXPECT_EQ(file.possibleNames.size(), 128);
    EXPECT_EQ(file.possibleNames.last().size(), 255);
}

}  // namespace
}  // namespace oku::test
