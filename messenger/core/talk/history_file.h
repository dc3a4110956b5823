// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>
#include <span>

#include "messenger/core/values/message.h"

namespace oku {

/// What the history is to hold from now on.
struct HistoryChanges {
    struct State {
        DeliveryState state;
        bool handed;  ///< sent, and not confirmed by the server yet
    };
    std::deque<Message> messages;    ///< new ones, in the order of their numbers
    std::map<qint64, State> states;  ///< of messages that are written already, by their numbers
    /// Accounts that were removed: of what is written already nothing waits any more; where true, nothing is kept.
    std::map<QString, bool> gone;

    [[nodiscard]] bool empty() const { return messages.empty() && states.empty() && gone.empty(); }
};

/// The SQLite database of a history. Every call opens it when it is not open yet. What goes wrong is kept as fault().
class HistoryFile {
public:
    enum class Fault { none, damaged, other };

    explicit HistoryFile(QString path);
    ~HistoryFile();
    HistoryFile(const HistoryFile&) = delete;
    HistoryFile& operator=(const HistoryFile&) = delete;

    [[nodiscard]] const QString& path() const { return path_; }
    [[nodiscard]] bool exists() const;
    [[nodiscard]] bool isOpen() const { return opened_; }
    bool open();
    void close();
    /// The number of the last message that was ever in it.
    [[nodiscard]] qint64 lastNumber() const { return lastNumber_; }
    /// Writes all of these changes or none; they are with the system then.
    bool write(const HistoryChanges& changes);
    /// Takes the messages of a condition out.
    bool remove(const QString& condition, const QVariant& value);
    /// Waits until the disk has what was written.
    bool sync();
    /// Closes it and moves it and what belongs to it out of the way, under a name with the time, which is returned;
    /// empty when it could not be moved.
    QString setAside();

    /// Calls `take` with the messages of a query for their columns (kColumns) until it returns false.
    template <typename Take>
    bool read(const QString& condition, const QVariantList& values, Take take) {
        if (!open()) return false;
        QSqlQuery query(database_);
        query.setForwardOnly(true);
        if (!start(query, condition, values)) return false;
        while (query.next()) {
            if (!take(query)) return true;
        }
        return ended(query);
    }
    static Message messageAt(const QSqlQuery& row);
    static constexpr char kColumns[] =
        "number, account, contact, resource, direction, subject, body, kind, time, delayed, state, failed";
    static constexpr int kSubject = 5;  ///< places among the columns
    static constexpr int kBody = 6;

    /// What went wrong last.
    [[nodiscard]] Fault fault() const { return fault_; }
    [[nodiscard]] const QString& reason() const { return reason_; }

private:
    bool prepare();
    bool prepareTables();
    bool readLastNumber();
    bool writeAll(const HistoryChanges& changes);
    bool writeStates(const HistoryChanges& changes);
    bool writeGone(const QString& account, bool withMessages);
    bool insert(const Message& message);
    bool start(QSqlQuery& query, const QString& condition, const QVariantList& values);
    /// Whether the query has come to its end without a fault.
    bool ended(const QSqlQuery& query);
    bool run(QSqlQuery& query);
    bool run(const char* text);
    bool runAll(std::span<const char* const> steps);
    /// Runs `steps` as one transaction.
    template <typename Steps>
    bool together(Steps steps);
    bool fails(const QSqlError& error);

    QString path_;
    QString connection_;
    QSqlDatabase database_;
    std::unique_ptr<QSqlQuery> insert_;  ///< prepared once; messages come in thousands
    bool opened_ = false;
    qint64 lastNumber_ = 0;
    Fault fault_ = Fault::none;
    int code_ = 0;  ///< SQLite's own
    QString reason_;
};

}  // namespace oku
