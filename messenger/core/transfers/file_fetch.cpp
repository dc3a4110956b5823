// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/file_fetch.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <QTcpSocket>
#include <utility>

namespace oku {

FileFetch::FileFetch(QTcpSocket& socket, const FileServer& server, const ServerLimits& limits)
    : socket_(socket), server_(server), limits_(limits) {
    // What is beyond a request waits in the system, and is thrown away from there.
    socket_.setReadBufferSize(limits_.headerBytes);
    patience_.setSingleShot(true);
    patience_.start(limits_.headerTime);
    connect(&patience_, &QTimer::timeout, this, [this] { leave(); });
    connect(&socket_, &QTcpSocket::readyRead, this, &FileFetch::read);
    connect(&socket_, &QTcpSocket::bytesWritten, this, &FileFetch::written);
    connect(&socket_, &QTcpSocket::disconnected, this, [this] { leave(); });
    connect(&server_, &FileServer::withdrawn, this, [this] {
        if (state_ == State::sending && publication_->withdrawn) leave();
    });
    // What it comes to is heard from the first moment on.
    QMetaObject::invokeMethod(this, &FileFetch::read, Qt::QueuedConnection);
}

void FileFetch::read() {
    if (state_ != State::reading) {
        socket_.readAll();
        return;
    }
    request_ += socket_.read(limits_.headerBytes - request_.size());
    const qsizetype end = request_.indexOf("\r\n\r\n");
    if (end >= 0)
        takeRequest(request_.left(request_.indexOf("\r\n")));
    else if (request_.size() >= limits_.headerBytes)
        refuse("431 Request Header Fields Too Large");
}

void FileFetch::takeRequest(const QByteArray& line) {
    const QList<QByteArray> words = line.split(' ');
    if (words.size() != 3 || !words[2].startsWith("HTTP/1.")) {
        refuse("400 Bad Request");
    } else if (words[0] == "GET" || words[0] == "HEAD") {
        takePath(words[1], words[0] == "GET");
    } else {
        refuse("405 Method Not Allowed", "Allow: GET, HEAD\r\n");
    }
}

void FileFetch::takePath(const QByteArray& path, bool withContent) {
    publication_ = path.startsWith('/') ? server_.find(QString::fromLatin1(path.mid(1))) : nullptr;
    if (!publication_) {
        refuse("404 Not Found");
    } else if (publication_->fetched) {
        refuse("409 Conflict");
    } else {
        begin(withContent);
    }
}

void FileFetch::begin(bool withContent) {
    if (!openFile()) {
        refuse("404 Not Found");
        if (withContent) finish(false);
        return;
    }
    total_ = file_.size();
    toRead_ = withContent ? total_ : 0;
    const QByteArray header =
        "HTTP/1.1 200 OK\r\nContent-Type: application/octet-stream\r\nContent-Length: " + QByteArray::number(total_) +
        "\r\nX-Content-Type-Options: nosniff\r\nCache-Control: no-store\r\n"
        "Connection: close\r\n\r\n";
    headerLeft_ = header.size();
    state_ = withContent ? State::sending : State::answering;
    socket_.write(header);
    patience_.start(limits_.idleTime);
    if (!withContent) return;
    publication_->fetched = true;
    const std::shared_ptr<Publication> kept = publication_;
    kept->begun();
    if (state_ == State::sending) sendMore();
}

// What stands in the file's place by now may be a pipe, which would hold the thread until somebody writes to it.
bool FileFetch::openFile() {
    const int file = ::open(QFile::encodeName(publication_->path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (file < 0) return false;
    struct stat found {};
    const bool plain = ::fstat(file, &found) == 0 && S_ISREG(found.st_mode);
    if (plain && file_.open(file, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) return true;
    ::close(file);
    return false;
}

void FileFetch::refuse(const char* status, const char* more) {
    state_ = State::answering;
    refused_ = true;
    const QByteArray header =
        QByteArray("HTTP/1.1 ") + status + "\r\n" + more + "Content-Length: 0\r\nConnection: close\r\n\r\n";
    headerLeft_ = header.size();
    socket_.write(header);
    patience_.start(limits_.idleTime);
}

void FileFetch::sendMore() {
    while (toRead_ > 0 && socket_.bytesToWrite() < limits_.ahead) {
        const QByteArray bytes = file_.read(std::min(toRead_, limits_.ahead));
        if (bytes.isEmpty()) return leave();  // the file has become shorter
        toRead_ -= bytes.size();
        socket_.write(bytes);
    }
}

void FileFetch::written(qint64 bytes) {
    patience_.start(limits_.idleTime);
    const qint64 ofHeader = std::min(bytes, headerLeft_);
    headerLeft_ -= ofHeader;
    if (state_ == State::answering && headerLeft_ == 0) close();
    if (state_ != State::sending) return;
    position_ += bytes - ofHeader;
    const std::shared_ptr<Publication> kept = publication_;
    if (headerLeft_ == 0) kept->moved(position_, total_);
    if (state_ != State::sending) return;
    if (headerLeft_ == 0 && position_ == total_) {
        close();
        finish(true);
    } else {
        sendMore();
    }
}

void FileFetch::finish(bool whole) {
    const std::shared_ptr<Publication> kept = std::exchange(publication_, nullptr);
    if (kept && !kept->withdrawn) kept->ended(whole);
}

// Closed while the other side still says something, the connection would be reset, and what is under way be lost.
void FileFetch::close() {
    state_ = State::closing;
    file_.close();
    ::shutdown(static_cast<int>(socket_.socketDescriptor()), SHUT_WR);
    patience_.start(limits_.headerTime);
}

void FileFetch::leave() {
    if (state_ == State::ended) return;
    const bool broken = state_ == State::sending;
    state_ = State::ended;
    patience_.stop();
    socket_.abort();
    if (broken) finish(false);
    emit over();
}

}  // namespace oku
