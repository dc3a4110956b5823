// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/core/history_stage.h"

namespace oku::test {
namespace {

TEST(HistoryFile, OfTheFirstFormatIsKeptAndGoesOn) {
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("history.sqlite"));
    make(path, {});
    for (int start = 1; start <= 2; ++start) {
        History history(path);
        EXPECT_NE(history.addNow(written("dziś")), 0);
        EXPECT_EQ(history.find(kAlice, kBob, 20, QStringLiteral("temu")).size(), 1);
        EXPECT_EQ(history.find(kAlice, kBob, 20, {}).size(), 1 + start);
    }
}

TEST(HistoryFile, OfALaterFormatIsLeftAsItIs) {
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("history.sqlite"));
    make(path, {"PRAGMA user_version=99"});
    History history(path);
    QStringList told;
    QObject::connect(&history, &History::failed, &history, [&](const QString& reason) { told.append(reason); });
    EXPECT_EQ(history.addNow(written("dziś")), 0);
    EXPECT_EQ(told.size(), 1);
}

TEST_F(HistoryTest, TellsNothingBeforeItIsWritten) {
    start();
    add("one");
    add("two");
    EXPECT_EQ(told, QStringList());
    EXPECT_EQ(onDisk(), QStringList());
    EXPECT_EQ(found(), QStringList()) << "what is not told yet is not there yet";
    QStringList seen;
    history->whenWritten([&] { seen = onDisk(); });
    ASSERT_TRUE(waitForTold(2));
    EXPECT_EQ(told, (QStringList{"one", "two"}));
    EXPECT_EQ(seen, told) << "both were written together";
    EXPECT_EQ(found(), told);
    EXPECT_EQ(numbers, (QList<qint64>{1, 2}));
}

TEST_F(HistoryTest, TellsInTheOrderInWhichThingsCame) {
    start();
    add("one");
    history->whenWritten([this] { told.append(QStringLiteral("sent")); });
    add("two");
    EXPECT_EQ(history->addNow(written("own")), 3);
    EXPECT_EQ(told, (QStringList{"one", "sent", "two"})) << "what came before an own message is told before it";
    history->whenWritten([this] { told.append(QStringLiteral("at once")); });
    EXPECT_EQ(told.last(), QStringLiteral("at once")) << "nothing waits";
    EXPECT_EQ(onDisk(), (QStringList{"one", "two", "own"}));
}

TEST_F(HistoryTest, ShowsWhoIsToldOfAMessageNoLaterOne) {
    start();
    QList<QStringList> seen;
    history->add(written("one"), [&](const Message&) { seen.append(found()); });
    history->add(written("two"), [&](const Message&) {
        seen.append(found());
        EXPECT_NE(history->addNow(written("own")), 0) << "within the telling";
    });
    history->add(written("three"), [&](const Message&) { seen.append(found()); });
    history->flush();
    EXPECT_EQ(seen, (QList<QStringList>{{"one"}, {"one", "two"}, {"one", "two", "three"}}));
    EXPECT_EQ(found(), (QStringList{"one", "two", "three", "own"}));
}

TEST_F(HistoryTest, TellsWithinATurnThatTakesLong) {
    start();
    add("one");
    history->setLongestTurn(100);
    QThread::msleep(150);
    add("two");
    EXPECT_EQ(told, (QStringList{"one", "two"}));
}

TEST_F(HistoryTest, KnowsAStateBeforeItIsWritten) {
    start();
    Message own = written("own");
    own.direction = Direction::out;
    own.state = DeliveryState::queued;
    const qint64 number = history->addNow(own);
    history->setState(number, DeliveryState::sent, true);
    EXPECT_EQ(history->message(number)->state, DeliveryState::sent);
    EXPECT_EQ(history->outgoing(kAlice, DeliveryState::queued).size(), 0);
    EXPECT_EQ(history->outgoing(kAlice, DeliveryState::sent).size(), 1);
    history->flush();
    EXPECT_EQ(history->outgoing(kAlice, DeliveryState::sent).size(), 1);
    start();
    EXPECT_EQ(history->outgoing(kAlice, DeliveryState::unconfirmed).size(), 1) << "nobody said that it arrived";
}

TEST_F(HistoryTest, ReadsARowWhoseStateIsNone) {
    for (const char* damage : {"UPDATE messages SET state=200", "UPDATE messages SET state=-1",
                               "UPDATE messages SET state='x'", "UPDATE messages SET state=4294967296"}) {
        start();
        history->forget(kAlice, true);
        ASSERT_NE(history->addNow(written("theirs")), 0);
        Message own = written("own");
        own.direction = Direction::out;
        own.state = DeliveryState::sent;
        const qint64 number = history->addNow(own);
        history->close();
        carryOut(path, {&damage, 1});
        start();
        const QList<Message> all = history->find(kAlice, kBob, -1, {});
        ASSERT_EQ(all.size(), 2) << damage;
        ASSERT_EQ(static_cast<int>(all[0].state), static_cast<int>(DeliveryState::received)) << damage;
        ASSERT_EQ(static_cast<int>(all[1].state), static_cast<int>(DeliveryState::unconfirmed)) << damage;
        EXPECT_EQ(history->message(number)->state, DeliveryState::unconfirmed);
        EXPECT_TRUE(historyAsJson(all).contains("unconfirmed"));
        EXPECT_TRUE(historyAsText(all).contains("unconfirmed"));
    }
}

TEST_F(HistoryTest, WhatCameInWasReceivedWhateverItsRowSays) {
    for (const char* damage :
         {"UPDATE messages SET state=1", "UPDATE messages SET state=2", "UPDATE messages SET state=3",
          "UPDATE messages SET state=4", "UPDATE messages SET state=5"}) {
        start();
        history->forget(kAlice, true);
        const qint64 number = history->addNow(written("theirs"));
        ASSERT_NE(number, 0);
        history->close();
        carryOut(path, {&damage, 1});
        start();
        const QList<Message> all = history->find(kAlice, kBob, -1, {});
        ASSERT_EQ(all.size(), 1) << damage;
        EXPECT_EQ(deliveryStateWord(all[0].state), QStringLiteral("received")) << damage;
        EXPECT_EQ(deliveryStateWord(history->message(number)->state), QStringLiteral("received")) << damage;
    }
}

TEST_F(HistoryTest, WritesAtItsEndButTellsNobody) {
    start();
    add("one");
    history.reset();
    EXPECT_EQ(told, QStringList());
    EXPECT_EQ(onDisk(), QStringList(QStringLiteral("one")));
}

}  // namespace
}  // namespace oku::test
