#include "messenger/core/history.h"

#include <gtest/gtest.h>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

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

void make(const QString& path, std::initializer_list<const char*> steps) {
    const QString connection = QStringLiteral("made");
    {
        auto database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        database.setDatabaseName(path);
        ASSERT_TRUE(database.open());
        QSqlQuery query(database);
        for (const char* step : kFirstFormat) ASSERT_TRUE(query.exec(QString::fromLatin1(step))) << step;
        for (const char* step : steps) ASSERT_TRUE(query.exec(QString::fromLatin1(step))) << step;
    }
    QSqlDatabase::removeDatabase(connection);
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
        EXPECT_NE(history.add(written("dziś")), 0);
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
    EXPECT_EQ(history.add(written("dziś")), 0);
    EXPECT_EQ(told.size(), 1);
}

}  // namespace
}  // namespace oku::test
