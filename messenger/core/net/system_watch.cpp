// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/system_watch.h"

#include <algorithm>
#include <QNetworkInterface>

#ifdef Q_OS_LINUX
#include <time.h>
#endif

namespace oku::net {

namespace {

/// Shorter sleeps leave a TCP connection as it was.
constexpr qint64 kShortSleep = 5'000;

}  // namespace

SystemWatch::SystemWatch(const SocketSettings& settings, std::function<void()> resumed,
                         std::function<void(const QList<QHostAddress>&)> lookAt, QObject* parent)
    : QObject(parent), settings_(settings), resumed_(std::move(resumed)), lookAt_(std::move(lookAt)) {
    QObject::connect(&timer_, &QTimer::timeout, this, &SystemWatch::turn);
}

void SystemWatch::setRunning(bool running) {
    if (running == running_) return;
    running_ = running;
    if (running) {
        slept_ = settings_.sleptTime();
        // A turn may end the listening, so it stands outside of the listener's call.
        events_ = settings_.systemEvents([this] {
            QMetaObject::invokeMethod(
                this, [this] { turn(); }, Qt::QueuedConnection);
        });
        if (!events_) timer_.start(settings_.watchInterval);
    } else {
        timer_.stop();
        events_.reset();
    }
}

void SystemWatch::turn() {
    if (!running_) return;
    const qint64 slept = settings_.sleptTime();
    const bool longSleep = slept - slept_ >= kShortSleep;
    slept_ = slept;
    if (longSleep) return resumed_();
    lookAt_(settings_.localAddresses());
}

qint64 systemSleptTime() {
#ifdef Q_OS_LINUX
    const auto milliseconds = [](clockid_t clock) {
        timespec time{};
        clock_gettime(clock, &time);
        return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1'000'000;
    };
    // Whoever stands still between two clocks would take it for a sleep.
    for (;;) {
        const qint64 before = milliseconds(CLOCK_MONOTONIC);
        const qint64 slept = milliseconds(CLOCK_BOOTTIME) - before;
        if (milliseconds(CLOCK_MONOTONIC) - before < kShortSleep / 10) return slept;
    }
#else
    return 0;
#endif
}

QList<QHostAddress> systemAddresses() { return QNetworkInterface::allAddresses(); }

bool holdsAddress(const QList<QHostAddress>& addresses, QHostAddress address) {
    address.setScopeId({});
    return std::any_of(addresses.begin(), addresses.end(), [&address](QHostAddress own) {
        own.setScopeId({});
        return own == address;
    });
}

}  // namespace oku::net
