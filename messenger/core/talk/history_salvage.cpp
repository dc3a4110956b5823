// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/talk/history_salvage.h"

#include <algorithm>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QUuid>
#include <utility>

#include "messenger/core/talk/history_file.h"

namespace oku {
namespace {

constexpr std::size_t kAtATime = 1000;  // messages of one transaction

/// Whether what was sent has arrived is asked of the connection, which the file does not know: what it was handed
/// counts as unconfirmed.
constexpr char kUpwards[] =
    "SELECT number, account, contact, resource, direction, subject, body, kind, time, delayed,"
    " CASE WHEN handed THEN 3 ELSE state END, failed FROM messages WHERE number > ? ORDER BY number";
constexpr char kDownwards[] =
    "SELECT number, account, contact, resource, direction, subject, body, kind, time, delayed,"
    " CASE WHEN handed THEN 3 ELSE state END, failed FROM messages WHERE number > ? ORDER BY number DESC";

/// Returns how many could be written. One that the new file does not take keeps no other out.
qint64 writeAll(const HistoryChanges& batch, HistoryFile& into) {
    if (into.write(batch)) return static_cast<qint64>(batch.messages.size());
    return std::count_if(batch.messages.begin(), batch.messages.end(), [&](const Message& message) {
        return into.write({{message}, {}, {}});
    });
}

/// Copies rows until one cannot be read; returns the last number that was.
qint64 copy(const QSqlDatabase& from, HistoryFile& into, const char* text, qint64 above, qint64& count) {
    QSqlQuery rows(from);
    rows.setForwardOnly(true);
    rows.prepare(QString::fromLatin1(text));
    rows.addBindValue(above);
    rows.exec();
    qint64 last = above;
    HistoryChanges batch;
    while (rows.next()) {
        batch.messages.push_back(HistoryFile::messageAt(rows));
        last = batch.messages.back().number;
        if (batch.messages.size() < kAtATime) continue;
        const qint64 written = writeAll(std::exchange(batch, {}), into);
        if (written == 0) return last;  // the disk takes nothing
        count += written;
    }
    count += writeAll(batch, into);
    return last;
}

}  // namespace

qint64 salvageHistory(const QString& damaged, HistoryFile& into) {
    qint64 count = 0;
    const QString connection = QUuid::createUuid().toString();
    {
        auto from = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        from.setDatabaseName(damaged);
        // From both ends, as what cannot be read may lie anywhere.
        if (from.open()) {
            const qint64 last = copy(from, into, kUpwards, 0, count);
            copy(from, into, kDownwards, last, count);
        }
    }
    QSqlDatabase::removeDatabase(connection);
    return count;
}

}  // namespace oku
