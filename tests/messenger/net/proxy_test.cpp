// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Contract 10 through proxies: all four kinds, with and without login, names resolved by the proxy, TLS behind it.
#include <gtest/gtest.h>

#include "tests/messenger/net/recorder.h"
#include "tests/messenger/net/server.h"
#include "tests/messenger/net/small_proxy.h"
#include "tests/messenger/net/wait.h"

namespace oku::net::test {
namespace {

struct ByProxy : testing::TestWithParam<ProxyType> {
    ByProxy() : proxy(GetParam()), bench(std::make_unique<Bench>(settings())) { prepare(); }

    void prepare() {
        bench->dns->hosts["proxy.test"] = {QHostAddress::LocalHost};
        proxy.targets[wireName() + ":5222"] = server.serverPort();
        if (byAddress()) bench->dns->hosts["example.test"] = {QHostAddress("2001:db8::1"), QHostAddress("192.0.2.77")};
    }

    static SocketSettings settings() {
        SocketSettings settings;
        settings.extraCa = {Authority::instance().certificate()};
        return settings;
    }

    static bool byAddress() { return GetParam() == ProxyType::Socks4; }
    static QString wireName() { return byAddress() ? "192.0.2.77" : "example.test"; }
    /** The name of the kind: SOCKS 4 and 4A have no password. */
    static bool hasPassword() { return GetParam() == ProxyType::Socks5 || GetParam() == ProxyType::Http; }

    void dial(const Proxy& through, const QString& serviceName = {}) {
        ConnectRequest request;
        request.host = request.domain = "example.test";
        request.serviceName = serviceName;
        request.proxy = through;
        bench->connect(request);
    }

    /** The one end, with its text without the sentence that stands round a proxy's or a target's reason. */
    QString failure() {
        EXPECT_TRUE(bench->closed());
        settle();
        EXPECT_EQ(bench->events.ends.size(), 1U);
        EXPECT_FALSE(bench->events.ends[0].askedFor);
        return bench->events.ends[0].text;
    }

