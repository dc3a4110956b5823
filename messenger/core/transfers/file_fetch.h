// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QFile>
#include <QObject>
#include <QTimer>

#include "messenger/core/transfers/file_server.h"

class QTcpSocket;

namespace oku {

/// One connection to the server: a request, and its answer. Anybody may have made it, and say anything.
class FileFetch : public QObject {
    Q_OBJECT

public:
    FileFetch(QTcpSocket& socket, const FileServer& server, const ServerLimits& limits);

    /// Nothing that there is has been asked for yet: it may leave when there is no room for another one.
    [[nodiscard]] bool givesWay() const { return state_ == State::reading || refused_; }
    /// Ends it at once; over() comes before this returns.
    void leave();

signals:
    /// The connection has ended. Comes once.
    void over();

private:
    enum class State { reading, answering, sending, closing, ended };

    void read();
    void takeRequest(const QByteArray& line);
    void takePath(const QByteArray& path, bool withContent);
    void begin(bool withContent);
    bool openFile();
    void refuse(const char* status, const char* more = "");
    void sendMore();
    void written(qint64 bytes);
    void finish(bool whole);
    void close();

    QTcpSocket& socket_;
    const FileServer& server_;
    const ServerLimits limits_;
    State state_ = State::reading;
    bool refused_ = false;
    QByteArray request_;
    std::shared_ptr<Publication> publication_;
    QFile file_;
    qint64 headerLeft_ = 0;  ///< bytes of the answer's header that wait for the connection
    qint64 total_ = 0;
    qint64 toRead_ = 0;  ///< bytes of the file
    qint64 position_ = 0;
    QTimer patience_;
};

}  // namespace oku
