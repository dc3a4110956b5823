// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Contract 9: certificates are checked against the account's domain; plugin and person are asked about bad ones.
#include <gtest/gtest.h>

#include "messenger/core/net/certificate.h"
#include "tests/messenger/net/recorder.h"
#include "tests/messenger/net/server.h"
#include "tests/messenger/net/wait.h"

namespace oku::net::test {
namespace {

const QByteArray proceed = "<proceed xmlns='urn:ietf:params:xml:ns:xmpp-tls'/>";

Identity& good() {
    static Identity identity = Authority::instance().issue({"example.test"});
    return identity;
}

Identity& foreign() {
    static Identity identity = Authority::instance().issue({"localhost", "other.test"});
    return identity;
}

struct Tls : testing::Test {
    SocketSettings settings() {
        SocketSettings settings;
        settings.extraCa = {Authority::instance().certificate()};
        return settings;
    }

    /** Dials and starts TLS from the first byte with this certificate. */
    void direct(const Identity& identity) {
        if (!bench) bench = std::make_unique<Bench>(settings());
        const int before = bench->events.count("connected");
        const int clients = server.clientCount();
        id = bench->connect(server.serverPort());
        ASSERT_TRUE(bench->opened(before + 1));
        ASSERT_TRUE(waitFor([&] { return server.clientCount() > clients; }));
        server.startTls(identity);
        ASSERT_TRUE(bench->service.initSsl("s"));
    }

    bool asked(const QString& what, int times = 1) {
        return waitFor([&] { return bench->events.count(what) >= times; });
    }

    /** Both sides have finished their handshake. */
    bool encrypted() {
        return asked("tls") && waitFor([&] { return server.client().isEncrypted(); });
    }

    /** Answers the plugin's question and waits for the person's. */
    bool askPerson(int times = 1) {
        if (!asked("check", times)) return false;
        bench->service.answerCertificate(id, false);
        return asked("question");
    }

