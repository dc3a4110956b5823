#include "messenger/core/history.h"

#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>

#include "messenger/core/text_search.h"

namespace oku {
namespace {

constexpr int kSyncDelay = 100;  // milliseconds from the first change that power could take away
constexpr int kFormat = 2;       // of the tables, in user_version
constexpr int kAll = -1;         // no limit
constexpr char kColumns[] =
    "m.number, m.account, m.contact, m.resource, m.direction, m.subject, m.body, m.kind, m.time, m.delayed, m.state, "
    "m.failed";
constexpr int kSubject = 5;  // places among the columns
constexpr int kBody = 6;

constexpr const char* kNewTables[] = {
    "CREATE TABLE messages(number INTEGER PRIMARY KEY AUTOINCREMENT, account TEXT NOT NULL, contact TEXT NOT NULL,"
    " resource TEXT, direction INTEGER NOT NULL, subject TEXT, body TEXT, kind INTEGER NOT NULL,"
    " time INTEGER NOT NULL, delayed INTEGER, state INTEGER NOT NULL, failed INTEGER NOT NULL DEFAULT 0,"
    " handed INTEGER NOT NULL DEFAULT 0)",
    "CREATE INDEX conversation ON messages(account, contact, number)",
    "CREATE INDEX waiting ON messages(account, state) WHERE direction=1", "PRAGMA user_version=2"};
// An index of words, which found no signs and no parts of words.
constexpr const char* kFromFormat1[] = {"DROP TRIGGER indexed", "DROP TABLE words", "PRAGMA user_version=2"};

QVariant milliseconds(const QDateTime& time) {
    return time.isValid() ? QVariant(time.toMSecsSinceEpoch()) : QVariant();
}

QDateTime timeAt(const QVariant& value) {
    return value.isNull() ? QDateTime() : QDateTime::fromMSecsSinceEpoch(value.toLongLong());
}

Message messageAt(const QSqlQuery& row) {
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
    message.state = static_cast<DeliveryState>(row.value(10).toInt());
    message.failed = row.value(11).toBool();
    return message;
}

}  // namespace

History::History(QString path, QObject* parent)
    : QObject(parent), path_(std::move(path)), connection_(QUuid::createUuid().toString()) {
    sync_.setSingleShot(true);
    sync_.setInterval(kSyncDelay);
    connect(&sync_, &QTimer::timeout, this, &History::sync);
}

History::~History() { close(); }

void History::close() {
    if (!opened_) return;
    sync_.stop();  // the end of the last connection does the same
    insert_.reset();
    database_.close();
    database_ = {};
    QSqlDatabase::removeDatabase(connection_);
    opened_ = false;
}

bool History::open() {
    if (opened_) return true;
    database_ = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection_);
    database_.setDatabaseName(path_);
    database_.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
    opened_ = true;
    // The file is made here, so that it is never readable for others, not for a moment.
    QFile file(path_);
    const bool made = file.exists() || file.open(QIODevice::NewOnly | QIODevice::WriteOnly,
                                                 QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    file.close();
    if (made && database_.open() && prepareTables()) return true;
    const QString reason = database_.lastError().text();
    close();
    if (!failureTold_) {
        emit failed(
            QCoreApplication::translate("History", "Nie można otworzyć archiwum rozmów %1: %2").arg(path_, reason));
    }
    failureTold_ = true;
    return false;
}

bool History::prepareTables() {
    QSqlQuery query(database_);
    // Each commit goes to the log at once, but is not waited for until it has reached the disk: sync() does that for
    // all that came meanwhile. A message takes up to three commits, and thousands may come at a time.
    for (const char* pragma : {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=NORMAL"}) {
        if (!query.exec(QString::fromLatin1(pragma))) return false;
    }
    if (!query.exec(QStringLiteral("PRAGMA user_version")) || !query.next()) return false;
    const int format = query.value(0).toInt();
    query.finish();
    if (format < 0 || format > kFormat) return false;
    if (format == 0 && !apply(kNewTables)) return false;
    if (format == 1 && !apply(kFromFormat1)) return false;
    // What was handed to a connection when the program ended without a word is not known to have arrived.
    return query.exec(QStringLiteral("UPDATE messages SET state=3, handed=0 WHERE handed=1"));
}

bool History::apply(std::span<const char* const> steps) {
    QSqlQuery query(database_);
    database_.transaction();
    for (const char* step : steps) {
        if (!query.exec(QString::fromLatin1(step))) return database_.rollback(), false;
    }
    return database_.commit();
}

bool History::run(QSqlQuery& query) {
    if (query.exec()) return true;
    emit failed(QCoreApplication::translate("History", "Nie można zapisać w archiwum rozmów: %1")
                    .arg(query.lastError().text()));
    return false;
}

bool History::change(QSqlQuery& query) {
    if (!run(query)) return false;
    if (!sync_.isActive()) sync_.start();
    return true;
}

// A checkpoint waits for the log to reach the disk, then for the database.
void History::sync() {
    QSqlQuery query(database_);
    query.prepare(QStringLiteral("PRAGMA wal_checkpoint(PASSIVE)"));
    run(query);
}

qint64 History::add(const Message& message) {
    if (!open()) return 0;
    if (!insert_) {
        insert_ = std::make_unique<QSqlQuery>(database_);
        insert_->prepare(
            QStringLiteral("INSERT INTO messages(account, contact, resource, direction, subject, body, kind, time,"
                           " delayed, state, failed) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    }
    int place = 0;
    for (const QVariant& value :
         {QVariant(message.account), QVariant(message.contact), QVariant(message.resource),
          QVariant(message.direction == Direction::out ? 1 : 0), QVariant(message.subject), QVariant(message.body),
          QVariant(message.kind == MessageKind::normal ? 1 : 0), milliseconds(message.time),
          milliseconds(message.delayed), QVariant(static_cast<int>(message.state)), QVariant(message.failed ? 1 : 0)}) {
        insert_->bindValue(place++, value);
    }
    if (!change(*insert_)) return 0;
    const qint64 number = insert_->lastInsertId().toLongLong();
    // A statement that is not ended would keep its place in the write-ahead log.
    insert_->finish();
    return number;
}

void History::setState(qint64 number, DeliveryState state, bool handed) {
    if (!open()) return;
    QSqlQuery query(database_);
    query.prepare(QStringLiteral("UPDATE messages SET state=?, handed=? WHERE number=?"));
    query.addBindValue(static_cast<int>(state));
    query.addBindValue(handed ? 1 : 0);
    query.addBindValue(number);
    change(query);
}

std::optional<Message> History::message(qint64 number) {
    if (!open()) return std::nullopt;
    QSqlQuery query(database_);
    query.prepare(QStringLiteral("SELECT %1 FROM messages m WHERE number=?").arg(QLatin1String(kColumns)));
    query.addBindValue(number);
    return run(query) && query.next() ? std::optional(messageAt(query)) : std::nullopt;
}

QList<Message> History::find(const QString& account, const QString& with, int limit, const QString& search) {
    QList<Message> messages;
    if (!open()) return messages;
    QString text = QStringLiteral("SELECT %1 FROM messages m WHERE m.account=?").arg(QLatin1String(kColumns));
    if (!with.isEmpty()) text += QStringLiteral(" AND m.contact=?");
    text += QStringLiteral(" ORDER BY m.number DESC LIMIT ?");
    const TextSearch wanted(search);
    QSqlQuery query(database_);
    query.setForwardOnly(true);
    query.prepare(text);
    query.addBindValue(account);
    if (!with.isEmpty()) query.addBindValue(with);
    query.addBindValue(wanted.empty() ? limit : kAll);
    if (!run(query)) return messages;
    while ((limit < 0 || messages.size() < limit) && query.next()) {
        // Only what fits is read as a whole; a long history is searched in a moment then.
        if (wanted.fits(query.value(kSubject).toString(), query.value(kBody).toString()))
            messages.prepend(messageAt(query));
    }
    return messages;
}

QList<Message> History::outgoing(const QString& account, DeliveryState state) {
    QList<Message> messages;
    // Nothing was ever written: nothing can wait, and a login need not open the database.
    if (!opened_ && !QFile::exists(path_)) return messages;
    if (!open()) return messages;
    QSqlQuery query(database_);
    query.prepare(
        QStringLiteral("SELECT %1 FROM messages m WHERE direction=1 AND account=? AND state=? ORDER BY number")
            .arg(QLatin1String(kColumns)));
    query.addBindValue(account);
    query.addBindValue(static_cast<int>(state));
    if (!run(query)) return messages;
    while (query.next()) messages.append(messageAt(query));
    return messages;
}

}  // namespace oku