    Server server;
    SmallProxy proxy;
    std::unique_ptr<Bench> bench;
};

TEST_P(ByProxy, BytesGoBothWays) {
    dial(proxy.settings());
    ASSERT_TRUE(bench->opened());
    bench->service.send("s", "<a/>");
    ASSERT_TRUE(waitFor([&] { return server.received() == "<a/>"; }));
    server.send("<b/>");
    EXPECT_TRUE(waitFor([&] { return bench->events.bytes() == "<b/>"; }));
    EXPECT_EQ(proxy.asked, QStringList{wireName() + ":5222"});
}

TEST_P(ByProxy, ThePluginSeesNothingOfTheHandshake) {
    dial(proxy.settings());
    ASSERT_TRUE(bench->opened());
    settle();
    EXPECT_EQ(bench->events.log, QStringList{"connected 1"});
}

TEST_P(ByProxy, WhatComesBehindItsAnswerIsNotBelievedWhereTlsIsWanted) {
    proxy.slipped = header + "<message>forged</message><half";
    bool started = true;
    bench->events.onEvent = [&](const QString& line) {
        if (line == "connected 1") started = bench->service.initSsl("s");
    };
    dial(proxy.settings());
    ASSERT_TRUE(bench->closed());
    EXPECT_FALSE(started);
    EXPECT_EQ(bench->events.log.size(), 2) << bench->events.log.join('\n').toStdString();
    EXPECT_EQ(bench->events.bytes(), "");
    EXPECT_EQ(bench->events.ends[0].cause, EndCause::ProtocolBroken);
    EXPECT_FALSE(bench->events.ends[0].askedFor);
}

TEST_P(ByProxy, NamesAreResolvedByTheProxy) {
    dial(proxy.settings(), "_xmpp-client._tcp.example.test");
    ASSERT_TRUE(bench->opened());
    if (byAddress()) {
        EXPECT_EQ(bench->dns->asked,
                  (QStringList{"srv _xmpp-client._tcp.example.test", "host example.test", "host proxy.test"}));
    } else {
        EXPECT_EQ(bench->dns->asked, QStringList{"host proxy.test"}) << "no question about the domain leaves";
    }
}

TEST_P(ByProxy, WithALogin) {
    proxy.user = "me";
    proxy.password = "secret";
    dial(proxy.settings("me", "secret"));
    ASSERT_TRUE(bench->opened());
}

TEST_P(ByProxy, WithAWrongLogin) {
    proxy.user = "me";
    proxy.password = "secret";
    dial(hasPassword() ? proxy.settings("me", "wrong") : proxy.settings("other"));
    EXPECT_EQ(failure(), "Proxy server proxy.test: it refused the user name or the password.");
    EXPECT_EQ(bench->events.ends[0].cause, EndCause::ProxyFailed);
}

TEST_P(ByProxy, WithoutTheLoginThatItWants) {
    proxy.user = "me";
    dial(proxy.settings());
    EXPECT_EQ(failure(), hasPassword() ? "Proxy server proxy.test: it wants a login."
                                       : "Proxy server proxy.test: it refused the user name or the password.");
}

TEST_P(ByProxy, ATargetThatItCannotReach) {
    proxy.targets.clear();
    dial(proxy.settings());
    EXPECT_EQ(failure(), "The server cannot be reached: it cannot reach example.test:5222.");
}

TEST_P(ByProxy, TheProxyIsNotThere) {
    Proxy gone = proxy.settings();
    gone.port = deadPort();
    dial(gone);
    EXPECT_EQ(failure(), "Proxy server proxy.test: it cannot be reached (connection refused).");
}

TEST_P(ByProxy, TheProxyHasNoAddress) {
    bench->dns->hosts.erase("proxy.test");
    dial(proxy.settings());
    EXPECT_EQ(failure(), "Proxy server proxy.test: its address was not found.");
}

TEST_P(ByProxy, TheProxyIsSilent) {
    SocketSettings own;
    own.proxyTimeout = 100;
    bench = std::make_unique<Bench>(own);
    prepare();
    proxy.silent = true;
    dial(proxy.settings());
    EXPECT_EQ(failure(), "Proxy server proxy.test: it does not answer.");
}

TEST_P(ByProxy, TheProxyHangsUp) {
    Server other;
    other.onData = [](QSslSocket& client, const QByteArray&) { client.disconnectFromHost(); };
    Proxy through = proxy.settings();
    through.port = other.serverPort();
    dial(through);
    EXPECT_EQ(failure(), "Proxy server proxy.test: it cut the connection.");
}

TEST_P(ByProxy, SomethingElseListensThere) {
    Server other;
    other.onData = [](QSslSocket& client, const QByteArray&) { client.write("220 mail.example.test ESMTP\r\n"); };
    Proxy through = proxy.settings();
    through.port = other.serverPort();
    dial(through);
    EXPECT_TRUE(failure().contains("its answer makes no sense"));
}

TEST_P(ByProxy, TlsBehindItIsCheckedAgainstTheDomain) {
    dial(proxy.settings());
    ASSERT_TRUE(bench->opened());
    ASSERT_TRUE(waitFor([&] { return server.clientCount() == 1; }));
    server.startTls(Authority::instance().issue({"example.test"}));
    ASSERT_TRUE(bench->service.initSsl("s"));
    ASSERT_TRUE(waitFor([&] { return bench->events.has("tls"); }));
    EXPECT_FALSE(bench->events.has("check"));
}

TEST_P(ByProxy, TheServersEndIsReportedOnce) {
    dial(proxy.settings());
    ASSERT_TRUE(bench->opened());
    ASSERT_TRUE(waitFor([&] { return server.clientCount() == 1; }));
    server.client().disconnectFromHost();
    failure();
}

std::string kindName(const testing::TestParamInfo<ProxyType>& kind) {
    static const char* const words[] = {"None", "Socks4", "Socks4A", "Socks5", "Http"};
    return words[static_cast<int>(kind.param)];
}

INSTANTIATE_TEST_SUITE_P(Kinds, ByProxy,
                         testing::Values(ProxyType::Socks4, ProxyType::Socks4A, ProxyType::Socks5, ProxyType::Http),
                         kindName);

struct Socks4 : testing::Test {
    void dial() {
        bench.dns->hosts["proxy.test"] = {QHostAddress::LocalHost};
        ConnectRequest request;
        request.host = "example.test";
        request.proxy = proxy.settings();
        bench.connect(request);
    }

    Server server;
    SmallProxy proxy{ProxyType::Socks4};
    Bench bench;
};

TEST_F(Socks4, TriesOneAddressAfterTheOther) {
    bench.dns->hosts["example.test"] = {QHostAddress("192.0.2.1"), QHostAddress("192.0.2.2")};
    proxy.targets["192.0.2.2:5222"] = server.serverPort();
    dial();
    ASSERT_TRUE(bench.opened());
    EXPECT_EQ(proxy.asked, (QStringList{"192.0.2.1:5222", "192.0.2.2:5222"}));
}

TEST_F(Socks4, CannotReachAHostThatHasIpv6Only) {
    bench.dns->hosts["example.test"] = {QHostAddress("2001:db8::1")};
    dial();
    ASSERT_TRUE(bench.closed());
    EXPECT_EQ(bench.events.ends[0].text,
              "The server cannot be reached: SOCKS 4 needs an IPv4 address, and example.test has none.");
}

}  // namespace
}  // namespace oku::net::test
