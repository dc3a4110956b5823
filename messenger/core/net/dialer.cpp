// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/dialer.h"

#include <QPointer>
#include <QRandomGenerator>
#include <QTimer>
#include <utility>

#include "messenger/core/net/address_race.h"
#include "messenger/core/net/proxy_negotiation.h"
#include "messenger/core/net/srv_order.h"
#include "messenger/core/net/system_resolver.h"
#include "messenger/core/net/texts.h"

namespace oku::net {

namespace {

/// Runs `done` with the answer, or with an empty one after the time. Whichever comes first counts.
template <typename Answer>
std::function<void(Answer)> withTimeout(int milliseconds, QObject* context, std::function<void(Answer)> done) {
    auto* timer = new QTimer(context);
    timer->setSingleShot(true);
    // The resolver keeps its copy after the time-out, and may answer long after the timer is gone.
    auto once = [timer = QPointer(timer), done = std::move(done)](const Answer& answer) {
        if (!timer || timer->property("done").toBool()) return;
        timer->setProperty("done", true);
        timer->stop();
        timer->deleteLater();
        done(answer);
    };
    QObject::connect(timer, &QTimer::timeout, context, [once] { once(Answer()); });
    timer->start(milliseconds);
    return once;
}

bool isPort(AskedPort port) { return port >= 1 && port <= 65535; }

}  // namespace

Dialer::Dialer(const ConnectRequest& request, const SocketSettings& settings, Resolver& resolver,
               std::function<void(const QString&)> progress, std::function<void(Result)> done, QObject* parent)
    : QObject(parent),
      request_(request),
      settings_(settings),
      resolver_(resolver),
      progress_(std::move(progress)),
      done_(std::move(done)) {}

void Dialer::start() {
    if (refusal()) {
        QMetaObject::invokeMethod(
            this, [this] { finish(*refusal()); }, Qt::QueuedConnection);
        return;
    }
    if (request_.serviceName.isEmpty() || proxyTakesNames()) {
        QMetaObject::invokeMethod(
            this, [this] { takeTargets({}); }, Qt::QueuedConnection);
        return;
    }
    progress_(text(Text::LookingUp, request_.host));
    resolver_.srv(
        request_.serviceName, this,
        withTimeout<SrvAnswer>(settings_.srvTimeout, this, [this](const SrvAnswer& answer) { takeTargets(answer); }));
}

/// Whoever asks for a proxy does not want to be seen by the server: without a usable one nothing is dialled at all.
std::optional<Dialer::Result> Dialer::refusal() const {
    const auto proxyRefused = [this](const QString& why) {
        return Result{nullptr, EndCause::ProxyFailed, text(Text::ProxyFailed, request_.proxy.host, why)};
    };
    if (request_.proxy.type == ProxyType::Unknown) return proxyRefused(text(Text::ProxyKindUnknown));
    if (byProxy() && !isPort(request_.proxy.port))
        return proxyRefused(text(Text::PortUnusable, QString::number(request_.proxy.port)));
    if (!isPort(request_.port)) {
        const QString why = text(Text::PortUnusable, QString::number(request_.port));
        return Result{nullptr, EndCause::Unreachable, text(Text::Unreachable, why)};
    }
    return std::nullopt;
}

void Dialer::takeTargets(const SrvAnswer& answer) {
    if (answer.refused) return finish({nullptr, EndCause::ServiceRefused, text(Text::ServiceRefused, request_.host)});
    const auto random = [](quint32 bound) { return QRandomGenerator::system()->bounded(bound); };
    for (const SrvTarget& target : orderTargets(answer.targets, random)) targets_.append({target.host, target.port});
    targets_.append({request_.host, static_cast<quint16>(request_.port)});
    nextTarget();
}

void Dialer::nextTarget() {
    if (targets_.isEmpty()) {
        if (!anyAddress_ && !byProxy())
            return finish({nullptr, EndCause::NameNotFound, text(Text::NameNotFound, request_.host)});
        const QString all = failures_.mid(0, 3).join(QStringLiteral(", "));
        return finish({nullptr, EndCause::Unreachable, text(Text::Unreachable, all)});
    }
    Target target = targets_.takeFirst();
    const QString name = asciiName(target.host);
    if (name.isEmpty()) return targetFailed(target, text(Text::LineNoAddress));
    target.host = name;
    if (byProxy()) {
        progress_(text(Text::DiallingThroughProxy, target.host, request_.proxy.host));
    } else {
        progress_(text(Text::Dialling, target.host, QString::number(target.port)));
    }
    if (proxyTakesNames()) return dialProxy(target, {});
    lookUp(target.host, [this, target](const QList<QHostAddress>& addresses) {
        if (byProxy()) return dialByIpv4(target, addresses);
        dialDirectly(target, addresses);
    });
}

void Dialer::lookUp(const QString& host, std::function<void(QList<QHostAddress>)> found) {
    const QHostAddress literal(host);
    if (!literal.isNull()) {
        QMetaObject::invokeMethod(
            this, [literal, found = std::move(found)] { found({literal}); }, Qt::QueuedConnection);
        return;
    }
    resolver_.addresses(host, this, withTimeout<QList<QHostAddress>>(settings_.hostTimeout, this, std::move(found)));
}

void Dialer::dialDirectly(const Target& target, const QList<QHostAddress>& addresses) {
    if (addresses.isEmpty()) return targetFailed(target, text(Text::LineNoAddress));
    anyAddress_ = true;
    const auto done = [this, target](AddressRace::Result result) {
        if (!result.socket) return targetFailed(target, result.error);
        finish({std::move(result.socket), {}, {}});
    };
    race_.reset(new AddressRace(addresses, target.port, settings_.raceDelay, settings_.targetTimeout, done, this));
}

void Dialer::dialByIpv4(const Target& target, const QList<QHostAddress>& addresses) {
    ipv4_.clear();
    for (const QHostAddress& address : addresses)
        if (address.protocol() == QAbstractSocket::IPv4Protocol) ipv4_.append(address);
    if (ipv4_.isEmpty()) return targetFailed(target, text(Text::ProxyNeedsIpv4, target.host));
    dialProxy(target, ipv4_.takeFirst());
}

void Dialer::dialProxy(const Target& target, const QHostAddress& address) {
    const QString proxy = asciiName(request_.proxy.host);
    if (proxy.isEmpty()) return proxyFailed(text(Text::ProxyNameNotFound));
    lookUp(proxy, [this, target, address](const QList<QHostAddress>& proxyAddresses) {
        if (proxyAddresses.isEmpty()) return proxyFailed(text(Text::ProxyNameNotFound));
        raceToProxy(target, address, proxyAddresses);
    });
}

void Dialer::raceToProxy(const Target& target, const QHostAddress& address, const QList<QHostAddress>& proxyAddresses) {
    const auto done = [this, target, address](AddressRace::Result result) {
        if (!result.socket) return proxyFailed(text(Text::ProxyUnreachable, result.error));
        negotiate(std::move(result.socket), target, address);
    };
    race_.reset(new AddressRace(proxyAddresses, static_cast<quint16>(request_.proxy.port), settings_.raceDelay,
                                settings_.targetTimeout, done, this));
}

void Dialer::negotiate(SocketPtr socket, const Target& target, const QHostAddress& address) {
    const auto done = [this, target](ProxyNegotiation::Result result) {
        if (result.socket) return finish({std::move(result.socket), {}, {}});
        if (!result.targetFailed) return proxyFailed(result.error);
        if (!ipv4_.isEmpty()) return dialProxy(target, ipv4_.takeFirst());
        targetFailed(target, result.error);
    };
    negotiation_.reset(new ProxyNegotiation(std::move(socket),
                                            makeHandshake(request_.proxy, {target.host, target.port, address}),
                                            settings_.proxyTimeout, done, this));
}

void Dialer::targetFailed(const Target& target, const QString& why) {
    const QString failure =
        byProxy() ? why : QStringLiteral("%1:%2 (%3)").arg(target.host, QString::number(target.port), why);
    if (!failures_.contains(failure)) failures_.append(failure);
    nextTarget();
}

void Dialer::proxyFailed(const QString& why) {
    finish({nullptr, EndCause::ProxyFailed, text(Text::ProxyFailed, request_.proxy.host, why)});
}

void Dialer::finish(Result result) {
    if (done_) std::exchange(done_, nullptr)(std::move(result));
}

}  // namespace oku::net
