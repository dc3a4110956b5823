// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/talk/text_search.h"

#include <gtest/gtest.h>
#include <QTemporaryDir>
#include <random>

#include "messenger/core/talk/history.h"

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

TEST(TextSearch, PassesOverWhatHasNoWeight) {
    EXPECT_TRUE(TextSearch(QString(QChar(0x0301))).empty()) << "a diacritic alone";
    EXPECT_TRUE(TextSearch(QString(QChar(0x200b)) + QChar(0)).empty());
    EXPECT_TRUE(fits("x\xcc\x81", "x"));
    EXPECT_FALSE(fits("x\xcc\x81", "y"));
}

TEST(TextSearch, FindsLettersByTheirBaseLetters) {
    EXPECT_TRUE(fits("zolty", "żółty"));
    EXPECT_TRUE(fits("żółty", "ZOLTY"));
    EXPECT_TRUE(fits("lodz", "jadę do Łodzi"));
    EXPECT_TRUE(fits("ođ", "od"));
    EXPECT_FALSE(fits("zolty", "zoty"));
}

// Beside an emoji a text takes another way, which must find the same.
TEST(TextSearch, FindsTheSameInTextsThatAreNotFolded) {
    for (const auto& [words, text] : {std::pair{"zolty", "🦆 żółty"},
                                      {"żółty 🦆", "ZOLTY🦆"},
                                      {"strasse", "Straße"},
                                      {"straße", "STRASSE"},
                                      {"ЙОД", "йод"},
                                      {"한국", "대한국"},
                                      {"🦆", "a🦆b"}}) {
        EXPECT_TRUE(fits(words, text)) << words << " in " << text;
    }
    for (const auto& [words, text] : {std::pair{"zolty", "🦆 zoty"},
                                      {"🦊", "zolty 🦆"},
                                      {"strasse", "Strase"},
                                      {"иод", "йод"},
                                      {"국한", "대한국"}}) {
        EXPECT_FALSE(fits(words, text)) << words << " in " << text;
    }
}

// A text with an emoji is searched as it stands, others are folded first: neither may find more than the other.
TEST(TextSearch, AnswersTheSameOnBothWays) {
    const QString letters = QString::fromUtf8(
        "aAąbcćCdđeęlŁłnńoóøsśßtuzźżŻæœiıİǆﬁ·,.:- \n0½ОИйиЁЕеαάΣςσ한각가アｱー李กเแ"
        "\xcc\x81\xcc\x86\xcc\x87\xe2\x80\x8d\xc2\xad");
    std::mt19937 random(7);
    const auto upTo = [&](qsizetype count) { return static_cast<qsizetype>(random() % static_cast<unsigned>(count)); };
    for (int round = 0; round < 20'000; ++round) {
        QString text;
        for (qsizetype count = 1 + upTo(12); count > 0; --count) text += letters.at(upTo(letters.size()));
        QString word = text.mid(upTo(text.size()), 1 + upTo(3));
        if (upTo(2) == 0) word += letters.at(upTo(letters.size()));
        const TextSearch search(word);
        EXPECT_EQ(search.fits({}, text), search.fits({}, text + QStringLiteral("🦆")))
            << qPrintable(word + u'|' + text);
    }
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
        ASSERT_NE(history.addNow(message), 0);
    }
    const auto found = [&](const QString& search, int limit) {
        QStringList list;
        for (const Message& one : history.find(message.account, {}, limit, search)) list.append(one.body);
        return list.join(u',').toStdString();
    };
    EXPECT_EQ(found(QStringLiteral("🦆"), 2), "trzecia 🦆,czwarta 🦆");
    EXPECT_EQ(found(QStringLiteral("🦆"), -1), "pierwsza 🦆,trzecia 🦆,czwarta 🦆");
    EXPECT_EQ(found(QStringLiteral("rwsz"), 5), "pierwsza 🦆");
    EXPECT_TRUE(failures.isEmpty());
}

}  // namespace
}  // namespace oku::test
