// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <QPointer>
#include <QStringList>
#include <utility>
#include <vector>

#include "messenger/core/net/resolver.h"
#include "messenger/core/net/socket_service.h"

namespace oku::net::test {

/** Writes down every event, as a line each and with its data. */
class Recorder : public SocketEvents {
public:
    QStringList log;  ///< "connected 1", "closed 1", "received 1 <a/>"...
    std::vector<End> ends;
    std::vector<QByteArray> pieces;
    std::vector<BadCertificate> questions;
    QStringList notices;
    QStringList steps;  ///< of the dial, as a status line would show them
    std::vector<ConnectionId> checks;
    QList<std::pair<QString, QByteArray>> pins;
    bool nulBehindAll = true;
    std::function<void(const QString& line)> onEvent;  ///< runs within the event
    std::function<void()> onStep;                      ///< runs within a step

    QByteArray bytes() const;
    int count(const QString& start) const;
    bool has(const QString& start) const { return count(start) > 0; }

    void connected(const ConnectionId& id) override { add("connected", id); }
    void closed(const ConnectionId& id, const End& end) override;
    void received(const ConnectionId& id, QByteArray bytes) override;
    void tlsUp(const ConnectionId& id) override { add("tls", id); }
    void certificateCheck(const ConnectionId& id) override;
    void certificateQuestion(const ConnectionId& id, const BadCertificate& certificate) override;
    void certificatePinned(const ConnectionId& id, const QString& domain, const QByteArray& fingerprint) override;
    void destroyed(const QString& name) override { line("destroyed " + name); }
    void notice(const ConnectionId& id, const QString& text) override;
    void progress(const ConnectionId& id, const QString& text) override;

private:
    void add(const QString& what, const ConnectionId& id, const QString& more = {});
    void line(const QString& text);
};

/** Answers as the test says. An unknown name has no SRV record and no address. */
class ScriptedResolver : public Resolver {
public:
    std::map<QString, SrvAnswer> services;
    std::map<QString, QList<QHostAddress>> hosts;
    QStringList asked;
    bool silent = false;  ///< SRV questions are never answered
    QStringList late;     ///< names whose answers are not given before answerLate()

    /** Gives the answers that are held back for this name, to whoever is still there. */
    void answerLate(const QString& name);

    void srv(const QString& name, QObject* context, std::function<void(SrvAnswer)> done) override;
    void addresses(const QString& host, QObject* context, std::function<void(QList<QHostAddress>)> done) override;

private:
    void answer(const QString& name, QObject* context, std::function<void()> call);

    std::multimap<QString, std::pair<QPointer<QObject>, std::function<void()>>> heldBack_;
};

/** Milliseconds that no test lasts. */
constexpr int kNever = 600'000;

/** A service with one socket "s", its recorder and its DNS. The product's limits are shorter than a machine may stand
 * still: those that the test leaves as they are never come. */
struct Bench {
    explicit Bench(SocketSettings settings = {});

    ConnectionId connect(quint16 port, const QString& host = "127.0.0.1");
    ConnectionId connect(const ConnectRequest& request) { return service.connect("s", request); }
    bool opened(int times = 1);
    bool closed(int times = 1);

    Recorder events;
    std::shared_ptr<ScriptedResolver> dns = std::make_shared<ScriptedResolver>();
    SocketService service;
};

inline const QByteArray header =
    "<?xml version='1.0'?><stream:stream xmlns='jabber:client' xmlns:stream='http://etherx.jabber.org/streams' "
    "from='example.test' id='1' version='1.0'>";

}  // namespace oku::net::test
