// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/system_events.h"

#include <QSocketNotifier>

#ifdef Q_OS_LINUX
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <sys/timerfd.h>
#include <unistd.h>
#include <cerrno>
#include <limits>
#endif

namespace oku::net {

#ifdef Q_OS_LINUX

namespace {

/// Reads away what waits at a descriptor, and then tells.
class Listener : public QObject {
public:
    Listener(int descriptor, std::function<void()> changed)
        : descriptor_(descriptor), changed_(std::move(changed)), notifier_(descriptor, QSocketNotifier::Read) {
        connect(&notifier_, &QSocketNotifier::activated, this, [this] {
            drain();
            changed_();
        });
    }
    ~Listener() override {
        notifier_.setEnabled(false);
        ::close(descriptor_);
    }

private:
    /// What there is to read says no more than that something is new. A clock that was set is an error of the timer,
    /// news that were too many one of the socket: both are read away too.
    void drain() const {
        char waste[4096];
        ssize_t got = 0;
        do {
            got = ::read(descriptor_, waste, sizeof waste);
        } while (got > 0 || (got < 0 && (errno == ENOBUFS || errno == EINTR)));
    }

    int descriptor_;
    std::function<void()> changed_;
    QSocketNotifier notifier_;
};

/// Readable when the clock is set, which a machine also does when it wakes up. The timer itself never ends.
int openClock() {
    const int clock = ::timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC);
    itimerspec never{};
    never.it_value.tv_sec = std::numeric_limits<time_t>::max();
    if (clock < 0 || ::timerfd_settime(clock, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &never, nullptr) == 0)
        return clock;
    ::close(clock);
    return -1;
}

int openNetwork() {
    const int network = ::socket(AF_NETLINK, SOCK_RAW | SOCK_NONBLOCK | SOCK_CLOEXEC, NETLINK_ROUTE);
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = RTMGRP_LINK | RTMGRP_IPV4_IFADDR | RTMGRP_IPV6_IFADDR;
    if (network < 0 || ::bind(network, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return network;
    ::close(network);
    return -1;
}

}  // namespace

std::unique_ptr<QObject> listenTo(int descriptor, std::function<void()> changed) {
    return std::make_unique<Listener>(descriptor, std::move(changed));
}

std::unique_ptr<QObject> listenToSystem(std::function<void()> changed) {
    const int clock = openClock();
    const int network = openNetwork();
    if (clock < 0 || network < 0) {
        for (const int opened : {clock, network})
            if (opened >= 0) ::close(opened);
        return nullptr;
    }
    auto both = std::make_unique<QObject>();
    listenTo(clock, changed).release()->setParent(both.get());
    listenTo(network, std::move(changed)).release()->setParent(both.get());
    return both;
}

#else

std::unique_ptr<QObject> listenTo(int, std::function<void()>) { return nullptr; }

std::unique_ptr<QObject> listenToSystem(std::function<void()>) { return nullptr; }

#endif

}  // namespace oku::net
