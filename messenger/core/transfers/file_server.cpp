// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/file_server.h"

#include <algorithm>
#include <array>
#include <QRandomGenerator>
#include <QTcpSocket>
#include <utility>

#include "messenger/core/transfers/file_fetch.h"

namespace oku {
namespace {

QString randomName() {
    std::array<quint32, 4> bits{};  // 128
    QRandomGenerator::system()->generate(bits.begin(), bits.end());
    const QByteArray bytes(reinterpret_cast<const char*>(bits.data()), sizeof bits);
    return QString::fromLatin1(bytes.toHex());
}

}  // namespace

FileServer::FileServer(const ServerLimits& limits, QObject* parent) : QObject(parent), limits_(limits) {
    connect(&server_, &QTcpServer::newConnection, this, &FileServer::takeConnections);
}

FileServer::~FileServer() {
    for (const auto& [name, publication] : publications_) publication->withdrawn = true;
}

QString FileServer::listen(const QHostAddress& address, quint16 port) {
    return server_.isListening() || server_.listen(address, port) ? QString() : server_.errorString();
}

QString FileServer::publish(Publication publication) {
    const QString name = randomName();
    publications_.emplace(name, std::make_shared<Publication>(std::move(publication)));
    return name;
}

void FileServer::withdraw(const QString& name) {
    const auto found = publications_.find(name);
    if (found == publications_.end()) return;
    found->second->withdrawn = true;
    publications_.erase(found);
    if (publications_.empty()) server_.close();
    emit withdrawn();
}

std::shared_ptr<Publication> FileServer::find(const QString& name) const {
    const auto found = publications_.find(name);
    return found == publications_.end() ? nullptr : found->second;
}

void FileServer::takeConnections() {
    while (QTcpSocket* const socket = server_.nextPendingConnection()) {
        makeRoom();
        if (fetches_.size() >= limits_.connections) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        auto* const fetch = new FileFetch(*socket, *this, limits_);
        socket->setParent(fetch);
        fetch->setParent(this);
        fetches_.push_back(fetch);
        connect(fetch, &FileFetch::over, this, [this, fetch] {
            fetches_.remove(fetch);
            fetch->deleteLater();
        });
    }
}

void FileServer::makeRoom() {
    if (fetches_.size() < limits_.connections) return;
    const auto idle = std::find_if(fetches_.begin(), fetches_.end(), [](const auto* one) { return one->givesWay(); });
    if (idle != fetches_.end()) (*idle)->leave();
}

}  // namespace oku
