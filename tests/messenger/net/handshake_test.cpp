// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The four proxy protocols byte by byte, without a socket.
#include <gtest/gtest.h>

#include "messenger/core/net/proxy_handshake.h"

namespace oku::net {
namespace {

using State = ProxyStep::State;

struct Exchange {
    State state = State::Waiting;
    QByteArray sent;
    QByteArray left;  ///< of the input
    QString error;
};

/** Plays the proxy's bytes, all at once or one at a time, as ProxyNegotiation does. */
Exchange play(const Proxy& proxy, const ProxyTarget& target, const QByteArray& answers, qsizetype step) {
    const auto handshake = makeHandshake(proxy, target);
    Exchange exchange;
    qsizetype given = 0;
    for (bool more = true; more;) {
        const ProxyStep taken = handshake->step(exchange.left);
        exchange.left.remove(0, taken.consumed);
        exchange.sent += taken.send;
        exchange.state = taken.state;
        exchange.error = taken.error;
        if (taken.state != State::Waiting) break;
        if (taken.consumed > 0) continue;
        more = given < answers.size();
        exchange.left += answers.mid(given, step);
        given += step;
    }
    if (given < answers.size()) exchange.left += answers.mid(given);
    return exchange;
}

struct Row {
    const char* name;
    ProxyType type;
    const char* user;
    const char* password;
    QByteArray answers;
    State state;
    QByteArray sent;
    QByteArray left;
    const char* error;
};

#define BYTES(literal) QByteArray(literal, sizeof(literal) - 1)
const QByteArray request5 = BYTES("\5\1\0\3\6a.test\x14\x66");

const QList<Row> rows{
    {"4", ProxyType::Socks4, "", "", BYTES("\0\x5a\0\0\0\0\0\0"), State::Done, BYTES("\4\1\x14\x66\xc0\0\2\1\0"), "",
     ""},
    {"4 with a user", ProxyType::Socks4, "me", "", BYTES("\0\x5a\0\0\0\0\0\0rest"), State::Done,
     BYTES("\4\1\x14\x66\xc0\0\2\1me\0"), "rest", ""},
    {"4 refused", ProxyType::Socks4, "", "", BYTES("\0\x5b\0\0\0\0\0\0"), State::TargetFailed,
     BYTES("\4\1\x14\x66\xc0\0\2\1\0"), BYTES("\0\x5b\0\0\0\0\0\0"), "it cannot reach a.test:5222"},
    {"4 without identd", ProxyType::Socks4, "me", "", BYTES("\0\x5c\0\0\0\0\0\0"), State::Failed,
     BYTES("\4\1\x14\x66\xc0\0\2\1me\0"), BYTES("\0\x5c\0\0\0\0\0\0"), "it could not confirm the user name (identd)"},
    {"4 with a wrong user", ProxyType::Socks4, "me", "", BYTES("\0\x5d\0\0\0\0\0\0"), State::Failed,
     BYTES("\4\1\x14\x66\xc0\0\2\1me\0"), BYTES("\0\x5d\0\0\0\0\0\0"), "it refused the user name or the password"},
    {"4A", ProxyType::Socks4A, "", "", BYTES("\0\x5a\0\0\0\0\0\0"), State::Done,
     BYTES("\4\1\x14\x66\0\0\0\1\0a.test\0"), "", ""},
    {"4A with a user", ProxyType::Socks4A, "me", "", BYTES("\0\x5a\0\0\0\0\0\0"), State::Done,
     BYTES("\4\1\x14\x66\0\0\0\1me\0a.test\0"), "", ""},
    {"4A is none", ProxyType::Socks4A, "", "", BYTES("HTTP/1.1"), State::Failed,
     BYTES("\4\1\x14\x66\0\0\0\1\0a.test\0"), "HTTP/1.1",
     "its answer makes no sense, it may be a server of another kind"},
    {"5", ProxyType::Socks5, "", "", BYTES("\5\0\5\0\0\1\x7f\0\0\1\0\x50rest"), State::Done, BYTES("\5\1\0") + request5,
     "rest", ""},
    {"5 answering with a name", ProxyType::Socks5, "", "", BYTES("\5\0\5\0\0\3\2ab\0\x50"), State::Done,
     BYTES("\5\1\0") + request5, "", ""},
    {"5 answering with IPv6", ProxyType::Socks5, "", "", BYTES("\5\0\5\0\0\4") + QByteArray(18, '\0') + "x",
     State::Done, BYTES("\5\1\0") + request5, "x", ""},
    {"5 with a login", ProxyType::Socks5, "me", "pw", BYTES("\5\2\1\0\5\0\0\1\0\0\0\0\0\0"), State::Done,
     BYTES("\5\2\0\2\1\2me\2pw") + request5, "", ""},
    {"5 with a login that it does not want", ProxyType::Socks5, "me", "pw", BYTES("\5\0\5\0\0\1\0\0\0\0\0\0"),
     State::Done, BYTES("\5\2\0\2") + request5, "", ""},
    {"5 with a wrong login", ProxyType::Socks5, "me", "pw", BYTES("\5\2\1\1"), State::Failed,
     BYTES("\5\2\0\2\1\2me\2pw"), BYTES("\1\1"), "it refused the user name or the password"},
    {"5 wants a login", ProxyType::Socks5, "", "", BYTES("\5\xff"), State::Failed, BYTES("\5\1\0"), BYTES("\5\xff"),
     "it wants a login"},
    {"5 forces a login", ProxyType::Socks5, "", "", BYTES("\5\2"), State::Failed, BYTES("\5\1\0"), BYTES("\5\2"),
     "it wants a login"},
    {"5 forbids the target", ProxyType::Socks5, "", "", BYTES("\5\0\5\2\0\1\0\0\0\0\0\0"), State::TargetFailed,
     BYTES("\5\1\0") + request5, BYTES("\5\2\0\1\0\0\0\0\0\0"), "it does not allow a connection to a.test:5222"},
    {"5 cannot reach the target", ProxyType::Socks5, "", "", BYTES("\5\0\5\4\0\1\0\0\0\0\0\0"), State::TargetFailed,
     BYTES("\5\1\0") + request5, BYTES("\5\4\0\1\0\0\0\0\0\0"), "it cannot reach a.test:5222"},
    {"5 is refused by the target", ProxyType::Socks5, "", "", BYTES("\5\0\5\5\0\1\0\0\0\0\0\0"), State::TargetFailed,
     BYTES("\5\1\0") + request5, BYTES("\5\5\0\1\0\0\0\0\0\0"), "a.test:5222 refuses the connection"},
    {"5 is none", ProxyType::Socks5, "", "", BYTES("HT"), State::Failed, BYTES("\5\1\0"), "HT",
     "its answer makes no sense, it may be a server of another kind"},
    {"HTTP", ProxyType::Http, "", "", "HTTP/1.1 200 OK\r\nX: y\r\n\r\nrest", State::Done,
     "CONNECT a.test:5222 HTTP/1.1\r\nHost: a.test:5222\r\n\r\n", "rest", ""},
    {"HTTP with a login", ProxyType::Http, "me", "p:w", "HTTP/1.0 200 Connection established\r\n\r\n", State::Done,
     "CONNECT a.test:5222 HTTP/1.1\r\nHost: a.test:5222\r\nProxy-Authorization: Basic bWU6cDp3\r\n\r\n", "", ""},
    {"HTTP wants a login", ProxyType::Http, "", "", "HTTP/1.1 407 Login\r\n\r\n", State::Failed,
     "CONNECT a.test:5222 HTTP/1.1\r\nHost: a.test:5222\r\n\r\n", "HTTP/1.1 407 Login\r\n\r\n", "it wants a login"},
    {"HTTP with a wrong login", ProxyType::Http, "me", "no", "HTTP/1.1 407 Login\r\n\r\n", State::Failed,
     "CONNECT a.test:5222 HTTP/1.1\r\nHost: a.test:5222\r\nProxy-Authorization: Basic bWU6bm8=\r\n\r\n",
     "HTTP/1.1 407 Login\r\n\r\n", "it refused the user name or the password"},
    {"HTTP with a wrong login, told in another way", ProxyType::Http, "me", "no", "HTTP/1.1 401 Unauthorized\r\n\r\n",
     State::Failed, "CONNECT a.test:5222 HTTP/1.1\r\nHost: a.test:5222\r\nProxy-Authorization: Basic bWU6bm8=\r\n\r\n",
     "HTTP/1.1 401 Unauthorized\r\n\r\n", "it refused the user name or the password"},
    {"HTTP forbids the target", ProxyType::Http, "", "", "HTTP/1.1 403 No\r\n\r\n", State::TargetFailed,
     "CONNECT a.test:5222 HTTP/1.1\r\nHost: a.test:5222\r\n\r\n", "HTTP/1.1 403 No\r\n\r\n",
     "it does not allow a connection to a.test:5222"},
    {"HTTP cannot reach the target", ProxyType::Http, "", "", "HTTP/1.1 502 Bad\r\n\r\n", State::TargetFailed,
     "CONNECT a.test:5222 HTTP/1.1\r\nHost: a.test:5222\r\n\r\n", "HTTP/1.1 502 Bad\r\n\r\n",
     "it cannot reach a.test:5222"},
    {"HTTP says something else", ProxyType::Http, "", "", "HTTP/1.1 418 Tea\r\n\r\n", State::TargetFailed,
     "CONNECT a.test:5222 HTTP/1.1\r\nHost: a.test:5222\r\n\r\n", "HTTP/1.1 418 Tea\r\n\r\n",
     "it refused the connection to a.test:5222 (418 Tea)"},
    {"HTTP is none", ProxyType::Http, "", "", "SSH-2.0", State::Failed,
     "CONNECT a.test:5222 HTTP/1.1\r\nHost: a.test:5222\r\n\r\n", "SSH-2.0",
     "its answer makes no sense, it may be a server of another kind"},
};

const ProxyTarget target{"a.test", 5222, QHostAddress("192.0.2.1")};

TEST(ProxyHandshake, EachProtocolInWhateverPiecesTheAnswersCome) {
    for (const Row& row : rows) {
        const Proxy proxy{row.type, "proxy.test", 1, QString::fromUtf8(row.user), QString::fromUtf8(row.password)};
        for (qsizetype step = row.answers.size(); step >= 1; step = step == 1 ? 0 : 1) {
            const Exchange exchange = play(proxy, target, row.answers, step);
            EXPECT_EQ(exchange.state, row.state) << row.name;
            EXPECT_EQ(exchange.sent.toHex().toStdString(), row.sent.toHex().toStdString()) << row.name;
            EXPECT_EQ(exchange.left.toHex().toStdString(), row.left.toHex().toStdString()) << row.name;
            EXPECT_EQ(exchange.error.toStdString(), row.error) << row.name;
        }
    }
}

TEST(ProxyHandshake, WaitsForAsLongAsAnAnswerIsCut) {
    for (const Row& row : rows) {
        if (row.state != State::Done) continue;
        const Proxy proxy{row.type, "proxy.test", 1, QString::fromUtf8(row.user), QString::fromUtf8(row.password)};
        const qsizetype whole = row.answers.size() - row.left.size();
        for (qsizetype cut = 0; cut < whole; ++cut)
            EXPECT_EQ(play(proxy, target, row.answers.left(cut), 100).state, State::Waiting) << row.name << ' ' << cut;
    }
}

TEST(ProxyHandshake, AddressesGoAsAddresses) {
    const Proxy proxy{ProxyType::Socks5, "proxy.test", 1, {}, {}};
    EXPECT_EQ(play(proxy, {"192.0.2.1", 80, {}}, BYTES("\5\0"), 2).sent, BYTES("\5\1\0\5\1\0\1\xc0\0\2\1\0\x50"));
    EXPECT_EQ(play(proxy, {"2001:db8::1", 80, {}}, BYTES("\5\0"), 2).sent,
              BYTES("\5\1\0\5\1\0\4\x20\1\xd\xb8\0\0\0\0\0\0\0\0\0\0\0\1\0\x50"));
    const Proxy http{ProxyType::Http, "proxy.test", 1, {}, {}};
    EXPECT_TRUE(play(http, {"2001:db8::1", 80, {}}, "", 1).sent.startsWith("CONNECT [2001:db8::1]:80 HTTP/1.1\r\n"));
}

TEST(ProxyHandshake, ALoginThatDoesNotFitIsToldBeforeAnythingIsSent) {
    const QString zero = QString("a") + QChar(0);
    for (const Proxy& proxy : QList<Proxy>{{ProxyType::Socks5, "p", 1, QString(256, 'u'), "p"},
                                           {ProxyType::Socks5, "p", 1, "u", QString(256, 'p')},
                                           {ProxyType::Socks4, "p", 1, zero, {}},
                                           {ProxyType::Socks4A, "p", 1, zero, {}},
                                           {ProxyType::Http, "p", 1, "a:b", "p"}}) {
        const Exchange exchange = play(proxy, target, "", 1);
        EXPECT_EQ(exchange.state, State::Failed);
        EXPECT_EQ(exchange.sent, "");
        EXPECT_EQ(exchange.error, "the user name or the password cannot be sent in this protocol");
    }
}

TEST(ProxyHandshake, AnEndlessHeadIsGivenUp) {
    const Proxy proxy{ProxyType::Http, "p", 1, {}, {}};
    EXPECT_EQ(play(proxy, target, "HTTP/1.1 200 " + QByteArray(70'000, 'x'), 1000).state, State::Failed);
}

}  // namespace
}  // namespace oku::net
