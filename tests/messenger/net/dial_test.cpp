// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Contract 10 without proxies: SRV with priorities and weights, then the domain itself; IPv6 and IPv4 raced.
#include <gtest/gtest.h>
#include <optional>

#include "messenger/core/net/srv_order.h"
#include "messenger/core/net/system_resolver.h"
#include "tests/messenger/net/recorder.h"
#include "tests/messenger/net/server.h"
#include "tests/messenger/net/wait.h"

namespace oku::net::test {
namespace {

const QString service = "_xmpp-client._tcp.example.test";

struct Dial : testing::Test {
    void dial(quint16 fallbackPort) { dial(bench, fallbackPort); }

    static void dial(Bench& from, quint16 fallbackPort) {
        ConnectRequest request;
        request.host = request.domain = "example.test";
        request.port = fallbackPort;
        request.serviceName = service;
        from.connect(request);
    }

    void host(const QString& name, const QString& address = "127.0.0.1") {
        bench.dns->hosts[name] = {QHostAddress(address)};
    }

    Bench bench;
    Server first;
    Server second;
};

TEST_F(Dial, TheTargetOfTheFirstPriorityIsTaken) {
    host("a.test");
    host("b.test");
    bench.dns->services[service].targets = {{"b.test", second.serverPort(), 20, 100},
                                            {"a.test", first.serverPort(), 10, 0}};
    dial(deadPort());
    ASSERT_TRUE(bench.opened());
    EXPECT_TRUE(waitFor([&] { return first.clientCount() == 1; }));
    EXPECT_EQ(second.clientCount(), 0);
    EXPECT_EQ(bench.dns->asked, (QStringList{"srv " + service, "host a.test"}));
    EXPECT_EQ(bench.events.steps,
              (QStringList{"Looking up the server of example.test",
                           QStringLiteral("Connecting to a.test, port %1").arg(first.serverPort())}));
}

TEST_F(Dial, ATargetThatRefusesIsSkipped) {
    host("dead.test");
    host("b.test");
    bench.dns->services[service].targets = {{"dead.test", deadPort(), 1, 1}, {"b.test", second.serverPort(), 2, 1}};
    dial(first.serverPort());
    ASSERT_TRUE(bench.opened());
    EXPECT_TRUE(waitFor([&] { return second.clientCount() == 1; }));
    EXPECT_EQ(bench.events.log, QStringList{"connected 1"}) << "the plugin sees nothing of it";
}

TEST_F(Dial, ATargetThatDoesNotAnswerIsSkipped) {
    SocketSettings settings;
    settings.targetTimeout = 1000;
    Bench patient(settings);
    const BlackHole hole(QHostAddress("127.0.0.7"));
    patient.dns->hosts["silent.test"] = {QHostAddress("127.0.0.7")};
    patient.dns->hosts["b.test"] = {QHostAddress::LocalHost};
    patient.dns->services[service].targets = {{"silent.test", hole.port(), 1, 1},
                                              {"b.test", second.serverPort(), 2, 1}};
    dial(patient, first.serverPort());
    ASSERT_TRUE(patient.opened());
    EXPECT_TRUE(waitFor([&] { return second.clientCount() == 1; }));
}

TEST_F(Dial, ATargetWithoutAnAddressIsSkipped) {
    host("b.test");
    bench.dns->services[service].targets = {
        {"unknown.test", 5222, 1, 1}, {"", 5222, 1, 1}, {"bl ank", 5222, 1, 1}, {"b.test", second.serverPort(), 2, 1}};
    dial(first.serverPort());
    ASSERT_TRUE(bench.opened());
    EXPECT_TRUE(waitFor([&] { return second.clientCount() == 1; }));
}

TEST_F(Dial, WithoutAnSrvRecordTheDomainItselfIsDialled) {
    host("example.test");
    dial(first.serverPort());
    ASSERT_TRUE(bench.opened());
    EXPECT_TRUE(waitFor([&] { return first.clientCount() == 1; }));
}

TEST_F(Dial, WhenAllTargetsFailTheDomainItselfIsDialled) {
    host("dead.test");
    host("example.test");
    bench.dns->services[service].targets = {{"dead.test", deadPort(), 1, 1}};
    dial(first.serverPort());
    ASSERT_TRUE(bench.opened());
    EXPECT_TRUE(waitFor([&] { return first.clientCount() == 1; }));
}

TEST_F(Dial, AResolverThatDoesNotAnswerIsNotWaitedForLong) {
    SocketSettings settings;
    settings.srvTimeout = 50;
    Bench patient(settings);
    patient.dns->silent = true;
    patient.dns->hosts["example.test"] = {QHostAddress::LocalHost};
    dial(patient, first.serverPort());
    EXPECT_TRUE(patient.opened());
}

TEST_F(Dial, AHostWhoseAddressesDoNotComeIsSkipped) {
    SocketSettings settings;
    settings.hostTimeout = 50;
    Bench patient(settings);
    patient.dns->late = QStringList("slow.test");
    patient.dns->services[service].targets = {{"slow.test", first.serverPort(), 1, 1},
                                              {"127.0.0.1", second.serverPort(), 2, 1}};
    dial(patient, deadPort());
    ASSERT_TRUE(patient.opened());
    EXPECT_TRUE(waitFor([&] { return second.clientCount() == 1; }));
}

TEST_F(Dial, AnAnswerThatComesTooLateIsNotTaken) {
    SocketSettings settings;
    settings.srvTimeout = 50;
    Bench patient(settings);
    patient.dns->late = QStringList{service, "example.test"};
    patient.dns->hosts["example.test"] = {QHostAddress::LocalHost};
    patient.dns->services[service].targets = {{"127.0.0.1", second.serverPort(), 1, 1}};
    dial(patient, first.serverPort());
    const QStringList asked{"srv " + service, "host example.test"};
    ASSERT_TRUE(waitFor([&] { return patient.dns->asked == asked; })) << "the time for the SRV record is over";
    settle();  // what belonged to that question is gone
    patient.dns->answerLate(service);
    settle();
    EXPECT_TRUE(patient.events.log.isEmpty()) << "no second road is taken";
    patient.dns->answerLate("example.test");
    ASSERT_TRUE(patient.opened());
    EXPECT_TRUE(waitFor([&] { return first.clientCount() == 1; }));
    settle();
    EXPECT_EQ(patient.events.log, QStringList("connected 1"));
    EXPECT_EQ(second.clientCount(), 0);
}

TEST_F(Dial, AddressesThatComeTooLateAreNotTaken) {
    SocketSettings settings;
    settings.hostTimeout = 50;
    Bench patient(settings);
    const BlackHole hole(QHostAddress("127.0.0.7"));  // so that it still dials when the answer comes
    patient.dns->late = QStringList("slow.test");
    patient.dns->hosts["slow.test"] = {QHostAddress::LocalHost};
    patient.dns->services[service].targets = {{"slow.test", first.serverPort(), 1, 1},
                                              {"127.0.0.7", hole.port(), 2, 1}};
    dial(patient, deadPort());
    const QString step = QStringLiteral("Connecting to 127.0.0.7, port %1").arg(hole.port());
    ASSERT_TRUE(waitFor([&] { return patient.events.steps.contains(step); }));
    settle();
    patient.dns->answerLate("slow.test");
    settle();
    EXPECT_TRUE(patient.events.log.isEmpty());
    EXPECT_EQ(first.clientCount(), 0);
    EXPECT_EQ(patient.events.steps.last(), step) << "the road that was taken";
}

TEST_F(Dial, ADomainThatOffersNoServiceIsNotDialled) {
    host("example.test");
    bench.dns->services[service].refused = true;
    dial(first.serverPort());
    ASSERT_TRUE(bench.closed());
    EXPECT_EQ(bench.events.ends[0].text, "The domain example.test offers no XMPP service.");
    EXPECT_EQ(bench.events.ends[0].cause, EndCause::ServiceRefused);
    EXPECT_FALSE(bench.events.ends[0].askedFor);
    EXPECT_EQ(first.clientCount(), 0);
}

TEST_F(Dial, ANamedServerIsDialledWithoutSrv) {
    host("named.test");
    bench.connect(first.serverPort(), "named.test");
    ASSERT_TRUE(bench.opened());
    EXPECT_EQ(bench.dns->asked, QStringList{"host named.test"});
}

TEST_F(Dial, WhenNothingCanBeReachedEachTargetsReasonIsTold) {
    host("dead.test");
    const quint16 port = deadPort();
    bench.dns->services[service].targets = {{"dead.test", port, 1, 1}, {"unknown.test", 5222, 2, 1}};
    dial(5222);
    ASSERT_TRUE(bench.closed());
    settle();
    ASSERT_EQ(bench.events.ends.size(), 1U);
    EXPECT_EQ(bench.events.ends[0].text,
              QStringLiteral("The server cannot be reached: dead.test:%1 (connection refused), unknown.test:5222 "
                             "(address unknown), example.test:5222 (address unknown).")
                  .arg(port));
}

TEST_F(Dial, ASilentIpv6AddressCostsOnlyTheHeadStart) {
    std::optional<BlackHole> hole;
    do {  // until a port is free in both families
        first.close();
        hole.emplace(QHostAddress::LocalHostIPv6);
    } while (!first.listen(QHostAddress::LocalHost, hole->port()));
    SocketSettings own;
    own.raceDelay = 50;
    own.targetTimeout = kNever;
    Bench racing(own);
    racing.dns->hosts["both.test"] = {QHostAddress("127.0.0.1"), QHostAddress("::1")};
    racing.connect(first.serverPort(), "both.test");
    ASSERT_TRUE(racing.opened()) << "no time-out was waited for";
    EXPECT_TRUE(waitFor([&] { return first.clientCount() == 1; }));
}

TEST_F(Dial, Ipv6GoesFirst) {
    std::optional<Server> six;
    Server four;
    do {  // until a port is free in both families
        four.close();
        six.emplace(QHostAddress::LocalHostIPv6);
    } while (!four.listen(QHostAddress::LocalHost, six->serverPort()));
    SocketSettings settings;
    settings.raceDelay = kNever;
    Bench racing(settings);
    racing.dns->hosts["both.test"] = {QHostAddress("127.0.0.1"), QHostAddress("::1")};
    racing.connect(six->serverPort(), "both.test");
    ASSERT_TRUE(racing.opened());
    EXPECT_TRUE(waitFor([&] { return six->clientCount() == 1; }));
    settle();
    EXPECT_EQ(four.clientCount(), 0);
}

TEST_F(Dial, ARefusedAddressLetsTheNextOneStartAtOnce) {
    SocketSettings own;
    own.raceDelay = own.targetTimeout = kNever;
    Bench racing(own);
    racing.dns->hosts["both.test"] = {QHostAddress("::1"), QHostAddress("127.0.0.1")};
    racing.connect(first.serverPort(), "both.test");
    EXPECT_TRUE(racing.opened());
}

TEST_F(Dial, KeepaliveIsOn) {
    bench.connect(first.serverPort());
    ASSERT_TRUE(bench.opened());
    ASSERT_TRUE(waitFor([&] { return first.clientCount() == 1; }));
    const auto end = [](quint16 port) { return QStringLiteral("0100007F:%1").arg(port, 4, 16, QChar('0')).toUpper(); };
    const QString local = end(first.client().peerPort());
    const QString remote = end(first.serverPort());  // others may share the local port
    QFile table("/proc/net/tcp");
    ASSERT_TRUE(table.open(QIODevice::ReadOnly));
    QString timer;
    for (const QString& line : QString::fromLatin1(table.readAll()).split('\n')) {
        const QStringList words = line.simplified().split(' ');
        if (words.value(1) == local && words.value(2) == remote) timer = words.value(5).left(2);
    }
    EXPECT_EQ(timer, "02") << "the kernel's word for a keepalive timer";
}

TEST(SrvOrder, DrawsByWeightWithinAPriority) {
    const QList<SrvTarget> targets{{"c", 1, 2, 0}, {"heavy", 1, 1, 90}, {"light", 1, 1, 10}, {"none", 1, 1, 0}};
    const auto drawn = [&](quint32 number) {
        QStringList names;
        for (const SrvTarget& target : orderTargets(targets, [&](quint32 bound) { return qMin(number, bound - 1); }))
            names.append(target.host);
        return names.join(' ');
    };
    EXPECT_EQ(drawn(0), "none heavy light c");
    EXPECT_EQ(drawn(1), "heavy light none c");
    EXPECT_EQ(drawn(90), "heavy light none c");
    EXPECT_EQ(drawn(91), "light heavy none c");
    EXPECT_EQ(drawn(100), "light heavy none c");
}

TEST(SrvOrder, HeavyTargetsComeFirstInProportion) {
    QRandomGenerator random(7);
    int heavyFirst = 0;
    for (int i = 0; i < 2000; ++i) {
        const QList<SrvTarget> ordered = orderTargets({{"light", 1, 1, 1}, {"heavy", 1, 1, 3}},
                                                      [&](quint32 bound) { return random.bounded(bound); });
        heavyFirst += ordered[0].host == "heavy" ? 1 : 0;
    }
    EXPECT_GT(heavyFirst, 1000);  // RFC 2782's draw from 0 to 4 gives 3 of 5
    EXPECT_LT(heavyFirst, 1400);
}

TEST(SrvOrder, TakesOnlySoMany) {
    EXPECT_EQ(orderTargets(QList<SrvTarget>(1000, {"a", 1, 1, 65535}), [](quint32) { return 0U; }).size(), 20);
    EXPECT_TRUE(orderTargets({}, [](quint32) { return 0U; }).isEmpty());
}

TEST(SrvOrder, FamiliesTakeTurns) {
    const QList<QHostAddress> mixed =
        interleaveFamilies({QHostAddress("1.1.1.1"), QHostAddress("1.1.1.2"), QHostAddress("1.1.1.3"),
                            QHostAddress("::1"), QHostAddress("::2")});
    QStringList names;
    for (const QHostAddress& address : mixed) names.append(address.toString());
    EXPECT_EQ(names.join(' '), "::1 1.1.1.1 ::2 1.1.1.2 1.1.1.3");
}

TEST(AsciiName, MakesNamesFitForTheWire) {
    EXPECT_EQ(asciiName("example.test"), "example.test");
    EXPECT_EQ(asciiName("Example.Test."), "example.test");
    EXPECT_EQ(asciiName("żółw.example"), "xn--w-uga1v8h.example");
    EXPECT_EQ(asciiName("_xmpp-client._tcp.żółw.example"), "_xmpp-client._tcp.xn--w-uga1v8h.example");
    EXPECT_EQ(asciiName("[::1]"), "::1");
    EXPECT_EQ(asciiName("192.0.2.1"), "192.0.2.1");
    for (const QString& bad : {QString(), QString("a b"), QString("a\r\nb"), QString(QChar(0)),
                               QString("a") + QChar(0) + "b", QString(300, 'a')})
        EXPECT_EQ(asciiName(bad), "") << bad.toStdString();
}

TEST(SystemResolver, KnowsTheMachineItself) {
    SystemResolver resolver;
    QObject context;
    QList<QHostAddress> found;
    bool answered = false;
    resolver.addresses("localhost", &context, [&](const QList<QHostAddress>& addresses) {
        found = addresses;
        answered = true;
    });
    EXPECT_FALSE(answered) << "never from within the call";
    ASSERT_TRUE(waitFor([&] { return answered; }));
    EXPECT_TRUE(found.contains(QHostAddress(QHostAddress::LocalHost)) ||
                found.contains(QHostAddress(QHostAddress::LocalHostIPv6)));
}

TEST(SystemResolver, HasNoAnswerForANameThatIsNone) {
    SystemResolver resolver;
    QObject context;
    int answers = 0;
    resolver.srv("a b", &context, [&](const SrvAnswer& answer) {
        EXPECT_TRUE(answer.targets.isEmpty());
        EXPECT_FALSE(answer.refused);
        ++answers;
    });
    resolver.addresses("a b", &context, [&](const QList<QHostAddress>& addresses) {
        EXPECT_TRUE(addresses.isEmpty());
        ++answers;
    });
    EXPECT_TRUE(waitFor([&] { return answers == 2; }));
}

}  // namespace
}  // namespace oku::net::test
