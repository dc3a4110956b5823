// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include "messenger/core/net/resolver.h"

namespace oku::net {

/// The system's resolver. Names outside ASCII are looked up in their ASCII form (IDNA).
class SystemResolver : public Resolver {
public:
    void srv(const QString& name, QObject* context, std::function<void(SrvAnswer)> done) override;
    void addresses(const QString& host, QObject* context, std::function<void(QList<QHostAddress>)> done) override;
};

/// A name as DNS, TLS and proxies need it: ASCII, labels that begin with '_' unchanged, no brackets round an IPv6
/// address. Empty when it cannot be one: too long, or with a blank or a control character in it.
QString asciiName(const QString& name);

}  // namespace oku::net
