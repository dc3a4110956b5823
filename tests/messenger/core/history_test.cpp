// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/talk/history.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "messenger/core/talk/history_salvage.h"
#include "tests/messenger/core/full_disk.h"
#include "tests/messenger/core/stage.h"

namespace oku::test {
namespace {

const QString kAlice = QStringLiteral("alice@example.org");
const QString kBob = QStringLiteral("bob@example.org");

/// What the first format made, with one message in it.
constexpr const char* kFirstFormat[] = {
    "CREATE TABLE messages(number INTEGER PRIMARY KEY AUTOINCREMENT, account TEXT NOT NULL, contact TEXT NOT NULL,"
    " resource TEXT, direction INTEGER NOT NULL, subject TEXT, body TEXT, kind INTEGER NOT NULL,"
    " time INTEGER NOT NULL, delayed INTEGER, state INTEGER NOT NULL, failed INTEGER NOT NULL DEFAULT 0,"
    " handed INTEGER NOT NULL DEFAULT 0)",
    "CREATE INDEX conversation ON messages(account, contact, number)",
    "CREATE INDEX waiting ON messages(account, state) WHERE direction=1",
    "CREATE VIRTUAL TABLE words USING fts5(subject, body, content='messages', content_rowid='number')",
    "CREATE TRIGGER indexed AFTER INSERT ON messages BEGIN"
    " INSERT INTO words(rowid, subject, body) VALUES(new.number, new.subject, new.body); END",
    "INSERT INTO messages(account, contact, direction, body, kind, time, state)"
    " VALUES('alice@example.org', 'bob@example.org', 0, 'dawno temu', 0, 1000, 0)",
    "PRAGMA user_version=1"};

/// As another program would do it.
void carryOut(const QString& path, std::span<const char* const> steps) {
    const QString connection = QStringLiteral("made");
    {
        auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        database.setDatabaseName(path);
        ASSERT_TRUE(database.open());
        QSqlQuery query(database);
        for (const char* step : steps) ASSERT_TRUE(query.exec(QString::fromLatin1(step))) << step;
    }
    QSqlDatabase::removeDatabase(connection);
}

void make(const QString& path, std::initializer_list<const char*> steps) {
    carryOut(path, kFirstFormat);
    carryOut(path, {steps.begin(), steps.size()});
}

Message written(const char* body) {
    Message message;
    message.account = kAlice;
    message.contact = kBob;
    message.body = QString::fromUtf8(body);
    message.time = QDateTime::currentDateTime();
    return message;
}

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

class HistoryTest : public testing::Test {
protected:
    void start() {
        history.reset();
        told.clear();
        notices.clear();
        history = std::make_unique<History>(path);
        history->setLongestTurn(600'000);  // a turn is a turn, however long the machine lets it wait
        QObject::connect(history.get(), &History::failed, history.get(),
                         [this](const QString& text) { notices.append(text); });
    }
    void add(const char* body) { add(QString::fromUtf8(body)); }
    void add(const QString& body) {
        Message message = written("");
        message.body = body;
        history->add(message, [this](const Message& shown) {
            told.append(shown.body);
            numbers.append(shown.number);
        });
    }
    bool waitForTold(qsizetype count) {
        return waitFor([=, this] { return told.size() >= count; });
    }
    QStringList found(int limit = -1) {
        QStringList bodies;
        for (const Message& message : history->find(kAlice, kBob, limit, {})) bodies.append(message.body);
        return bodies;
    }
    /// What stands in the file, as any other program would see it.
    QStringList onDisk() const {
        History other(path);
        QStringList bodies;
        for (const Message& message : other.find(kAlice, kBob, -1, {})) bodies.append(message.body);
        return bodies;
    }
    QStringList aside() const {
        return QDir(directory.path()).entryList({QStringLiteral("history.sqlite.damaged-*[0-9]")});
    }
    QByteArray content() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void setContent(const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    void damageTheMiddle() {
        QByteArray bytes = content();
        const qsizetype page = 4096;
        for (qsizetype at = bytes.size() / 2 / page * page; at < bytes.size() / 2 + 3 * page; ++at) bytes[at] = 'x';
        setContent(bytes);
    }
    /// A whole history of many messages, and nothing beside it.
    void makeLong(int count) {
        start();
        for (int i = 0; i < count; ++i) add(QStringLiteral("message %1 ").arg(i) + QString(200, u'x'));
        history->close();
        history.reset();
    }

    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("history.sqlite"));
    std::unique_ptr<History> history;
    QStringList told;
    QList<qint64> numbers;
    QStringList notices;
};

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

TEST_F(HistoryTest, SetsAsideWhatIsNoHistoryAndGoesOn) {
    QByteArray noise(20000, 'x');
    for (qsizetype i = 0; i < noise.size(); ++i) noise[i] = static_cast<char>(i * 7919 >> 3);
    makeLong(300);
    const QByteArray half = content().left(content().size() / 2);
    for (const QByteArray& damage : {noise, half, QByteArray(20000, '\0'), QByteArray("short")}) {
        setContent(damage);
        start();
        add("one");
        ASSERT_TRUE(waitForTold(1));
        EXPECT_EQ(notices.size(), 1);
        ASSERT_EQ(aside().size(), 1) << "for " << damage.size() << " bytes";
        const QString kept = directory.filePath(aside().first());
        EXPECT_TRUE(notices.value(0).contains(kept)) << notices.join(u'|').toStdString();
        QFile file(kept);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), damage);
        EXPECT_EQ(onDisk(), QStringList(QStringLiteral("one")));
        EXPECT_FALSE(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther));
        history.reset();
        EXPECT_TRUE(file.remove());
        for (const char* rest : {"", "-wal", "-shm"}) QFile::remove(path + QLatin1String(rest));
    }
}

