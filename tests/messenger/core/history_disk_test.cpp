// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
// Histories that are damaged, and disks that take nothing.
#include "messenger/core/talk/history_salvage.h"
#include "tests/messenger/core/full_disk.h"
#include "tests/messenger/core/history_stage.h"

namespace oku::test {
namespace {

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
    add("waits to be written");
    history->flush();
    EXPECT_EQ(found().size(), 3);
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
