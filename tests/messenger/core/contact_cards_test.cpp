// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/oku/cards.h"
#include "messenger/core/cards/picture_file.h"
#include "tests/messenger/core/cards_stage.h"

namespace oku::test {
namespace {

const QString kBob = QStringLiteral("bob@example.org");
const QByteArray kContent("a picture of bob");
const QByteArray kPng("its points");

class ContactCardsTest : public CardsStage {
protected:
    ContactCardsTest() {
        begin();
        logIn();
        take();
        asked();
    }
    /// Asks for a card; gives the token that the plugin got.
    OKU_WORD ask(const QString& jid = kBob) {
        EXPECT_EQ(cards->requestCard(me, jid), QString());
        return tokens.empty() ? 0 : tokens.back();
    }
    /// The card comes, with these rows.
    void answer(
        OKU_WORD token, const std::function<void()>& rows = [] {}) {
        inPlugin([&] {
            cardStatus(token, nullptr, 1);
            rows();
        });
    }
};

TEST_F(ContactCardsTest, RowsBecomeACardWhenTheCallReturns) {
    plugin().onCard = [this](tiny::Account&, const std::string&, OKU_WORD token) {
        tokens.push_back(token);
        cardStatus(token, u"Pobieranie danych...");
    };
    const OKU_WORD token = ask(QStringLiteral("Bob@example.org/home"));
    EXPECT_EQ(asked(), "PFGetContactVCard bob@example.org");
    EXPECT_EQ(take(), took("progress|Pobieranie danych..."));
    answer(token, [&] {
        row(token, OKU_CARD_SECTION, {}, QStringLiteral("Dane"));
        row(token, OKU_CARD_FIELD, QStringLiteral("Nick:"), QStringLiteral("Bo\u202eb"));
        EXPECT_EQ(take(), QStringList());
    });
    EXPECT_EQ(take(), took("card|bob@example.org|1=Dane|0Nick:=Bo\u202eb"));
}

TEST_F(ContactCardsTest, ACardMayBeEmpty) {
    answer(ask());
    EXPECT_EQ(take(), took("card|bob@example.org"));
}

TEST_F(ContactCardsTest, TheTextOfAFailureIsTold) {
    const OKU_WORD token = ask();
    inPlugin([&] { cardStatus(token, u"Serwer zwrócił błąd lub pusty element."); });
    EXPECT_EQ(take(), took("no card|bob@example.org|Serwer zwrócił błąd lub pusty element."));
    inPlugin([&] { EXPECT_EQ(cardStatus(token, nullptr, 1), 0); });
    EXPECT_EQ(take(), QStringList()) << "its token is gone";
}

TEST_F(ContactCardsTest, NoTokenIsUsedTwiceAndNoneIsZero) {
    for (int i = 0; i < 5; ++i) answer(ask());
    ASSERT_EQ(tokens.size(), 5U);
    EXPECT_EQ(std::set<OKU_WORD>(tokens.begin(), tokens.end()).size(), 5U);
    EXPECT_EQ(std::count(tokens.begin(), tokens.end(), OKU_WORD{0}), 0);
}

TEST_F(ContactCardsTest, WhoIsBeingAskedForIsNotAskedAgain) {
    ask();
    EXPECT_EQ(cards->requestCard(me, kBob), QString());
    EXPECT_EQ(tokens.size(), 1U);
}

TEST_F(ContactCardsTest, RequestsHaveABound) {
    QString reason;
    for (int i = 0; i < 40 && reason.isEmpty(); ++i)
        reason = cards->requestCard(me, QStringLiteral("u%1@example.org").arg(i));
    EXPECT_FALSE(reason.isEmpty());
    EXPECT_EQ(tokens.size(), 32U);
}

TEST_F(ContactCardsTest, AStrangersCardHasABound) {
    const OKU_WORD token = ask();
    answer(token, [&] {
        for (int i = 0; i < 1000; ++i) row(token, OKU_CARD_FIELD, QStringLiteral("x"), QString(100'000, u'y'));
    });
    const QStringList parts = take().value(0).split(u'|');
    EXPECT_EQ(parts.size(), 2 + 64);
    EXPECT_EQ(parts.value(2).size(), 3 + 4096);
}

TEST_F(ContactCardsTest, WhatTheConnectionsEndLeavesIsTold) {
    const OKU_WORD token = ask();
    loseConnection();
    EXPECT_TRUE(take().value(0).startsWith(QStringLiteral("no card|bob@example.org|")));
    inPlugin([&] { cardStatus(token, nullptr, 1); });
    EXPECT_EQ(take(), QStringList());
    EXPECT_FALSE(cards->requestCard(me, kBob).isEmpty());
    EXPECT_FALSE(cards->requestCard(QStringLiteral("nobody@example.org"), kBob).isEmpty());
}

TEST_F(ContactCardsTest, WhatIsNoAddressIsRefused) {
    EXPECT_FALSE(cards->requestCard(me, QStringLiteral("a b@example.org")).isEmpty());
    EXPECT_FALSE(cards->requestCard(me, QString()).isEmpty());
    EXPECT_TRUE(tokens.empty());
}

TEST_F(ContactCardsTest, ItsPictureIsReadApartFirst) {
    const OKU_WORD token = ask();
    const QString path = cached(QStringLiteral("L") + pictureHash(kContent), kContent);
    answer(token, [&] {
        row(token, OKU_CARD_SECTION, {}, QStringLiteral("Obrazki"));
        row(token, OKU_CARD_IMAGE, QStringLiteral("Awatar:"), path);
        EXPECT_EQ(row(token, OKU_CARD_FIELD, QStringLiteral("x"), QStringLiteral("y")), 0) << "a picture is the last";
    });
    EXPECT_EQ(take(), QStringList());
    ASSERT_EQ(reader->waiting.size(), 1U);
    EXPECT_EQ(reader->waiting.front().first, kContent);
    reader->answer(kPng);
    const QString file = core->profile.cacheDirectory() + QStringLiteral("pictures/") + pictureHash(kContent) + ".png";
    EXPECT_EQ(take(), QStringList("card|bob@example.org|1=Obrazki|2Awatar:=" + file));
    QFile kept(file);
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), kPng);
}

TEST_F(ContactCardsTest, WithoutAPictureItsHeadingGoesToo) {
    const OKU_WORD token = ask();
    const QString path = cached(QStringLiteral("L") + pictureHash(kContent), kContent);
    answer(token, [&] {
        row(token, OKU_CARD_FIELD, QStringLiteral("Nick:"), QStringLiteral("Bob"));
        row(token, OKU_CARD_SECTION, {}, QStringLiteral("Obrazki"));
        row(token, OKU_CARD_IMAGE, QStringLiteral("Awatar:"), path);
    });
    ASSERT_EQ(reader->waiting.size(), 1U);
    reader->answer({});
    EXPECT_EQ(take(), took("card|bob@example.org|0Nick:=Bob"));
}

}  // namespace
}  // namespace oku::test
