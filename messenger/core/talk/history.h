// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include "messenger/core/talk/history_file.h"
#include "messenger/core/values/message.h"

namespace oku {

/// All messages of a profile, in an SQLite database that is opened when it is first needed.
///
/// What changes within a turn of the event loop, or a tenth of a second where a turn takes longer, is written together.
/// What is to be shown is told when it is with the system, in the order in which it came: the end of the program,
/// however it comes, takes nothing back that was seen. A loss of power can take what changed in the last tenth of a
/// second: to wait for the disk each time would hold up a burst of messages.
///
/// What cannot be written is told all the same, kept in memory (within bounds) and written when it can be. A damaged
/// file is set aside as NAME.damaged-TIME, and a new one begun with what can still be read of the old one.
///
/// Long, because reading and writing share the changes that are not written yet: what is asked for is the file and
/// these.
class History : public QObject {
    Q_OBJECT

public:
    explicit History(QString path, QObject* parent = nullptr);
    ~History() override;

    /// Takes a message that came. `tell` is called with it, and with its number, when it may be shown; the number is 0
    /// while the history cannot give any.
    void add(Message message, std::function<void(const Message& message)> tell);
    /// Writes a message now, and tells what waited before it. Returns its number; 0 when it could not be written, which
    /// failed() tells: it is not kept then.
    qint64 addNow(Message message);
    /// `handed` marks a sent message that the server has not confirmed yet.
    void setState(qint64 number, DeliveryState state, bool handed = false);
    /// Takes a message out. False when that could not be done, which failed() tells.
    bool remove(qint64 number);
    /// An account was removed: what waits of it has failed, so that none of the same name that is added later sends it.
    /// All its messages go where that is wanted. It holds from now on, and is written when it can be.
    void forget(const QString& account, bool withMessages);
    /// Calls `tell` when all that was changed so far is with the system: at once when nothing waits.
    void whenWritten(std::function<void()> tell);
    /// Writes what waits, and tells it.
    void flush();

    [[nodiscard]] std::optional<Message> message(qint64 number);
    /// The newest `limit` (negative: all) of those that were told, oldest first; empty `with` and `search` keep all.
    /// See TextSearch for what a search finds.
    [[nodiscard]] QList<Message> find(const QString& account, const QString& with, int limit, const QString& search);
    /// Whether what was asked for last could be read to its end.
    [[nodiscard]] bool readWhole() const { return readWhole_; }
    /// Outgoing ones in this state, oldest first. Where they could not be read (readWhole()), retried() tells when to
    /// ask again.
    [[nodiscard]] QList<Message> outgoing(const QString& account, DeliveryState state);
    /// Writes and tells what waits, and closes the file.
    void close();
    /// Milliseconds that a change waits at most where a turn of the event loop takes longer.
    void setLongestTurn(int milliseconds) { longestTurn_ = milliseconds; }

signals:
    /// One line for the user: something could not be written or read, or can be again.
    void failed(const QString& text);
    /// Some time has passed since the file could not be used, and it is tried again.
    void retried();

private:
    using Wanted = std::function<bool(const QSqlQuery& row)>;

    bool open();
    void schedule();
    /// Writes what waits. What is to be told may be told then, whether it worked or not.
    void write();
    /// True when nothing is left to be written.
    bool writeChanges();
    void tellWritten();
    [[nodiscard]] bool isDamaged() const;
    /// The damaged file makes room for a new one; true when there is one.
    bool beginAnew();
    /// Takes over what can be read of the files that were set aside, and tells of them.
    void salvage();
    /// Sets what waits to failed; false when it could not be read.
    bool failWaiting(const QString& account);
    /// Nothing was ever written, nor is the file open.
    [[nodiscard]] bool isNew() const;
    /// Something could not be done, and is to be tried again: tells so once.
    void fails(const QString& text);
    void sync();
    /// Messages of the file, at most `limit` (negative: all), with the states that are not written yet.
    QList<Message> read(const QString& condition, const QVariantList& values, const Wanted& wanted, int limit);
    [[nodiscard]] Message upToDate(Message message) const;
    /// Within the bounds of what is kept in memory.
    [[nodiscard]] bool hasRoomFor(const Message& message) const;

    HistoryFile file_;
    HistoryChanges changes_;    ///< not written yet
    qsizetype characters_ = 0;  ///< of their texts
    qint64 lastNumber_ = 0;
    qint64 lastTold_ = 0;                         ///< the number of the last message that was told
    std::deque<std::function<void()>> waiting_;   ///< to be told when changes_ are written
    std::deque<std::function<void()>> tellable_;  ///< may be told
    QStringList toSalvage_;                       ///< set aside
    bool scheduled_ = false;
    QElapsedTimer sinceFirst_;  ///< change that is not written
    int longestTurn_ = 100;     ///< milliseconds
    QTimer sync_;
    QTimer retry_;  ///< runs while the file cannot be used
    bool readWhole_ = true;
    bool failureTold_ = false;
    bool syncFailureTold_ = false;
    bool boundsTold_ = false;
};

/// A conversation as text or as JSON, UTF-8.
QByteArray historyAsText(const QList<Message>& messages);
QByteArray historyAsJson(const QList<Message>& messages);

}  // namespace oku
