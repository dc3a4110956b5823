// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <QTcpServer>
#include <QTcpSocket>

#include "tests/messenger/core/stage.h"

#include "host/oku/netlib.h"
#include "host/oku/windows.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/values/setting_keys.h"

namespace oku::test {
namespace {

/// What the plugin sees of its sockets, against a server of the test's own.
class Sockets : public Stage {
protected:
    Sockets() {
        writeAccount({}, QStringLiteral("alice@localhost"));
        start();
        EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
        plugin().onSocket = [this](tiny::Account&, std::uint32_t kind, OKU_WORD data) {
            if (kind == NL_EVENT_RECEIVED) {
                const auto* record = reinterpret_cast<const NL_RECEIVED*>(data);
                events.append(QStringLiteral("4 ") + QString::fromUtf8(record->data));
            } else {
                events.append(QStringLiteral("%1 %2").arg(kind).arg(kind == NL_EVENT_CLOSED && data ? 1 : 0));
            }
        };
    }
    void TearDown() override {
        if (core->running()) plugin().onSocket = nullptr;
        Stage::TearDown();
    }

    /// Only with the plugin on the stack.
    void dialFromPlugin(quint16 port, const char16_t* serviceName = u"") {
        auto record = makeRecord<NL_CONNECT_RECORD>();
        record.host = u"127.0.0.1";
        record.port = port;
        record.socket = account().socket.c_str();
        record.serviceName = serviceName;
        EXPECT_EQ(call(u"NetLib/ConnectService", wordOf(&record)), 1);
    }
    void dial(quint16 port) {
        inPlugin([this, port] { dialFromPlugin(port); });
    }
    QTcpSocket* accept() {
        EXPECT_TRUE(waitFor([&] { return server.hasPendingConnections(); }));
        return server.nextPendingConnection();
    }
    std::int32_t send(const char* text) {
        auto record = makeRecord<NL_SEND_RECORD>();
        record.data = text;
        record.length = static_cast<std::uint32_t>(strlen(text));
        record.socket = account().socket.c_str();
        return static_cast<std::int32_t>(call(u"NetLib/Send", wordOf(&record)));
    }
    bool saw(const char* event) {
        return waitFor([&] { return events.contains(QString::fromLatin1(event)); });
    }

    /// Hands a message to the plugin of an account that is logged in; gives its number.
    qint64 sendMessage() {
        logIn();
        Message message;
        message.account = QStringLiteral("alice@localhost");
        message.contact = QStringLiteral("bob@localhost");
        message.direction = Direction::out;
        message.body = QStringLiteral("last words");
        message.time = QDateTime::currentDateTime();
        const qint64 number = core->delivery.send(entry(), message);
        EXPECT_EQ(core->history.message(number)->state, DeliveryState::sent);
        return number;
    }
    /// Sends a message and the closing tag behind it; gives the message's number once the server has both.
    qint64 sendAndSignOff(QTcpSocket* peer) {
        const qint64 number = sendMessage();
        inPlugin([&] { send("</stream:stream>"); });
        EXPECT_TRUE(waitFor([&] { return peer->bytesAvailable() > 0; }));
        return number;
    }

