// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include "host/oku/base.h"
#include "messenger/core/transfers/pace.h"
#include "messenger/core/transfers/window_updates.h"
#include "messenger/core/values/transfer.h"

namespace oku {

class Accounts;
struct AccountEntry;
class PluginQueue;
class ServiceRegistry;

/// "OKU/FTInitWindow" and "OKU/FTDropWindow": what the plugin tells of each transfer, and what became of the last ones.
class TransferWindows : public QObject {
    Q_OBJECT

public:
    TransferWindows(ServiceRegistry& services, Accounts& accounts, PluginQueue& queue, QObject* parent = nullptr);

    /// What the plugin does not tell of the window that it opens next, in the call that is running.
    struct Expected {
        QString contact;
        Direction direction = Direction::in;
        QString name;
        QString path;
        qint64 size = -1;
        QStringList possiblePaths = {};  ///< of a file to be received: its name is not sure until it has begun
    };
    void expect(Expected expected) { expected_ = std::move(expected); }
    /// Whether a file is on its way to this path, or may be.
    [[nodiscard]] bool receives(const QString& path) const;

    [[nodiscard]] QList<Transfer> transfers() const;
    [[nodiscard]] std::optional<Transfer> transfer(int number) const;
    /// The account's transfers that send this file and have not ended. The one that the plugin wrote to last stands
    /// first: it is the one that the plugin is busy with.
    [[nodiscard]] QList<int> sending(const AccountEntry& account, const QString& path) const;
    /// Tells the plugin that the user cancels. False when there is nothing to cancel.
    bool cancel(int number);
    void dropPlugin();

signals:
    void changed(const oku::Transfer& transfer);
    /// It is dropped: the plugin writes to it no more.
    void ended(int number);

private:
    struct Window {
        Transfer transfer;
        QString key;  ///< of the account
        QStringList possiblePaths;
        OKU_HANDLER callback = nullptr;
        OKU_WORD context = 0;
        Pace pace;
        bool cancelled = false;  ///< by the user
        bool untold = false;     ///< something has changed since it was told
    };

    OKU_WORD init(OKU_WORD param);
    OKU_WORD drop(OKU_WORD handle);
    void update(const WindowUpdate& update);
    void moveTo(Window& window, quint64 position);
    void end(Window& window, TransferState state);
    void tell(Window& window);
    void tellUntold();
    void forgetOldest();
    Window* open(OKU_WORD handle);
    template <typename Test>
    QList<int> numbers(Test test) const;

    Accounts& accounts_;
    PluginQueue& queue_;
    std::map<int, Window> windows_;  ///< by their numbers, which are their handles
    std::optional<Expected> expected_;
    int lastNumber_ = 0;
    int lastWritten_ = 0;
    QElapsedTimer clock_;
    QTimer telling_;
    WindowUpdates updates_;
};

}  // namespace oku
