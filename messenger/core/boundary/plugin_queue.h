// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <QObject>
#include <QString>

#include "host/oku/base.h"

namespace oku {

/// The one road into the plugin. The plugin takes no lock and bears no nested call, so socket events, timer ticks, menu
/// callbacks, services and hooks all go through here: one at a time, in order, and never while another is on the stack.
///
/// Ticks go in when nothing else waits: bytes that a long message box held up must renew the plugin's idea of a living
/// connection before its clock is asked. One that had to wait goes in from the event loop.
class PluginQueue : public QObject {
    Q_OBJECT

public:
    enum class Kind { work, tick };

    explicit PluginQueue(QObject* parent = nullptr);

    /// Runs `call` at once when nothing is on the stack, else later, in order. `owner` names the account that it is
    /// for (may be empty). From another thread it is carried over. An exception is told by failed() and ends there.
    void post(Kind kind, const QString& owner, std::function<void()> call);
    void post(const QString& owner, std::function<void()> call) { post(Kind::work, owner, std::move(call)); }

    /// From a thread other than the queue's: runs `call` through the queue and waits for its result. Gives 0 at once
    /// while the queue is closed to threads, so that nobody waits for a thread that waits for him.
    OKU_WORD runFromThread(std::function<OKU_WORD()> call);
    /// Refuses runFromThread() and lets those that wait go with 0, or takes it up again.
    void setClosedToThreads(bool closed);

    /// Whether a call is on the stack.
    [[nodiscard]] bool busy() const { return running_; }
    /// Whom the call on the stack is for.
    [[nodiscard]] QString owner() const { return owner_; }
    /// How many calls wait, ticks aside.
    [[nodiscard]] std::size_t waiting() const { return work_.size(); }
    /// Drops what waits; for when the plugin is gone.
    void clear();

signals:
    /// A call has returned, and nothing is on the stack.
    void callFinished();
    void failed(const QString& reason);

private:
    struct Item {
        QString owner;
        std::function<void()> call;
    };
    struct Job;

    void drain();
    void runTicks();
    void releaseWaiting();  ///< under jobsLock_
    void run(Item item);

    std::deque<Item> work_;
    std::deque<Item> ticks_;
    bool running_ = false;
    bool draining_ = false;
    QString owner_;

    std::mutex jobsLock_;
    std::list<std::shared_ptr<Job>> jobs_;
    bool closed_ = false;
};

}  // namespace oku
