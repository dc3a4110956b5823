// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A history in a file of its own, and what other programs do to that file.
#pragma once

#include "messenger/core/talk/history.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "tests/messenger/core/stage.h"

namespace oku::test {

inline const QString kAlice = QStringLiteral("alice@example.org");
inline const QString kBob = QStringLiteral("bob@example.org");

/// What the first format made, with one message in it.
inline constexpr const char* kFirstFormat[] = {
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
inline void carryOut(const QString& path, std::span<const char* const> steps) {
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

inline void make(const QString& path, std::initializer_list<const char*> steps) {
    carryOut(path, kFirstFormat);
    carryOut(path, {steps.begin(), steps.size()});
}

inline Message written(const char* body) {
    Message message;
    message.account = kAlice;
    message.contact = kBob;
    message.body = QString::fromUtf8(body);
    message.time = QDateTime::currentDateTime();
    return message;
}

class HistoryTest : public testing::Test {
protected:
    /// Before the members below: it may tell them something at its end.
    void TearDown() override { history.reset(); }
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

}  // namespace oku::test