    Server server;
    std::unique_ptr<Bench> bench;
    ConnectionId id;
};

TEST_F(Tls, FromTheFirstByte) {
    direct(good());
    ASSERT_TRUE(asked("tls"));
    bench->service.send("s", "<a/>");
    EXPECT_TRUE(waitFor([&] { return server.received() == "<a/>"; }));
    server.send("<b/>");
    EXPECT_TRUE(waitFor([&] { return bench->events.bytes() == "<b/>"; }));
    EXPECT_FALSE(bench->events.has("check"));
    EXPECT_FALSE(bench->service.initSsl("s")) << "it is encrypted already";
}

TEST_F(Tls, AfterStarttlsCalledFromWithinTheEvent) {
    bench = std::make_unique<Bench>(settings());
    bench->events.onEvent = [this](const QString& line) {
        if (!line.startsWith("received 1 <proceed")) return;
        EXPECT_TRUE(bench->service.initSsl("s"));
    };
    server.onData = [this](QSslSocket& client, const QByteArray& bytes) {
        if (bytes == "<starttls/>") {
            client.write(proceed);
            server.startTls(good());
        }
    };
    bench->connect(server.serverPort());
    ASSERT_TRUE(bench->opened());
    bench->service.send("s", "<starttls/>");
    ASSERT_TRUE(asked("tls"));
    server.send(header + "<a/>");
    EXPECT_TRUE(waitFor([&] { return bench->events.bytes() == proceed + header + "<a/>"; }));
}

TEST_F(Tls, ClearTextSlippedInBehindStarttlsIsNotBelieved) {
    bench = std::make_unique<Bench>(settings());
    bench->events.onEvent = [this](const QString& line) {
        if (!line.startsWith("received 1 <proceed")) return;
        EXPECT_FALSE(bench->service.initSsl("s"));
    };
    bench->connect(server.serverPort());
    ASSERT_TRUE(bench->opened());
    ASSERT_TRUE(waitFor([&] { return server.clientCount() == 1; }));
    server.send(proceed + "<message>forged</message>");
    ASSERT_TRUE(bench->closed());
    EXPECT_EQ(bench->events.bytes(), proceed);
    EXPECT_EQ(bench->events.ends[0].cause, EndCause::ProtocolBroken);
    EXPECT_FALSE(bench->events.ends[0].askedFor);
}

TEST_F(Tls, ClearTextThatWaitsWhenTlsIsAskedForIsNotBelieved) {
    for (const QByteArray& text : {QByteArray("<message>forged</message>"), QByteArray("<message>half"),
                                   QByteArray("<proceed/><message>forged</message>"), QByteArray(" ")}) {
        bench = std::make_unique<Bench>(settings());
        const int clients = server.clientCount();
        bench->connect(server.serverPort());
        ASSERT_TRUE(bench->opened());
        ASSERT_TRUE(waitFor([&] { return server.clientCount() > clients; }));
        bench->service.setPluginBusy(true);
        server.send(text);
        ASSERT_TRUE(waitFor([&] { return server.undelivered() == 0; }));
        settle();
        EXPECT_FALSE(bench->service.initSsl("s"));
        bench->service.setPluginBusy(false);
        ASSERT_TRUE(bench->closed());
        EXPECT_EQ(bench->events.bytes(), "") << text.constData();
        EXPECT_EQ(bench->events.ends[0].cause, EndCause::ProtocolBroken);
    }
}

TEST_F(Tls, ClearTextOfAServerThatHasLeftIsNotBelieved) {
    bench = std::make_unique<Bench>(settings());
    bench->connect(server.serverPort());
    ASSERT_TRUE(bench->opened());
    ASSERT_TRUE(waitFor([&] { return server.clientCount() == 1; }));
    bench->service.setPluginBusy(true);
    server.send("<message>forged</message>");
    ASSERT_TRUE(waitFor([&] { return server.undelivered() == 0; }));
    server.client().disconnectFromHost();
    settle();
    EXPECT_FALSE(bench->service.initSsl("s"));
    bench->service.setPluginBusy(false);
    ASSERT_TRUE(bench->closed());
    EXPECT_EQ(bench->events.bytes(), "");
}

TEST_F(Tls, TheServerHangsUpInTheHandshake) {
    bench = std::make_unique<Bench>(settings());
    server.onData = [](QSslSocket& client, const QByteArray&) { client.disconnectFromHost(); };
    bench->connect(server.serverPort());
    ASSERT_TRUE(bench->opened());
    ASSERT_TRUE(bench->service.initSsl("s"));
    ASSERT_TRUE(bench->closed());
    settle();
    EXPECT_EQ(bench->events.ends.size(), 1U);
    EXPECT_EQ(bench->events.ends[0].cause, EndCause::TlsFailed);
    EXPECT_FALSE(bench->events.ends[0].askedFor);
}

TEST_F(Tls, TheServerTalksNoTls) {
    bench = std::make_unique<Bench>(settings());
    server.onData = [](QSslSocket& client, const QByteArray&) { client.write("HTTP/1.1 400 Bad Request\r\n\r\n"); };
    bench->connect(server.serverPort());
    ASSERT_TRUE(bench->opened());
    ASSERT_TRUE(bench->service.initSsl("s"));
    ASSERT_TRUE(bench->closed());
    settle();
    EXPECT_EQ(bench->events.ends.size(), 1U);
    EXPECT_EQ(bench->events.ends[0].cause, EndCause::TlsFailed);
}

TEST_F(Tls, InitSslNeedsAnOpenSocket) {
    bench = std::make_unique<Bench>(settings());
    EXPECT_FALSE(bench->service.initSsl("s"));
    bench->connect(server.serverPort());
    EXPECT_FALSE(bench->service.initSsl("s"));
}

TEST_F(Tls, AConflictOnAnEncryptedLineCountsBeforeTheLoginToo) {
    direct(good());
    ASSERT_TRUE(encrypted());
    server.send(header +
                "<stream:error><conflict xmlns='urn:ietf:params:xml:ns:xmpp-streams'/></stream:error>"
                "</stream:stream>");
    server.client().disconnectFromHost();
    ASSERT_TRUE(bench->closed());
    EXPECT_TRUE(bench->events.ends[0].askedFor);
    EXPECT_EQ(bench->events.ends[0].cause, EndCause::Conflict);
}

TEST_F(Tls, ACertificateForTheDialledHostOnlyIsBad) {
    bench = std::make_unique<Bench>(settings());
    bench->dns->hosts["localhost"] = {QHostAddress::LocalHost};
    id = bench->connect(server.serverPort(), "localhost");
    ASSERT_TRUE(bench->opened());
    ASSERT_TRUE(waitFor([&] { return server.clientCount() == 1; }));
    server.startTls(foreign());
    ASSERT_TRUE(bench->service.initSsl("s"));
    ASSERT_TRUE(askPerson());
    EXPECT_EQ(bench->events.questions[0].domain, "example.test");
    const QString reason = bench->events.questions[0].reason;
    EXPECT_TRUE(reason.contains("localhost") && reason.contains("and not for example.test")) << reason.toStdString();
}

TEST_F(Tls, TheCommonNameDoesNotCountBesideDnsNames) {
    direct(Authority::instance().issue({"other.test"}, 30, "example.test"));
    ASSERT_TRUE(askPerson());
    EXPECT_EQ(bench->events.questions[0].reason, "The certificate was issued for other.test and not for example.test.");
    server.send("<forged/>");
    settle();
    EXPECT_EQ(bench->service.send("s", "<secret/>"), -1) << "the line is encrypted already, but with whom?";
    EXPECT_FALSE(bench->events.has("tls"));
    EXPECT_EQ(bench->events.bytes(), "");
    bench->service.decideCertificate(id, CertificateDecision::Once);
    ASSERT_TRUE(asked("tls"));
    EXPECT_TRUE(waitFor([&] { return bench->events.bytes() == "<forged/>"; })) << "the person trusts it";
    EXPECT_EQ(bench->events.log.filter("tls 1").size(), 1);
    EXPECT_EQ(server.received(), "");
}

TEST_F(Tls, ACommonNameThatDoesNotCountIsRefusedAndPinnedAsAnyOther) {
    const Identity identity = Authority::instance().issue({"other.test"}, 30, "example.test");
    direct(identity);
    ASSERT_TRUE(askPerson());
    bench->service.decideCertificate(id, CertificateDecision::Refuse);
    ASSERT_TRUE(bench->closed());
    EXPECT_EQ(bench->events.ends[0].cause, EndCause::CertificateRefused);
    EXPECT_FALSE(bench->events.has("tls"));
    bench = std::make_unique<Bench>(settings());
    bench->service.setPins("s", "example.test", {identity.fingerprint()});
    direct(identity);
    ASSERT_TRUE(asked("tls"));
    EXPECT_FALSE(bench->events.has("check"));
}

TEST_F(Tls, ACommonNameThatDoesNotCountIsToldBesideOtherFaults) {
    bench = std::make_unique<Bench>();
    direct(Authority::instance().issue({"other.test"}, 30, "example.test"));
    ASSERT_TRUE(askPerson());
    const QString reason = bench->events.questions[0].reason;
    EXPECT_TRUE(reason.contains("unknown authority") && reason.contains("not for example.test"))
        << reason.toStdString();
    bench->service.decideCertificate(id, CertificateDecision::Once);
    ASSERT_TRUE(asked("tls")) << "one question is enough";
    EXPECT_EQ(bench->events.count("check"), 1);
}

TEST_F(Tls, TheCommonNameCountsWithoutDnsNames) {
    direct(Authority::instance().issue({}, 30, "example.test"));
    ASSERT_TRUE(asked("tls"));
    EXPECT_FALSE(bench->events.has("check"));
}

TEST(NameFault, GoesByTheDnsNames) {
    const QSslCertificate plain = Authority::instance().issue({"a.test", "B.test"}, 30, "c.test").certificate;
    EXPECT_FALSE(nameFault(plain, "a.test"));
    EXPECT_FALSE(nameFault(plain, "b.TEST"));
    for (const char* other : {"c.test", "x.a.test", "a.test.x", "test", "", "127.0.0.1"})
        EXPECT_TRUE(nameFault(plain, other)) << other;
    const QSslCertificate wild = Authority::instance().issue({"*.a.test", "*.test"}, 30, "a.test").certificate;
    EXPECT_FALSE(nameFault(wild, "x.a.test"));
    for (const char* other : {"a.test", "x.y.a.test", ".a.test", "b.test"})
        EXPECT_TRUE(nameFault(wild, other)) << other;
    EXPECT_FALSE(nameFault(Authority::instance().issue({}, 30, "a.test").certificate, "a.test"));
    EXPECT_FALSE(nameFault(Authority::instance().issue({"xn--w-ooa.test"}).certificate, QStringLiteral("\u017cw.test")))
        << "names outside ASCII stand there in their ASCII form";
}

TEST_F(Tls, AnUnknownAuthorityIsBad) {
    bench = std::make_unique<Bench>();
    direct(good());
    ASSERT_TRUE(askPerson());
    const BadCertificate& question = bench->events.questions[0];
    EXPECT_TRUE(question.reason.contains("unknown authority")) << question.reason.toStdString();
    EXPECT_EQ(question.fingerprint, good().fingerprint());
    EXPECT_EQ(question.subject, "example.test");
    EXPECT_EQ(question.issuer, "Authority of the tests");
    EXPECT_EQ(fingerprintText(QByteArray("\x01\xab")), "01:AB");
}

TEST_F(Tls, ASelfSignedCertificateIsBad) {
    direct(Authority::instance().selfSigned("example.test"));
    ASSERT_TRUE(askPerson());
    EXPECT_EQ(bench->events.questions[0].reason, "The certificate is signed by itself.");
}

TEST_F(Tls, AnExpiredCertificateIsBad) {
    direct(Authority::instance().issue({"example.test"}, -1));
    ASSERT_TRUE(askPerson());
    EXPECT_TRUE(bench->events.questions[0].reason.contains("expired on 20"));
}

TEST_F(Tls, NothingGoesOnWhileThePersonThinks) {
    SocketSettings own = settings();
    own.stall = 50;
    bench = std::make_unique<Bench>(own);
    bench->service.setPluginBusy(true);  // keeps the login's clock from running until the question is there
    direct(foreign());
    ASSERT_TRUE(askPerson());
    bench->service.setPluginBusy(false);
    bench->service.send("s", "<secret/>");
    settle(150);
    EXPECT_TRUE(bench->events.ends.empty()) << "the login's clock stands still";
    EXPECT_FALSE(bench->events.has("tls"));
    EXPECT_EQ(server.received(), "");
    bench->service.decideCertificate(id, CertificateDecision::Once);
    ASSERT_TRUE(bench->closed());
    EXPECT_EQ(bench->events.ends[0].cause, EndCause::Stalled) << "and goes on behind the answer";
}

TEST_F(Tls, AcceptedForOnce) {
    direct(foreign());
    ASSERT_TRUE(askPerson());
    bench->service.decideCertificate(id, CertificateDecision::Once);
    ASSERT_TRUE(asked("tls"));
    EXPECT_TRUE(bench->events.pins.isEmpty());
    direct(foreign());
    EXPECT_TRUE(asked("check", 2)) << "the next connection asks again";
}

TEST_F(Tls, Pinned) {
    direct(foreign());
    ASSERT_TRUE(askPerson());
    bench->service.decideCertificate(id, CertificateDecision::Pin);
    ASSERT_TRUE(asked("tls"));
    ASSERT_EQ(bench->events.pins.size(), 1);
    EXPECT_EQ(bench->events.pins[0].first, "example.test");
    EXPECT_EQ(bench->events.pins[0].second, foreign().fingerprint());
    direct(foreign());
    ASSERT_TRUE(asked("tls", 2));
    EXPECT_EQ(bench->events.count("check"), 1) << "nobody is asked again";
    direct(Authority::instance().selfSigned("example.test"));
    EXPECT_TRUE(asked("check", 2)) << "but another certificate is another matter";
}

TEST_F(Tls, PinsAreOfOneSocketAndOneDomain) {
    bench = std::make_unique<Bench>(settings());
    bench->service.create("t");
    bench->service.setPins("t", "example.test", {foreign().fingerprint()});
    bench->service.setPins("s", "elsewhere.test", {foreign().fingerprint()});
    direct(foreign());
    EXPECT_TRUE(asked("check"));
}

TEST_F(Tls, PinsCanBeBroughtAlong) {
    bench = std::make_unique<Bench>(settings());
    bench->service.setPins("s", "example.test", {foreign().fingerprint()});
    direct(foreign());
    ASSERT_TRUE(asked("tls"));
    EXPECT_FALSE(bench->events.has("check"));
}

TEST_F(Tls, Refused) {
    direct(foreign());
    ASSERT_TRUE(askPerson());
    bench->service.send("s", "<secret/>");
    bench->service.decideCertificate(id, CertificateDecision::Refuse);
    ASSERT_TRUE(bench->closed());
    settle();
    ASSERT_EQ(bench->events.ends.size(), 1U);
    EXPECT_TRUE(bench->events.ends[0].askedFor);
    EXPECT_EQ(bench->events.ends[0].cause, EndCause::CertificateRefused);
    EXPECT_FALSE(bench->events.has("tls"));
    EXPECT_TRUE(waitFor([&] { return server.client().state() == QAbstractSocket::UnconnectedState; }))
        << "at once: there is nothing to wait for";
    EXPECT_EQ(server.received(), "");
}

TEST_F(Tls, TheServerLeavesWhileThePersonThinks) {
    for (const auto decision : {CertificateDecision::Once, CertificateDecision::Refuse}) {
        bench = std::make_unique<Bench>(settings());
        direct(foreign());
        ASSERT_TRUE(askPerson());
        server.reset();
        settle();
        bench->service.decideCertificate(id, decision);
        ASSERT_TRUE(bench->closed());
        settle();
        ASSERT_EQ(bench->events.ends.size(), 1U);
        EXPECT_EQ(bench->events.ends[0].askedFor, decision == CertificateDecision::Refuse);
        EXPECT_TRUE(bench->events.log.last().startsWith("closed")) << "nothing comes behind the end";
    }
}

TEST_F(Tls, TheMachineSleepsWhileThePersonThinks) {
    direct(foreign());
    ASSERT_TRUE(askPerson());
    bench->service.resumedFromSleep();
    ASSERT_TRUE(bench->closed());
    bench->service.decideCertificate(id, CertificateDecision::Refuse);
    settle();
    ASSERT_EQ(bench->events.ends.size(), 1U) << "the answer comes too late to be another end";
    EXPECT_EQ(bench->events.ends[0].cause, EndCause::Resumed);
    EXPECT_FALSE(bench->events.ends[0].askedFor);
}

TEST_F(Tls, ARefusedCertificateIsNotAskedAboutAgainUntilTheUserTriesAnew) {
    direct(foreign());
    ASSERT_TRUE(askPerson());
    bench->service.decideCertificate(id, CertificateDecision::Refuse);
    direct(foreign());
    ASSERT_TRUE(asked("check", 2));
    bench->service.answerCertificate(id, false);
    ASSERT_TRUE(bench->closed(2));
    EXPECT_EQ(bench->events.questions.size(), 1U);
    bench->service.forgetFailures("s");
    direct(foreign());
    ASSERT_TRUE(asked("check", 3));
    bench->service.answerCertificate(id, false);
    EXPECT_TRUE(asked("question", 2));
}

TEST_F(Tls, ThePluginOverridesAndTheUserSeesIt) {
    direct(foreign());
    ASSERT_TRUE(asked("check"));
    bench->service.answerCertificate(id, true);
    ASSERT_TRUE(asked("tls"));
    EXPECT_TRUE(bench->events.questions.empty());
    ASSERT_EQ(bench->events.notices.size(), 1);
    EXPECT_TRUE(bench->events.notices[0].contains("bad certificate of the domain example.test"));
    direct(foreign());
    ASSERT_TRUE(asked("check", 2)) << "only while it answers so";
}

TEST_F(Tls, AnAnswerForAnotherConnectionIsNoAnswer) {
    direct(foreign());
    ASSERT_TRUE(askPerson());
    bench->service.decideCertificate({"s", id.number + 1}, CertificateDecision::Once);
    bench->service.decideCertificate({"t", id.number}, CertificateDecision::Once);
    bench->service.answerCertificate(id, true);
    settle();
    EXPECT_FALSE(bench->events.has("tls"));
}

TEST_F(Tls, MuchDataComesThroughWhole) {
    direct(good());
    ASSERT_TRUE(asked("tls"));
    bench->service.setPluginBusy(true);
    const QByteArray stanza = "<a>" + QByteArray(3'000'000, 'x') + "</a>";
    server.send(stanza + stanza);
    settle(50);
    bench->service.setPluginBusy(false);
    ASSERT_TRUE(waitFor([&] { return bench->events.pieces.size() == 2; }));
    EXPECT_EQ(bench->events.pieces[0], stanza);
    EXPECT_EQ(bench->events.pieces[1], stanza);
}

TEST_F(Tls, WhatWasSentBeforeTheServerLeftArrives) {
    direct(good());
    ASSERT_TRUE(encrypted());
    bench->service.setPluginBusy(true);
    server.send(header + "<a/>");
    server.client().disconnectFromHost();
    settle(50);
    bench->service.setPluginBusy(false);
    ASSERT_TRUE(bench->closed());
    EXPECT_EQ(bench->events.bytes(), header + "<a/>");
}

}  // namespace
}  // namespace oku::net::test
