#pragma once

#include <memory>
#include <optional>
#include <QObject>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTimer>
#include <span>

#include "messenger/core/types.h"

namespace oku {

/// All messages of a profile, in an SQLite database that is opened when it is first needed. Every change is with the
/// system before the call returns, so that the end of the program, however it comes, loses nothing. A loss of power can
/// take what changed in the last tenth of a second: to wait for the disk each time would hold up a burst of messages.
class History : public QObject {
    Q_OBJECT

public:
    explicit History(QString path, QObject* parent = nullptr);
    ~History() override;

    /// Returns the message's number; 0 when it could not be written, which failed() tells.
    qint64 add(const Message& message);
    /// `handed` marks a sent message that the server has not confirmed yet.
    void setState(qint64 number, DeliveryState state, bool handed = false);
    [[nodiscard]] std::optional<Message> message(qint64 number);
    /// The newest `limit` (negative: all), oldest first; empty `with` and `search` keep all. See TextSearch for what a
    /// search finds.
    [[nodiscard]] QList<Message> find(const QString& account, const QString& with, int limit, const QString& search);
    /// Outgoing ones in this state, oldest first.
    [[nodiscard]] QList<Message> outgoing(const QString& account, DeliveryState state);
    void close();

signals:
    void failed(const QString& text);

private:
    bool open();
    bool prepareTables();
    /// All of these steps, or none.
    bool apply(std::span<const char* const> steps);
    bool run(QSqlQuery& query);
    /// Runs what changes something, which is then soon to be on disk.
    bool change(QSqlQuery& query);
    void sync();

    QString path_;
    QString connection_;
    QSqlDatabase database_;
    std::unique_ptr<QSqlQuery> insert_;  ///< prepared once; messages come in thousands
    QTimer sync_;
    bool opened_ = false;
    bool failureTold_ = false;
};

/// A conversation as text or as JSON, UTF-8.
QByteArray historyAsText(const QList<Message>& messages);
QByteArray historyAsJson(const QList<Message>& messages);

}  // namespace oku
