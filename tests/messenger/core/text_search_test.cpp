#include "messenger/core/text_search.h"

#include <gtest/gtest.h>
#include <QTemporaryDir>

#include "messenger/core/history.h"

namespace oku::test {
namespace {

bool fits(const char* words, const char* text) {
    return TextSearch(QString::fromUtf8(words)).fits({}, QString::fromUtf8(text));
}

TEST(TextSearch, FindsPartsOfWordsSignsAndEmoji) {
    EXPECT_TRUE(fits("ierszach trze", "trzecia\nw dwóch wierszach"));
    EXPECT_FALSE(fits("ierszach piąt", "trzecia\nw dwóch wierszach"));
    EXPECT_TRUE(fits("🦆", "kacz🦆ka"));
    EXPECT_FALSE(fits("🦆", "kacz🦊ka"));
    EXPECT_TRUE(fits(":-)", "cześć:-)"));
    EXPECT_TRUE(fits("?", "co?"));
    EXPECT_TRUE(fits("梅", "李梅"));
    EXPECT_TRUE(fits("\"'%_*", "a\"'%_*b"));
    EXPECT_FALSE(fits("%", "100"));
    EXPECT_TRUE(fits("", "x"));
    EXPECT_TRUE(fits(" \n", "x"));
    EXPECT_TRUE(TextSearch(QStringLiteral("temat tekst")).fits(QStringLiteral("Temat"), QStringLiteral("Tekst")));
}

TEST(TextSearch, PassesOverCaseAndDiacritics) {
    EXPECT_TRUE(fits("ZAŻÓŁĆ", "zażółć gęślą jaźń"));
    EXPECT_TRUE(fits("gesla JAZN", "zażółć gęślą jaźń"));
    EXPECT_TRUE(fits("gęślą", "GESLA"));
    EXPECT_TRUE(fits("привет", "ПРИВЕТ"));
    EXPECT_TRUE(fits("ΟΔΟΣ", "οδος"));
    EXPECT_TRUE(fits("Việt", "viet nam")) << "two diacritics on one letter";
    EXPECT_TRUE(fits("za\xc5\xbc\xc3\xb3", "zaz\xcc\x87o\xcc\x81")) << "composed and decomposed";
    EXPECT_FALSE(fits("가", "각")) << "syllables are no letters with signs";
}

TEST(TextSearch, FindsNothingByWhatNoTextHolds) {
    EXPECT_FALSE(TextSearch(QString(QChar(0))).fits({}, QStringLiteral("x")));
    EXPECT_FALSE(TextSearch(QStringLiteral("x") + QChar(0)).fits({}, QStringLiteral("x")));
    EXPECT_TRUE(TextSearch(QString(QChar(0x0301))).empty()) << "a diacritic alone does not count";
}

TEST(TextSearch, ReadsTheHistoryToTheNewestThatFit) {
    const QTemporaryDir directory;
    History history(directory.filePath(QStringLiteral("history.sqlite")));
    QStringList failures;
    QObject::connect(&history, &History::failed, [&](const QString& text) { failures.append(text); });
    Message message;
    message.account = QStringLiteral("alice@example.org");
    message.contact = QStringLiteral("bob@example.org");
    message.time = QDateTime::currentDateTime();
    for (const char* body : {"pierwsza 🦆", "druga", "trzecia 🦆", "czwarta 🦆", "piąta"}) {
        message.body = QString::fromUtf8(body);
        ASSERT_NE(history.add(message), 0);
    }
    const auto found = [&](const QString& search, int limit) {
        QStringList list;
        for (const Message& one : history.find(message.account, {}, limit, search)) list.append(one.body);
        return list.join(u',').toStdString();
    };
    EXPECT_EQ(found(QStringLiteral("🦆"), 2), "trzecia 🦆,czwarta 🦆");
    EXPECT_EQ(found(QStringLiteral("🦆"), -1), "pierwsza 🦆,trzecia 🦆,czwarta 🦆");
    EXPECT_EQ(found(QStringLiteral("rwsz"), 5), "pierwsza 🦆");
    EXPECT_EQ(found(QStringLiteral("a") + QChar(0), 5), "");
    EXPECT_TRUE(failures.isEmpty());
}

}  // namespace
}  // namespace oku::test
