// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/net/recorder.h"

#include <gtest/gtest.h>
#include <QRegularExpression>
#include <utility>

#include "tests/messenger/net/wait.h"

namespace oku::net::test {

QByteArray Recorder::bytes() const {
    QByteArray all;
    for (const QByteArray& piece : pieces) all += piece;
    return all;
}

int Recorder::count(const QString& start) const {
    return static_cast<int>(log.filter(QRegularExpression('^' + start)).size());
}

void Recorder::line(const QString& text) {
    log.append(text);
    if (onEvent) onEvent(text);
}

void Recorder::add(const QString& what, const ConnectionId& id, const QString& more) {
    line(what + ' ' + QString::number(id.number) + more);
}

void Recorder::closed(const ConnectionId& id, const End& end) {
    ends.push_back(end);
    add("closed", id);
}

void Recorder::received(const ConnectionId& id, QByteArray piece) {
    nulBehindAll = nulBehindAll && piece.data()[piece.size()] == '\0';
    pieces.push_back(piece);
    add("received", id, ' ' + QString::fromUtf8(piece.left(40)));
}

void Recorder::certificateCheck(const ConnectionId& id) {
    checks.push_back(id);
    add("check", id);
}

void Recorder::certificateQuestion(const ConnectionId& id, const BadCertificate& certificate) {
    questions.push_back(certificate);
    add("question", id);
}

void Recorder::certificatePinned(const ConnectionId& id, const QString& domain, const QByteArray& fingerprint) {
    pins.append({domain, fingerprint});
    add("pinned", id);
}

void Recorder::notice(const ConnectionId& id, const QString& text) {
    notices.append(text);
    add("notice", id);
}

void Recorder::progress(const ConnectionId&, const QString& text) {
    steps.append(text);
    if (onStep) onStep();
}

void ScriptedResolver::srv(const QString& name, QObject* context, std::function<void(SrvAnswer)> done) {
    asked.append("srv " + name);
    if (silent) return;
    answer(name, context, [found = services[name], done = std::move(done)] { done(found); });
}

void ScriptedResolver::addresses(const QString& host, QObject* context, std::function<void(QList<QHostAddress>)> done) {
    asked.append("host " + host);
    answer(host, context, [found = hosts[host], done = std::move(done)] { done(found); });
}

void ScriptedResolver::answer(const QString& name, QObject* context, std::function<void()> call) {
    if (late.contains(name)) {
        heldBack_.emplace(name, std::pair(QPointer(context), std::move(call)));
    } else {
        QMetaObject::invokeMethod(context, std::move(call), Qt::QueuedConnection);
    }
}

void ScriptedResolver::answerLate(const QString& name) {
    for (auto held = heldBack_.extract(name); held; held = heldBack_.extract(name)) {
        const auto& [context, call] = held.mapped();
        ASSERT_TRUE(context) << "nobody is there who could take it";
        call();
    }
}

namespace {

SocketSettings patient(SocketSettings settings) {
    const SocketSettings product;
    for (int SocketSettings::*const limit :
         {&SocketSettings::stall, &SocketSettings::closeGrace, &SocketSettings::srvTimeout,
          &SocketSettings::hostTimeout, &SocketSettings::targetTimeout, &SocketSettings::proxyTimeout}) {
        if (settings.*limit == product.*limit) settings.*limit = kNever;
    }
    return settings;
}

}  // namespace

Bench::Bench(SocketSettings settings) : service(events, patient(std::move(settings)), dns) { service.create("s"); }

ConnectionId Bench::connect(quint16 port, const QString& host) {
    ConnectRequest request;
    request.host = host;
    request.port = port;
    request.domain = "example.test";
    return service.connect("s", request);
}

bool Bench::opened(int times) {
    return waitFor([&] { return events.count("connected") >= times; });
}

bool Bench::closed(int times) {
    return waitFor([&] { return events.count("closed") >= times; });
}

}  // namespace oku::net::test