    QTcpServer server;
    QTcpSocket* proxy = nullptr;
    QStringList events;
};

TEST_F(Sockets, TellAnEndThatNobodyAskedForOnce) {
    dial(server.serverPort());
    QTcpSocket* peer = accept();
    ASSERT_TRUE(saw("2 0"));
    EXPECT_EQ(send("<a/>"), 4);
    peer->write("<b/>");
    ASSERT_TRUE(saw("4 <b/>"));
    peer->abort();
    ASSERT_TRUE(saw("3 1"));
    pass(50);
    EXPECT_EQ(events, (QStringList{QStringLiteral("2 0"), QStringLiteral("4 <b/>"), QStringLiteral("3 1")}));
    EXPECT_EQ(send("<a/>"), -1);
}

TEST_F(Sockets, KnowNothingOfALineThatWasBefore) {
    const auto makeOld = [&] {
        entry().line = {.domain = QStringLiteral("old.example"),
                        .encrypted = true,
                        .bound = true,
                        .told = true,
                        .refused = true,
                        .digest = DigestLogin{},
                        .registered = "secret"};
    };
    const auto isNew = [&](const QString& domain) {
        const LineState& line = entry().line;
        return line.domain == domain && !line.encrypted && !line.bound && !line.told && !line.refused && !line.digest &&
               line.registered.isEmpty();
    };
    makeOld();
    inPlugin([&] {
        dialFromPlugin(server.serverPort(), u"_xmpp-client._tcp.new.example");
        EXPECT_TRUE(isNew(QStringLiteral("new.example")));
        dialFromPlugin(server.serverPort());
        EXPECT_TRUE(isNew(QStringLiteral("localhost")));
        makeOld();
        entry().line.domain = QStringLiteral("localhost");
    });
    ASSERT_TRUE(saw("2 0"));
    EXPECT_TRUE(isNew(QStringLiteral("localhost")));
    makeOld();
    accept()->abort();
    ASSERT_TRUE(saw("3 1"));
    EXPECT_TRUE(isNew(QString()));
}

TEST_F(Sockets, TellAnEndThatThePluginAskedForWithANullWord) {
    dial(server.serverPort());
    accept();
    ASSERT_TRUE(saw("2 0"));
    inPlugin([&] {
        EXPECT_EQ(call(u"NetLib/Close", wordOf(account().socket.c_str())), 1);
        EXPECT_FALSE(events.contains(QStringLiteral("3 0"))) << "not while the plugin is on the stack";
    });
    EXPECT_TRUE(saw("3 0"));
}

TEST_F(Sockets, TellARefusedConnection) {
    QTcpSocket bound;  // holds its port, and nobody listens there
    ASSERT_TRUE(bound.bind(QHostAddress::LocalHost));
    dial(bound.localPort());
    EXPECT_TRUE(saw("3 1"));
    EXPECT_FALSE(entry().reason.isEmpty());
}

TEST_F(Sockets, CountWhatWasSentAsArrivedWhenTheServerAnswersTheEnd) {
    dial(server.serverPort());
    QTcpSocket* peer = accept();
    ASSERT_TRUE(saw("2 0"));
    const qint64 number = sendMessage();
    inPlugin([&] { send("</stream:stream>"); });
    peer->write("</stream:stream>");
    peer->flush();  // before a turn of the event loop: the time for an answer cannot be over before it is there
    ASSERT_TRUE(saw("3 0"));
    EXPECT_EQ(core->history.message(number)->state, DeliveryState::sent);
    restart();
    EXPECT_EQ(core->history.message(number)->state, DeliveryState::sent) << "it is confirmed for good";
}

TEST_F(Sockets, CountNothingAsArrivedWhenTheLineDiesBehindTheEnd) {
    dial(server.serverPort());
    QTcpSocket* peer = accept();
    ASSERT_TRUE(saw("2 0"));
    const qint64 number = sendAndSignOff(peer);
    peer->abort();
    ASSERT_TRUE(saw("3 0")) << "for the plugin it is the end that it asked for";
    EXPECT_EQ(core->history.message(number)->state, DeliveryState::unconfirmed);
}

TEST_F(Sockets, EndAConnectionThatCanTakeNoMoreAndCountNothingAsArrived) {
    dial(server.serverPort());
    accept();
    ASSERT_TRUE(saw("2 0"));
    const qint64 number = sendMessage();
    const std::string more(65 * 1024 * 1024, 'x');
    inPlugin([&] {
        EXPECT_EQ(send(more.c_str()), -1);
        EXPECT_FALSE(events.contains(QStringLiteral("3 1"))) << "not while the plugin is on the stack";
    });
    ASSERT_TRUE(saw("3 1"));
    EXPECT_TRUE(entry().reason.contains(QStringLiteral("64 MiB"))) << entry().reason.toStdString();
    EXPECT_EQ(core->history.message(number)->state, DeliveryState::unconfirmed);
}

TEST_F(Sockets, DropWhatWasReadInClearOnceTlsIsAskedFor) {
    dial(server.serverPort());
    QTcpSocket* peer = accept();
    ASSERT_TRUE(saw("2 0"));
    core->queue.post({}, [&] {
        peer->write("<forged/>");
        peer->flush();
        EXPECT_TRUE(waitFor([&] { return core->queue.waiting() > 0; })) << "the bytes are read, and wait";
        EXPECT_EQ(call(u"NetLib/InitSSL", wordOf(account().socket.c_str())), 1);
    });
    pass(50);
    EXPECT_EQ(events, QStringList{QStringLiteral("2 0")});
}

TEST_F(Sockets, DropTheEventsOfAConnectionThatWasReplaced) {
    dial(server.serverPort());
    QTcpSocket* first = accept();
    ASSERT_TRUE(saw("2 0"));
    events.clear();
    core->queue.post({}, [&] {
        first->write("<old/>");
        first->flush();
        EXPECT_TRUE(waitFor([&] { return core->queue.waiting() > 0; })) << "the bytes are read, and wait";
        dialFromPlugin(server.serverPort());
    });
    accept();
    ASSERT_TRUE(saw("2 0"));
    pass(50);
    EXPECT_EQ(events, QStringList(QStringLiteral("2 0")));
}

TEST_F(Sockets, HoldBytesWhileABoxIsOpenAndLoseNone) {
    dial(server.serverPort());
    QTcpSocket* peer = accept();
    ASSERT_TRUE(saw("2 0"));
    events.clear();
    auto box = makeRecord<OKU_MESSAGE_BOX>();
    box.style = OKU_BOX_ERROR;
    QTimer::singleShot(0, core.get(), [&] {
        for (const char* piece : {"<m1/>", "<m2/>", "<m3/>"}) {
            peer->write(piece);
            pass(10);
        }
        EXPECT_TRUE(events.isEmpty());
        core->boxes.answer(core->boxes.open().first().number, BoxButton::ok);
    });
    inPlugin([&] { call(u"UI/MessageBox", wordOf(&box)); });
    EXPECT_TRUE(waitFor([&] { return events.join(QString()).count(QStringLiteral("<m")) == 3; }));
    EXPECT_LT(events.join(QString()).indexOf(QStringLiteral("<m1/>")),
              events.join(QString()).indexOf(QStringLiteral("<m3/>")));
    EXPECT_EQ(plugin().deepest, 1);
}

TEST_F(Sockets, CallAPluginThatIsGoneNoMore) {
    dial(server.serverPort());
    QTcpSocket* peer = accept();
    ASSERT_TRUE(saw("2 0"));
    bool finished = false;
    QObject::connect(core.get(), &HostCore::finished, core.get(), [&] { finished = true; });
    core->queue.post({}, [&] {
        core->shutdown();
        peer->write("<late/>");
        peer->flush();
        peer->disconnectFromHost();
        pass(50);
    });
    EXPECT_TRUE(waitFor([&] { return finished; }));
    const auto before = events;
    pass(50);
    EXPECT_EQ(events, before);
}

TEST_F(Sockets, DialThroughTheProxyThatThePluginNames) {
    auto record = makeRecord<NL_CONNECT_RECORD>();
    record.host = u"192.0.2.1";
    record.port = 5222;
    record.socket = account().socket.c_str();
    record.serviceName = u"";
    record.proxyEnabled = 1;
    record.proxyHost = u"127.0.0.1";
    record.proxyPort = server.serverPort();
    record.proxyUser = u"ala";
    record.proxyPassword = u"tajne";
    const auto asked = [&](std::uint32_t type) {
        record.proxyType = type;
        inPlugin([&] { EXPECT_EQ(call(u"NetLib/ConnectService", wordOf(&record)), 1); });
        proxy = accept();
        EXPECT_TRUE(waitFor([&] { return proxy->bytesAvailable() > 0; }));
        return proxy->readAll();
    };
    EXPECT_EQ(asked(NL_PROXY_SOCKS4), QByteArray("\4\1\x14\x66\xc0\0\2\1ala\0", 12));
    EXPECT_EQ(asked(NL_PROXY_SOCKS4A), QByteArray("\4\1\x14\x66\0\0\0\1ala\000192.0.2.1\0", 22));
    EXPECT_EQ(asked(NL_PROXY_HTTP).split('\r')[0], "CONNECT 192.0.2.1:5222 HTTP/1.1");
    EXPECT_TRUE(asked(NL_PROXY_HTTP).contains("Proxy-Authorization: Basic " + QByteArray("ala:tajne").toBase64()));
    EXPECT_TRUE(asked(NL_PROXY_SOCKS5).contains('\2')) << "the method with a login is offered";
    proxy->write("\5\2");
    EXPECT_TRUE(waitFor([&] { return proxy->bytesAvailable() > 0; }));
    EXPECT_EQ(proxy->readAll(), "\1\3ala\5tajne");
    record.proxyUser = record.proxyPassword = nullptr;
    EXPECT_FALSE(asked(NL_PROXY_HTTP).contains("Authorization"));
    EXPECT_TRUE(events.isEmpty()) << "the plugin hears nothing of what it replaced";
}

TEST_F(Sockets, DialNothingWhereTheProxyOrThePortIsUnusable) {
    auto sound = makeRecord<NL_CONNECT_RECORD>();
    sound.host = u"127.0.0.1";
    sound.port = server.serverPort();
    sound.socket = account().socket.c_str();
    sound.serviceName = u"";
    sound.proxyEnabled = 1;
    sound.proxyType = NL_PROXY_SOCKS5;
    sound.proxyHost = u"127.0.0.1";
    sound.proxyPort = server.serverPort();
    const auto refused = [&](void (*spoil)(NL_CONNECT_RECORD&)) {
        auto record = sound;
        spoil(record);
        events.clear();
        entry().reason.clear();
        inPlugin([&] { EXPECT_EQ(call(u"NetLib/ConnectService", wordOf(&record)), 1); });
        EXPECT_TRUE(saw("3 1"));
        EXPECT_EQ(events.size(), 1);
        EXPECT_FALSE(server.waitForNewConnection(0));
        return entry().reason;
    };
    const QString kind = QStringLiteral("Serwer pośredniczący 127.0.0.1: ustawiony jest nieznany rodzaj.");
    EXPECT_EQ(refused([](NL_CONNECT_RECORD& record) { record.proxyType = 0; }), kind);
    EXPECT_EQ(refused([](NL_CONNECT_RECORD& record) { record.proxyType = NL_PROXY_HTTP + 1; }), kind);
    EXPECT_EQ(refused([](NL_CONNECT_RECORD& record) { record.proxyType = ~0U; }), kind);
    EXPECT_EQ(refused([](NL_CONNECT_RECORD& record) { record.proxyPort = 0; }),
              QStringLiteral("Serwer pośredniczący 127.0.0.1: port 0 nie mieści się między 1 a 65535."));
    EXPECT_TRUE(
        refused([](NL_CONNECT_RECORD& record) { record.proxyPort += 65536; }).contains(u"nie mieści się między 1 a"));
    EXPECT_TRUE(refused([](NL_CONNECT_RECORD& record) {
                    record.proxyEnabled = 0;
                    record.port += 65536;
                }).startsWith(QStringLiteral("Nie można połączyć się z serwerem: port ")));
}

TEST_F(Sockets, AskOnceAboutACertificateThoughTheConnectionsChange) {
    const QString name = wideText(account().socket.c_str());
    net::BadCertificate bad{QStringLiteral("localhost"), QStringLiteral("It is bad."), QByteArray(32, '\x5a'), {}, {}};
    QStringList refused;
    QObject::connect(&core->sockets, &SocketBridge::certificateRefused, core.get(),
                     [&](const QString&, const CertificateProblem& problem) { refused.append(problem.fingerprint); });
    const auto pins = [&] { return entry().settings->text(QString::fromUtf16(setting::pinnedCertificate)); };
    const auto answer = [&](BoxButton button) {
        ASSERT_EQ(core->boxes.open().size(), 1);
        EXPECT_TRUE(core->boxes.answer(core->boxes.open().first().number, button));
    };
    // The machine slept while the question stood open, and the plugin has dialled again.
    core->sockets.certificateQuestion({name, 1}, bad);
    core->sockets.certificateQuestion({name, 2}, bad);
    answer(BoxButton::yes);
    EXPECT_EQ(pins(), net::fingerprintText(bad.fingerprint)) << "though neither connection is there any more";
    bad.fingerprint = QByteArray(32, '\x17');
    core->sockets.certificateQuestion({name, 3}, bad);
    answer(BoxButton::no);
    EXPECT_EQ(refused, QStringList(net::fingerprintText(bad.fingerprint)));
    EXPECT_FALSE(pins().contains(refused[0]));
    core->sockets.certificateQuestion({name, 4}, bad);
    answer(BoxButton::no);
    EXPECT_EQ(refused.size(), 2) << "what is answered may be asked again";
}

TEST_F(Sockets, GiveTheHostsOwnProxyFromItsFile) {
    auto record = makeRecord<NL_PROXY_DEFAULTS>();
    EXPECT_EQ(call(u"OKU/NL/GetDefaultSettings", wordOf(&record)), 1);
    EXPECT_EQ(record.enabled, 0U);
    QFile file(directory.filePath(QStringLiteral("oku.config")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "OKU/Proxy/Enable = 1\nOKU/Proxy/Host = proxy.example.org\nOKU/Proxy/Port = 8080\nOKU/Proxy/Type = 4\n"
        "OKU/Proxy/User = \"ala\"\n");
    file.close();
    EXPECT_EQ(call(u"OKU/NL/GetDefaultSettings", wordOf(&record)), 1);
    EXPECT_EQ(record.enabled, 1U);
    EXPECT_EQ(record.port, 8080U);
    EXPECT_EQ(record.type, 4U);
    EXPECT_EQ(record.auth, 1U);
    EXPECT_EQ(std::u16string(record.host), u"proxy.example.org");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("OKU/Proxy/Enable = -1\nOKU/Proxy/Port = 4294967297\nOKU/Proxy/Type = 4294967297\n");
    file.close();
    EXPECT_EQ(call(u"OKU/NL/GetDefaultSettings", wordOf(&record)), 1);
    EXPECT_EQ(record.enabled, 1U) << "any number but zero";
    EXPECT_GT(record.port, 65535U) << "a number that does not fit stays one that cannot be used";
    EXPECT_GT(record.type, 4U);
}

TEST_F(Sockets, DialPastNoProxyWhoseSettingsCannotBeBelieved) {
    QFile file(directory.filePath(QStringLiteral("oku.config")));
    const auto write = [&file](const char* text) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        file.close();
    };
    const auto given = [this] {
        auto record = makeRecord<NL_PROXY_DEFAULTS>();
        EXPECT_EQ(call(u"OKU/NL/GetDefaultSettings", wordOf(&record)), 1);
        return std::pair(record.enabled, record.type);
    };
    const std::pair none(1U, 0U);
    write("OKU/Proxy/Enable = 1\nOKU/Proxy/Type = 4\n");
    ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::WriteOther));
    EXPECT_EQ(given(), none) << "somebody else could have written it";
    EXPECT_EQ(given(), none);
    EXPECT_EQ(notices.size(), 1) << "told once";
    ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
    EXPECT_EQ(given(), std::pair(1U, 4U));
    write("OKU/Proxy/Enable = 1\nOKU/Proxy/Ty");
    EXPECT_EQ(given(), none) << "half of it may be missing";
    EXPECT_EQ(notices.size(), 2) << "a new fault is told anew";
    EXPECT_TRUE(file.exists()) << "it was written by hand, and stays as it is";
    inPlugin([this] {
        auto record = makeRecord<NL_CONNECT_RECORD>();
        record.host = u"127.0.0.1";
        record.port = server.serverPort();
        record.socket = account().socket.c_str();
        record.serviceName = u"";
        record.proxyEnabled = 1;
        EXPECT_EQ(call(u"NetLib/ConnectService", wordOf(&record)), 1);
    });
    ASSERT_TRUE(saw("3 1"));
    EXPECT_FALSE(server.hasPendingConnections());
}

}  // namespace
}  // namespace oku::test
