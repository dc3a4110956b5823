// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/talk/history_file.h"

#include <algorithm>
#include <QDateTime>
#include <QFile>
#include <QSqlError>
#include <QUuid>

namespace oku {
namespace {

constexpr int kFormat = 2;  // of the tables, in user_version
constexpr const char* kNewTables[] = {
    "CREATE TABLE messages(number INTEGER PRIMARY KEY AUTOINCREMENT, account TEXT NOT NULL, contact TEXT NOT NULL,"
    " resource TEXT, direction INTEGER NOT NULL, subject TEXT, body TEXT, kind INTEGER NOT NULL,"
    " time INTEGER NOT NULL, delayed INTEGER, state INTEGER NOT NULL, failed INTEGER NOT NULL DEFAULT 0,"
    " handed INTEGER NOT NULL DEFAULT 0)",
    "CREATE INDEX conversation ON messages(account, contact, number)",
    "CREATE INDEX waiting ON messages(account, state) WHERE direction=1", "PRAGMA user_version=2"};
// An index of words, which found no signs and no parts of words.
constexpr const char* kFromFormat1[] = {"DROP TRIGGER indexed", "DROP TABLE words", "PRAGMA user_version=2"};

// SQLite's codes.
constexpr int kSqlError = 1;  // of a statement
constexpr int kSqlCorrupt = 11;
constexpr int kSqlNoDatabase = 26;

QVariant milliseconds(const QDateTime& time) {
    return time.isValid() ? QVariant(time.toMSecsSinceEpoch()) : QVariant();
}

QDateTime timeAt(const QVariant& value) {
    return value.isNull() ? QDateTime() : QDateTime::fromMSecsSinceEpoch(value.toLongLong());
}

/// A damaged row may hold any number. What came in was received; what became of an own message is not known then.
DeliveryState stateOf(const QVariant& value, Direction direction) {
    if (direction == Direction::in) return DeliveryState::received;
    bool ok = false;
    const qlonglong state = value.toLongLong(&ok);
    if (ok && state >= static_cast<int>(DeliveryState::received) && state <= static_cast<int>(DeliveryState::cancelled))
        return static_cast<DeliveryState>(state);
    return DeliveryState::unconfirmed;
}

}  // namespace

HistoryFile::HistoryFile(QString path) : path_(std::move(path)), connection_(QUuid::createUuid().toString()) {}

HistoryFile::~HistoryFile() { close(); }

Message HistoryFile::messageAt(const QSqlQuery& row) {
    Message message;
    message.number = row.value(0).toLongLong();
    message.account = row.value(1).toString();
    message.contact = row.value(2).toString();
    message.resource = row.value(3).toString();
    message.direction = row.value(4).toInt() ? Direction::out : Direction::in;
    message.subject = row.value(kSubject).toString();
    message.body = row.value(kBody).toString();
    message.kind = row.value(7).toInt() ? MessageKind::normal : MessageKind::chat;
    message.time = timeAt(row.value(8));
    message.delayed = timeAt(row.value(9));
    message.state = stateOf(row.value(10), message.direction);
    message.failed = row.value(11).toBool();
    return message;
}

bool HistoryFile::exists() const { return QFile::exists(path_); }

bool HistoryFile::open() {
    if (opened_) return true;
    database_ = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection_);
    database_.setDatabaseName(path_);
    database_.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
    opened_ = true;
    fault_ = Fault::none;
    code_ = 0;
    if (prepare()) return true;
    close();
    return false;
}

void HistoryFile::close() {
    if (!opened_) return;
    insert_.reset();
    database_.close();
    database_ = {};
    QSqlDatabase::removeDatabase(connection_);
    opened_ = false;
}

