// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/transfers/window_updates.h"

#include <exception>
#include <mutex>
#include <QMetaObject>
#include <QThread>
#include <utility>

#include "host/oku/transfer.h"
#include "messenger/core/boundary/plugin_queue.h"
#include "messenger/core/boundary/wide.h"

namespace oku {
namespace {

std::mutex lock;
WindowUpdates* current = nullptr;  // under the lock

WindowUpdate copyOf(const OKU_FT_UPDATE_RECORD& record, OKU_WORD window) {
    WindowUpdate update;
    update.window = window;
    update.mask = record.mask;
    // Only what counts is read: the other texts may be anything.
    if (record.mask & OKU_FT_STATUS_TEXT) update.status = wideText(record.status);
    if (record.mask & OKU_FT_LINK) update.linkTarget = wideText(record.linkTarget);
    update.position = record.position;
    update.total = record.total;
    update.state = record.state;
    update.cancellable = record.cancel != 0;
    return update;
}

bool sameKind(const WindowUpdate& one, const WindowUpdate& other) {
    return one.window == other.window && one.mask == other.mask;
}

}  // namespace

WindowUpdates::WindowUpdates(PluginQueue& queue, std::function<void(const WindowUpdate&)> take)
    : queue_(queue), take_(std::move(take)) {
    const std::lock_guard guard(lock);
    current = this;
}

WindowUpdates::~WindowUpdates() {
    const std::lock_guard guard(lock);
    if (current == this) current = nullptr;
}

OKU_HANDLER WindowUpdates::handler() { return &WindowUpdates::onUpdate; }

// Nothing is thrown across the boundary.
OKU_WORD OKU_CALL WindowUpdates::onUpdate(OKU_WORD record, OKU_WORD, OKU_WORD window) noexcept {
    QString reason;
    try {
        return take(record, window);
    } catch (const std::exception& error) {
        reason = QString::fromUtf8(error.what());
    } catch (...) {
        reason = QStringLiteral("unknown exception");
    }
    const std::lock_guard guard(lock);
    if (current) emit current->queue_.failed(reason);
    return 0;
}

OKU_WORD WindowUpdates::take(OKU_WORD param, OKU_WORD window) {
    const auto* record = recordAt<OKU_FT_UPDATE_RECORD>(param);
    if (!record) return 0;
    std::unique_lock guard(lock);
    WindowUpdates* const updates = current;
    if (!updates) return 0;
    WindowUpdate update = copyOf(*record, window);
    if (QThread::currentThread() != updates->thread()) {
        updates->keep(std::move(update));
        return 1;
    }
    guard.unlock();
    updates->handOver(window);
    updates->take_(update);
    return 1;
}

void WindowUpdates::keep(WindowUpdate update) {
    // A newer value of what is told all the time takes the older one's place, so that nothing piles up.
    if (!waiting_.empty() && sameKind(waiting_.back(), update)) {
        waiting_.back() = std::move(update);
        return;
    }
    waiting_.push_back(std::move(update));
    if (std::exchange(handingOver_, true)) return;
    QMetaObject::invokeMethod(this, &WindowUpdates::handOverAll, Qt::QueuedConnection);
}

void WindowUpdates::handOver(OKU_WORD window) {
    std::list<WindowUpdate> taken;
    {
        const std::lock_guard guard(lock);
        for (auto at = waiting_.begin(); at != waiting_.end();) {
            const auto one = at++;
            if (one->window == window) taken.splice(taken.end(), waiting_, one);
        }
    }
    for (const WindowUpdate& update : taken) take_(update);
}

void WindowUpdates::handOverAll() {
    std::list<WindowUpdate> taken;
    {
        const std::lock_guard guard(lock);
        taken = std::exchange(waiting_, {});
        handingOver_ = false;
    }
    for (const WindowUpdate& update : taken) take_(update);
}

void WindowUpdates::forget(OKU_WORD window) {
    const std::lock_guard guard(lock);
    waiting_.remove_if([=](const WindowUpdate& update) { return update.window == window; });
}

}  // namespace oku
