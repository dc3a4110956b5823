// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>

#include "host/oku/base.h"

namespace oku {

class PluginQueue;
class ServiceRegistry;

/// "OKU/Timer/Create" and "OKU/Timer/Destroy". A timer is its name: creating one that exists starts it anew. Ticks go
/// through the queue behind everything else; a timer that fires while its last tick still waits adds no second one.
class TimerService : public QObject {
    Q_OBJECT

public:
    TimerService(ServiceRegistry& services, PluginQueue& queue, QObject* parent = nullptr);
    ~TimerService() override;

    [[nodiscard]] bool has(const QString& name) const { return timers_.contains(name); }
    void dropPlugin();

private:
    struct Timer;

    OKU_WORD create(OKU_WORD param);
    OKU_WORD destroy(OKU_WORD param);
    void fire(const QString& name);
    void tick(const QString& name, quint64 number);
    QString nameAt(OKU_WORD param) const;
    QString knownNameAt(std::uintptr_t address) const;

    PluginQueue& queue_;
    std::map<QString, std::unique_ptr<Timer>> timers_;
    QSet<QString> everNamed_;
    quint64 lastNumber_ = 0;
};

}  // namespace oku
