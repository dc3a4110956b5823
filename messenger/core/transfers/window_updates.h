// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <list>
#include <QObject>
#include <QString>

#include "host/oku/base.h"

namespace oku {

class PluginQueue;

/// What the plugin wrote to the window of a transfer; `mask` says which of it counts.
struct WindowUpdate {
    OKU_WORD window = 0;
    std::uint32_t mask = 0;
    QString status;
    QString linkTarget;
    quint64 position = 0;
    quint64 total = 0;
    std::uint32_t state = 0;
    bool cancellable = false;
};

/// Takes the updates of windows from whatever thread they come, and hands them over on its own thread, in order. Who
/// writes from another thread does not wait. One object a process.
class WindowUpdates : public QObject {
public:
    WindowUpdates(PluginQueue& queue, std::function<void(const WindowUpdate&)> take);
    ~WindowUpdates() override;

    /// What the plugin calls with an update; the window's handle goes along as its data.
    static OKU_HANDLER handler();
    /// Hands over what waits for the window, which is older than what its own thread does now.
    void handOver(OKU_WORD window);
    /// Drops what waits for the window.
    void forget(OKU_WORD window);

private:
    static OKU_WORD OKU_CALL onUpdate(OKU_WORD record, OKU_WORD, OKU_WORD window) noexcept;
    static OKU_WORD take(OKU_WORD record, OKU_WORD window);
    void keep(WindowUpdate update);  ///< under the lock
    void handOverAll();

    PluginQueue& queue_;
    const std::function<void(const WindowUpdate&)> take_;
    std::list<WindowUpdate> waiting_;  ///< under the lock
    bool handingOver_ = false;         ///< under the lock: the event loop will come for them
};

}  // namespace oku
