// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <QObject>

#include "host/oku/base.h"
#include "messenger/core/values/transfer.h"

namespace oku {

class Accounts;
struct AccountEntry;
class PluginQueue;
class ServiceRegistry;
class TransferWindows;

/// "UI/FileChooser", and the sending of files, for which the plugin opens one.
class FileChoosers : public QObject {
    Q_OBJECT

public:
    FileChoosers(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, TransferWindows& windows,
                 QObject* parent = nullptr);

    /// Offers the file to the contact; the chooser that the plugin opens for it is answered with the path.
    void send(AccountEntry& account, const QString& to, const QString& path);
    /// False when there is no such question. An empty path chooses nothing.
    bool choose(int number, const QString& path);
    [[nodiscard]] QList<FileQuestion> open() const;
    void dropPlugin();

signals:
    void opened(const oku::FileQuestion& question);
    void closed(int number);
    void noticed(const QString& account, const QString& text);

private:
    struct Chooser {
        FileQuestion question;
        QString key;  ///< of the account
        OKU_HANDLER callback = nullptr;
        OKU_WORD context = 0;
    };
    /// What is sent by the call that is running.
    struct Sending {
        QString to;
        QString path;
    };

    OKU_WORD show(OKU_WORD param);
    void close(const QString& key);
    void answer(const Chooser& chooser, const QString& path, const QString& to);

    ServiceRegistry& services_;
    Accounts& accounts_;
    PluginQueue& queue_;
    TransferWindows& windows_;
    std::map<int, Chooser> choosers_;
    std::optional<Sending> sending_;
    quint64 loads_ = 0;  ///< how often a plugin has gone
    int lastNumber_ = 0;
};

}  // namespace oku
