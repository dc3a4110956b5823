// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/boundary/plugin_queue.h"

#include <condition_variable>
#include <exception>
#include <QMetaObject>
#include <QThread>

namespace oku {

/// A call that another thread waits for. `state` is guarded by the queue's jobsLock_.
struct PluginQueue::Job {
    enum class State { waiting, running, done };
    State state = State::waiting;
    OKU_WORD result = 0;
    std::condition_variable changed;
};

PluginQueue::PluginQueue(QObject* parent) : QObject(parent) {}

void PluginQueue::post(Kind kind, const QString& owner, std::function<void()> call) {
    if (QThread::currentThread() != thread()) {
        QMetaObject::invokeMethod(
            this, [this, kind, owner, call = std::move(call)]() mutable { post(kind, owner, std::move(call)); },
            Qt::QueuedConnection);
        return;
    }
    (kind == Kind::tick ? ticks_ : work_).push_back({owner, std::move(call)});
    if (draining_) return;
    drain();
    // Whoever posts may stand on bytes that are to come next. A tick that waited while the plugin was held must not
    // come before them, so it goes in from the event loop, when the stack is empty.
    if (kind == Kind::tick) {
        runTicks();
    } else if (!ticks_.empty()) {
        QMetaObject::invokeMethod(this, &PluginQueue::runTicks, Qt::QueuedConnection);
    }
}

void PluginQueue::runTicks() {
    if (draining_) return;
    while (!ticks_.empty()) {
        work_.push_back(std::move(ticks_.front()));
        ticks_.pop_front();
        drain();
    }
}

OKU_WORD PluginQueue::runFromThread(std::function<OKU_WORD()> call) {
    auto job = std::make_shared<Job>();
    {
        const std::lock_guard lock(jobsLock_);
        if (closed_) return 0;
        jobs_.push_back(job);
    }
    post(Kind::work, {}, [this, job, call = std::move(call)] {
        {
            const std::lock_guard lock(jobsLock_);
            if (job->state != Job::State::waiting) return;
            job->state = Job::State::running;
        }
        OKU_WORD result = 0;
        try {
            result = call();
        } catch (const std::exception& error) {
            emit failed(QString::fromUtf8(error.what()));
        } catch (...) {
            emit failed(QStringLiteral("unknown exception"));
        }
        const std::lock_guard lock(jobsLock_);
        job->result = result;
        job->state = Job::State::done;
        jobs_.remove(job);
        job->changed.notify_all();
    });
    std::unique_lock lock(jobsLock_);
    job->changed.wait(lock, [&] { return job->state == Job::State::done; });
    return job->result;
}

void PluginQueue::setClosedToThreads(bool closed) {
    const std::lock_guard lock(jobsLock_);
    closed_ = closed;
    if (closed) releaseWaiting();
}

void PluginQueue::releaseWaiting() {
    // A job that runs already ends by itself; one that waits would wait for us.
    std::erase_if(jobs_, [](const std::shared_ptr<Job>& job) {
        if (job->state != Job::State::waiting) return false;
        job->state = Job::State::done;
        job->changed.notify_all();
        return true;
    });
}

void PluginQueue::clear() {
    work_.clear();
    ticks_.clear();
    const std::lock_guard lock(jobsLock_);
    releaseWaiting();
}

void PluginQueue::drain() {
    draining_ = true;
    while (!work_.empty()) {
        Item item = std::move(work_.front());
        work_.pop_front();
        run(std::move(item));
    }
    draining_ = false;
}

void PluginQueue::run(Item item) {
    running_ = true;
    owner_ = item.owner;
    try {
        item.call();
    } catch (const std::exception& error) {
        emit failed(QString::fromUtf8(error.what()));
    } catch (...) {
        emit failed(QStringLiteral("unknown exception"));
    }
    running_ = false;
    owner_.clear();
    emit callFinished();
}

}  // namespace oku
