// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <list>
#include <map>
#include <memory>
#include <QHostAddress>
#include <QObject>
#include <QTcpServer>

namespace oku {

class FileFetch;

/// A file that can be fetched, and who hears how it fares. All may be called from within a call of the server's.
struct Publication {
    QString path;
    std::function<void()> begun;
    /// So many bytes of the file have been taken by the connection.
    std::function<void(qint64 position, qint64 total)> moved;
    /// All were, or it broke off. Nothing follows.
    std::function<void(bool whole)> ended;
    bool fetched = false;    ///< somebody fetches it, or did
    bool withdrawn = false;  ///< nobody hears of it any more
};

/// What strangers may take of a server.
struct ServerLimits {
    std::size_t connections = 16;  ///< at once; who asked for nothing that there is gives way to another one
    int headerBytes = 8192;        ///< of a request
    int headerTime = 10'000;       ///< milliseconds until all of a request has come
    int idleTime = 60'000;         ///< milliseconds in which somebody takes at least one byte
    qint64 ahead = 64 * 1024;      ///< bytes of a file that wait for the connection
};

/// A small HTTP server for files under names that nobody can guess. Each can be fetched once. It listens while it has
/// one.
class FileServer : public QObject {
    Q_OBJECT

public:
    explicit FileServer(const ServerLimits& limits = {}, QObject* parent = nullptr);
    ~FileServer() override;

    /// Port 0: any that is free. Gives a reason, or nothing. One that listens already goes on as it is.
    [[nodiscard]] QString listen(const QHostAddress& address, quint16 port);
    [[nodiscard]] quint16 port() const { return server_.serverPort(); }
    [[nodiscard]] bool listening() const { return server_.isListening(); }
    /// Gives the name, 32 hexadecimal digits.
    QString publish(Publication publication);
    /// Whoever fetches it is cut off, and nobody hears of it any more.
    void withdraw(const QString& name);
    /// What is published under this name; null for nothing.
    [[nodiscard]] std::shared_ptr<Publication> find(const QString& name) const;

signals:
    void withdrawn();

private:
    void takeConnections();
    void makeRoom();

    const ServerLimits limits_;
    QTcpServer server_;
    std::map<QString, std::shared_ptr<Publication>> publications_;
    std::list<FileFetch*> fetches_;  ///< the oldest first
};

}  // namespace oku