TEST_F(HistoryTest, SetsADatabaseWithOtherTablesAside) {
    make(path, {"DROP TRIGGER indexed", "DROP TABLE messages", "PRAGMA user_version=2"});
    start();
    add("one");
    ASSERT_TRUE(waitForTold(1));
    EXPECT_EQ(aside().size(), 1);
    EXPECT_EQ(onDisk(), QStringList(QStringLiteral("one")));
}

TEST_F(HistoryTest, KeepsWhatCanBeReadOfAFileWithADamagedPage) {
    makeLong(3000);
    damageTheMiddle();
    start();
    add("one");
    ASSERT_TRUE(waitForTold(1));
    const QStringList all = found();
    ASSERT_EQ(aside().size(), 1);
    EXPECT_EQ(notices.size(), 1) << notices.join(u'|').toStdString();
    EXPECT_GT(all.size(), 2000);
    EXPECT_TRUE(all.first().startsWith(QStringLiteral("message 0 ")));
    EXPECT_EQ(all.last(), QStringLiteral("one"));
    EXPECT_TRUE(all[all.size() - 2].startsWith(QStringLiteral("message 2999 "))) << "also from behind the damage";
    EXPECT_EQ(QSet<QString>(all.begin(), all.end()).size(), all.size()) << "none twice";
    EXPECT_EQ(history->addNow(written("two")), 3002) << "numbers go on";
    EXPECT_EQ(onDisk().size(), all.size() + 1);
}

TEST(HistorySalvage, LosesNoMessageForAnotherThatCannotBeTaken) {
    const QTemporaryDir directory;
    const QString damaged = directory.filePath(QStringLiteral("damaged"));
    // Damage can show itself as a value that no history has: no account here.
    make(damaged,
         {"DROP TABLE messages",
          "CREATE TABLE messages(number INTEGER PRIMARY KEY, account TEXT, contact TEXT, resource TEXT, direction,"
          " subject TEXT, body TEXT, kind, time, delayed, state, failed, handed)",
          "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1500) INSERT INTO messages"
          " SELECT i, CASE i WHEN 700 THEN NULL ELSE 'alice@example.org' END, 'bob@example.org', '', 0, '', 'x', 0, i,"
          " NULL, 0, 0, 0 FROM n"});
    HistoryFile fresh(directory.filePath(QStringLiteral("fresh")));
    EXPECT_EQ(salvageHistory(damaged, fresh), 1499);
    EXPECT_EQ(fresh.lastNumber(), 1500);
}

