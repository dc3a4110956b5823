// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "messenger/core/net/resolver.h"

namespace oku::net {

/// The order in which to try the targets (RFC 2782): by priority, and within one priority drawn by weight.
/// `random(n)` gives a number from 0 to n-1. At most 20 targets are taken.
QList<SrvTarget> orderTargets(QList<SrvTarget> targets, const std::function<quint32(quint32)>& random);

/// Addresses of both families in turn, IPv6 first, each family in the order given (RFC 8305, section 4).
QList<QHostAddress> interleaveFamilies(const QList<QHostAddress>& addresses);

}  // namespace oku::net
