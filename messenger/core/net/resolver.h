// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QHostAddress>
#include <QList>
#include <QString>

class QObject;

namespace oku::net {

struct SrvTarget {
    QString host;
    quint16 port = 0;
    quint16 priority = 0;
    quint16 weight = 0;
};

struct SrvAnswer {
    bool refused = false;      ///< the one target is ".": the domain has no such service (RFC 2782)
    QList<SrvTarget> targets;  ///< in any order; empty when there are none, or the look-up failed
};

/// What DNS answers. Callbacks come later, never from within the call, and not at all once `context` is gone.
class Resolver {
public:
    virtual ~Resolver() = default;

    virtual void srv(const QString& name, QObject* context, std::function<void(SrvAnswer)> done) = 0;

    /// Addresses of both families; empty when the name is not known.
    virtual void addresses(const QString& host, QObject* context, std::function<void(QList<QHostAddress>)> done) = 0;
};

}  // namespace oku::net