TEST_F(HistoryTest, ShowsWhatAFullDiskDoesNotTakeAndWritesItWhenThereIsRoom) {
    start();
    EXPECT_NE(history->addNow(written("before")), 0);
    FullDisk full;
    add("one");
    ASSERT_TRUE(waitForTold(1));
    add("two");
    ASSERT_TRUE(waitForTold(2));
    // Beside it, perhaps, that the disk does not take what was written before either: that is another notice.
    const auto noticed = [this](const char* text) { return notices.filter(QString::fromUtf8(text)).size(); };
    EXPECT_EQ(noticed("Nie można zapisać"), 1) << "told once";
    EXPECT_EQ(history->addNow(written("own")), 0) << "the user still has it, and can send it later";
    EXPECT_EQ(found(), (QStringList{"before", "one", "two"}));
    EXPECT_EQ(found(1), (QStringList{"two"}));
    full.end();
    EXPECT_TRUE(waitFor([&] { return noticed("znów działa") == 1; })) << "by itself";
    EXPECT_EQ(onDisk(), (QStringList{"before", "one", "two"}));
    EXPECT_EQ(found(), (QStringList{"before", "one", "two"})) << "none twice";
}

TEST_F(HistoryTest, ForgetsAnAccountAlsoWhileItCannotBeOpened) {
    for (const bool withMessages : {false, true}) {
        start();
        const qint64 theirs = history->addNow(written("theirs"));
        Message own = written("own");
        own.direction = Direction::out;
        own.state = DeliveryState::queued;
        const qint64 number = history->addNow(own);
        own.account = kBob;
        const qint64 ofAnother = history->addNow(own);
        history->close();
        const char* later = "PRAGMA user_version=99";
        carryOut(path, {&later, 1});
        start();
        history->forget(kAlice, withMessages);
        EXPECT_EQ(notices.size(), 1) << "that it cannot be opened";
        const char* now = "PRAGMA user_version=2";
        carryOut(path, {&now, 1});
        add("new");  // of one that was added again
        ASSERT_TRUE(waitFor([&] { return !notices.filter(QStringLiteral("znów działa")).isEmpty(); })) << "by itself";
        history->close();
        start();
        EXPECT_TRUE(history->outgoing(kAlice, DeliveryState::queued).isEmpty());
        EXPECT_EQ(history->outgoing(kBob, DeliveryState::queued).size(), 1) << "another account's";
        EXPECT_EQ(history->message(theirs).has_value(), !withMessages);
        EXPECT_EQ(history->message(number).has_value(), !withMessages);
        EXPECT_EQ(found().last(), QStringLiteral("new"));
        EXPECT_TRUE(history->remove(ofAnother));
    }
}

TEST_F(HistoryTest, ShowsNothingOfAForgottenAccountBeforeThatIsWritten) {
    start();
    ASSERT_NE(history->addNow(written("theirs")), 0);
    Message own = written("own");
    own.direction = Direction::out;
    own.state = DeliveryState::queued;
    const qint64 number = history->addNow(own);
    FullDisk full;
    history->forget(kAlice, false);
    EXPECT_EQ(history->message(number)->state, DeliveryState::failed);
    EXPECT_TRUE(history->outgoing(kAlice, DeliveryState::queued).isEmpty());
    history->setState(number, DeliveryState::queued);
    EXPECT_EQ(history->outgoing(kAlice, DeliveryState::queued).size(), 1) << "sent again";
    history->forget(kAlice, true);
    EXPECT_EQ(found(), QStringList());
    history->close();
    EXPECT_EQ(notices.filter(QStringLiteral("Nie można usunąć")).size(), 1) << "the end of the program loses it";
}