bool HistoryFile::prepare() {
    // The file is made here, so that it is never readable for others, not for a moment.
    QFile file(path_);
    const bool made = file.exists() || file.open(QIODevice::NewOnly | QIODevice::WriteOnly,
                                                 QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    file.close();
    if (!made) {
        fault_ = Fault::other;
        reason_ = file.errorString();
        return false;
    }
    if (!database_.open()) return fails(database_.lastError());
    if (prepareTables() && readLastNumber()) return true;
    // A table or column that a history has is missing.
    if (code_ == kSqlError) fault_ = Fault::damaged;
    return false;
}

bool HistoryFile::prepareTables() {
    // Each commit goes to the log at once, but is not waited for until it has reached the disk: sync() does that for
    // all that came meanwhile.
    for (const char* pragma : {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=NORMAL", "PRAGMA secure_delete=ON"}) {
        if (!run(pragma)) return false;
    }
    QSqlQuery query(database_);
    query.prepare(QStringLiteral("PRAGMA user_version"));
    if (!run(query) || !query.next()) return false;
    const int format = query.value(0).toInt();
    query.finish();
    if (format < 0 || format > kFormat) {
        fault_ = Fault::other;
        reason_ = QCoreApplication::translate("History", "pochodzi z nowszej wersji programu");
        return false;
    }
    if (format == 0 && !together([this] { return runAll(kNewTables); })) return false;
    if (format == 1 && !together([this] { return runAll(kFromFormat1); })) return false;
    // What was handed to a connection when the program ended without a word is not known to have arrived. The index
    // spares the reading of a long history at each start.
    return run("CREATE INDEX IF NOT EXISTS unconfirmed ON messages(number) WHERE handed=1") &&
           run("UPDATE messages SET state=3, handed=0 WHERE handed=1");
}

bool HistoryFile::readLastNumber() {
    QSqlQuery query(database_);
    query.prepare(QStringLiteral("SELECT seq FROM sqlite_sequence WHERE name='messages'"));
    if (!run(query)) return false;
    lastNumber_ = query.next() ? query.value(0).toLongLong() : 0;
    return true;
}

bool HistoryFile::write(const HistoryChanges& changes) {
    return open() && together([&] { return writeAll(changes); });
}

bool HistoryFile::writeAll(const HistoryChanges& changes) {
    if (!writeStates(changes)) return false;
    for (const auto& [account, withMessages] : changes.gone) {
        if (!writeGone(account, withMessages)) return false;
    }
    // Last, as an account that was removed may have been added again meanwhile.
    for (const Message& message : changes.messages) {
        if (!insert(message)) return false;
        lastNumber_ = std::max(lastNumber_, message.number);
    }
    return true;
}

bool HistoryFile::writeStates(const HistoryChanges& changes) {
    if (changes.states.empty()) return true;
    QSqlQuery query(database_);
    query.prepare(QStringLiteral("UPDATE messages SET state=?, handed=? WHERE number=?"));
    for (const auto& [number, change] : changes.states) {
        query.bindValue(0, static_cast<int>(change.state));
        query.bindValue(1, change.handed ? 1 : 0);
        query.bindValue(2, number);
        if (!run(query)) return false;
    }
    return true;
}

bool HistoryFile::writeGone(const QString& account, bool withMessages) {
    if (withMessages) return remove(QStringLiteral("account=?"), account);
    QSqlQuery query(database_);
    query.prepare(QStringLiteral("UPDATE messages SET state=? WHERE direction=1 AND account=? AND state=?"));
    query.addBindValue(static_cast<int>(DeliveryState::failed));
    query.addBindValue(account);
    query.addBindValue(static_cast<int>(DeliveryState::queued));
    return run(query);
}

bool HistoryFile::remove(const QString& condition, const QVariant& value) {
    if (!open()) return false;
    QSqlQuery query(database_);
    query.prepare(QStringLiteral("DELETE FROM messages WHERE ") + condition);
    query.addBindValue(value);
    return run(query);
}

bool HistoryFile::insert(const Message& message) {
    if (!insert_) {
        insert_ = std::make_unique<QSqlQuery>(database_);
        insert_->prepare(
            QStringLiteral("INSERT INTO messages(number, account, contact, resource, direction, subject, body, kind,"
                           " time, delayed, state, failed) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    }
    int place = 0;
    for (const QVariant& value :
         {QVariant(message.number), QVariant(message.account), QVariant(message.contact), QVariant(message.resource),
          QVariant(message.direction == Direction::out ? 1 : 0), QVariant(message.subject), QVariant(message.body),
          QVariant(message.kind == MessageKind::normal ? 1 : 0), milliseconds(message.time),
          milliseconds(message.delayed), QVariant(static_cast<int>(message.state)), QVariant(message.failed ? 1 : 0)}) {
        insert_->bindValue(place++, value);
    }
    const bool done = run(*insert_);
    // A statement that is not ended would keep its place in the write-ahead log.
    insert_->finish();
    return done;
}

// A checkpoint waits for the log to reach the disk, then for the database.
bool HistoryFile::sync() { return opened_ && run("PRAGMA wal_checkpoint(PASSIVE)"); }

QString HistoryFile::setAside() {
    close();
    const QString stamp = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    const QString aside = path_ + QStringLiteral(".damaged-") + stamp;
    if (!QFile::rename(path_, aside)) return {};
    // The log holds the newest messages; the other file is made from it.
    const QString log = QStringLiteral("-wal");
    QFile::rename(path_ + log, aside + log);
    QFile::remove(path_ + QStringLiteral("-shm"));
    return aside;
}

bool HistoryFile::start(QSqlQuery& query, const QString& condition, const QVariantList& values) {
    query.prepare(QStringLiteral("SELECT %1 FROM messages WHERE ").arg(QLatin1String(kColumns)) + condition);
    for (const QVariant& value : values) query.addBindValue(value);
    return run(query);
}

bool HistoryFile::ended(const QSqlQuery& query) { return !query.lastError().isValid() || fails(query.lastError()); }

bool HistoryFile::run(QSqlQuery& query) { return query.exec() || fails(query.lastError()); }

bool HistoryFile::run(const char* text) {
    QSqlQuery query(database_);
    return query.exec(QString::fromLatin1(text)) || fails(query.lastError());
}

bool HistoryFile::runAll(std::span<const char* const> steps) {
    return std::all_of(steps.begin(), steps.end(), [this](const char* step) { return run(step); });
}

template <typename Steps>
bool HistoryFile::together(Steps steps) {
    if (!run("BEGIN IMMEDIATE")) return false;
    if (steps() && run("COMMIT")) return true;
    QSqlQuery(database_).exec(QStringLiteral("ROLLBACK"));  // the fault that counts has been seen
    return false;
}

bool HistoryFile::fails(const QSqlError& error) {
    code_ = error.nativeErrorCode().toInt() & 0xff;  // without the bits that tell more
    fault_ = code_ == kSqlCorrupt || code_ == kSqlNoDatabase ? Fault::damaged : Fault::other;
    reason_ = error.databaseText().isEmpty() ? error.text() : error.databaseText();
    return false;
}

}  // namespace oku
