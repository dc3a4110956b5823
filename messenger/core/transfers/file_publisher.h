// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <QHostAddress>
#include <QObject>

#include "host/oku/base.h"
#include "messenger/core/transfers/file_server.h"

namespace oku {

class Accounts;
struct AccountEntry;
class PluginQueue;
class ServiceRegistry;
class TransferWindows;

/// "OK7/IsEnabled" and "OK7/PrepareFile": a file that is sent can be fetched from this computer while its window is
/// open, where the user turned that on for the account.
class FilePublisher : public QObject {
    Q_OBJECT

public:
    struct Parts {
        ServiceRegistry& services;
        Accounts& accounts;
        PluginQueue& queue;
        TransferWindows& windows;
        /// The own address on the account's connection; null without one.
        std::function<QHostAddress(const AccountEntry& account)> address;
    };
    explicit FilePublisher(Parts parts, QObject* parent = nullptr);
    ~FilePublisher() override;

    /// Whether an account publishes may have been changed: what it does not publish any more is withdrawn.
    void reconsider();
    void dropPlugin() { ++loads_; }

signals:
    void noticed(const QString& account, const QString& text);

private:
    struct Published;

    [[nodiscard]] bool enabled(const AccountEntry* account) const;
    OKU_WORD prepare(OKU_WORD param);
    [[nodiscard]] int windowFor(const AccountEntry* account, const QString& path) const;
    /// The reason why not, or nothing; then `url` tells where the file is.
    QString open(const AccountEntry& account, Published& published, QString& url);
    [[nodiscard]] QString portFault(const AccountEntry& account, quint16 port, const QString& reason) const;
    Publication publicationOf(const Published& published);
    void tellState(int window, OKU_WORD state);
    void tellProgress(int window, qint64 position, qint64 total);
    void tellFailed(const Published& published);
    void withdraw(int window);
    [[nodiscard]] static quint16 portOf(const AccountEntry& account);
    FileServer& serverFor(const QString& address, quint16 port);

    Parts parts_;
    std::map<std::pair<QString, quint16>, std::unique_ptr<FileServer>> servers_;  ///< by what they listen on
    std::map<int, Published> published_;                                          ///< by the windows
    quint64 loads_ = 0;                                                           ///< how often a plugin has gone
};

}  // namespace oku