TEST_F(HistoryTest, BeginsOnAFullDiskAndGoesOnWhenThereIsRoom) {
    start();
    FullDisk full;
    add("one");
    ASSERT_TRUE(waitForTold(1));
    EXPECT_EQ(numbers, QList<qint64>{0}) << "nobody knows the last number yet";
    EXPECT_EQ(found(), QStringList(QStringLiteral("one")));
    full.end();
    EXPECT_NE(history->addNow(written("own")), 0) << "tried at once, as somebody waits";
    EXPECT_EQ(onDisk(), (QStringList{"one", "own"}));
}

TEST_F(HistoryTest, TellsOfADamagedFileWhenThereIsRoomForANewOne) {
    setContent(QByteArray(10000, 'x'));
    start();
    FullDisk full;
    add("one");
    ASSERT_TRUE(waitForTold(1));
    full.end();
    EXPECT_NE(history->addNow(written("own")), 0);
    ASSERT_EQ(aside().size(), 1);
    EXPECT_EQ(notices.filter(aside().first()).size(), 1) << notices.join(u'|').toStdString();
    EXPECT_EQ(onDisk(), (QStringList{"one", "own"}));
}

TEST_F(HistoryTest, ReadsWhatWaitsWhenThereIsRoomAgainForANewFile) {
    start();
    Message own = written("");
    own.direction = Direction::out;
    own.state = DeliveryState::queued;
    own.body = QString(200, u'x');
    constexpr int kCount = 600;
    for (int i = 0; i < kCount; ++i) ASSERT_NE(history->addNow(own), 0);
    history->close();
    damageTheMiddle();
    start();
    ASSERT_TRUE(history->message(1)) << "it is open";
    const auto waiting = [this] { return history->outgoing(kAlice, DeliveryState::queued).size(); };
    bool triedAgain = false;
    QObject::connect(history.get(), &History::retried, history.get(), [&] { triedAgain = true; });
    {
        const NoNewFiles none;
        waiting();
    }
    EXPECT_FALSE(history->readWhole());
    ASSERT_EQ(aside().size(), 1);
    ASSERT_FALSE(QFile::exists(path));
    EXPECT_EQ(notices.size(), 1) << "that it cannot be read";
    waiting();
    EXPECT_FALSE(history->readWhole()) << "something waits, though there is no file";
    EXPECT_TRUE(waitFor([&] { return triedAgain; })) << "by itself";
    EXPECT_GT(waiting(), kCount / 2);
    EXPECT_TRUE(history->readWhole());
}

TEST_F(HistoryTest, TriesAgainToBringToTheDiskWhatItDidNotTake) {
    start();
    for (int i = 0; i < 50; ++i) add(QString(4000, u'x'));
    ASSERT_TRUE(waitForTold(50));
    history->close();  // nothing is left in the log
    const qint64 size = QFileInfo(path).size();
    FullDisk full(size);
    add(QString(40000, u'x'));
    ASSERT_TRUE(waitForTold(51));
    ASSERT_TRUE(waitFor([this] { return notices.size() == 1; })) << "the log takes it, the database cannot grow";
    EXPECT_EQ(QFileInfo(path).size(), size);
    full.end();
    EXPECT_TRUE(waitFor([&] { return QFileInfo(path).size() > size; })) << "by itself";
}

TEST_F(HistoryTest, KeepsNoMoreThanItsBounds) {
    start();
    FullDisk full;
    constexpr int bound = 10000;
    for (int i = 0; i <= bound; ++i) add("x");
    ASSERT_TRUE(waitForTold(bound + 1)) << "all are shown";
    EXPECT_EQ(notices.size(), 2) << "that it fails, and that there are too many";
    full.end();
    history->close();
    EXPECT_EQ(onDisk().size(), bound);
}

TEST_F(HistoryTest, TellsAtItsEndWhatIsLost) {
    start();
    FullDisk full;
    add("one");
    history->close();
    EXPECT_EQ(told, QStringList(QStringLiteral("one")));
    ASSERT_EQ(notices.size(), 2);
    EXPECT_TRUE(notices[1].contains(u'1')) << notices[1].toStdString();
}

}  // namespace
}  // namespace oku::test
