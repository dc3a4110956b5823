// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/srv_order.h"

#include <algorithm>

namespace oku::net {

namespace {

constexpr qsizetype kMostTargets = 20;

/// Takes one of the targets of the first priority: each has a chance in proportion to its weight, and those of
/// weight 0, which stand first, a very small one.
SrvTarget drawOne(QList<SrvTarget>& targets, const std::function<quint32(quint32)>& random) {
    qsizetype count = 0;
    quint32 sum = 0;
    while (count < targets.size() && targets[count].priority == targets[0].priority) sum += targets[count++].weight;
    const quint32 drawn = random(sum + 1);
    quint32 running = 0;
    for (qsizetype i = 0; i < count; ++i) {
        running += targets[i].weight;
        if (running >= drawn) return targets.takeAt(i);
    }
    return targets.takeAt(0);
}

}  // namespace

QList<SrvTarget> orderTargets(QList<SrvTarget> targets, const std::function<quint32(quint32)>& random) {
    std::stable_sort(targets.begin(), targets.end(), [](const SrvTarget& a, const SrvTarget& b) {
        if (a.priority != b.priority) return a.priority < b.priority;
        return a.weight == 0 && b.weight != 0;
    });
    QList<SrvTarget> ordered;
    while (!targets.isEmpty() && ordered.size() < kMostTargets) ordered.append(drawOne(targets, random));
    return ordered;
}

QList<QHostAddress> interleaveFamilies(const QList<QHostAddress>& addresses) {
    QList<QHostAddress> six;
    QList<QHostAddress> four;
    for (const QHostAddress& address : addresses)
        (address.protocol() == QAbstractSocket::IPv6Protocol ? six : four).append(address);
    QList<QHostAddress> mixed;
    for (qsizetype i = 0; i < qMax(six.size(), four.size()); ++i) {
        if (i < six.size()) mixed.append(six[i]);
        if (i < four.size()) mixed.append(four[i]);
    }
    return mixed;
}

}  // namespace oku::net
