// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include "tests/messenger/core/transfer_stage.h"

#include "messenger/core/accounts_on_host.h"
#include "messenger/core/values/setting_keys.h"

namespace oku::test {
namespace {

class FilePublisherTest : public TransferStage {
protected:
    void SetUp() override {
        TransferStage::SetUp();
        file = folder("wysyłany.bin");
        QDir().mkpath(folder());
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write("zawartość");
    }
    void set(const char16_t* key, const QVariant& value) { entry(whose).settings->set(QString::fromUtf16(key), value); }
    void allow() {
        set(setting::publishFiles, 1);
        set(setting::publishAddress, QStringLiteral("127.0.0.1"));
    }
    OKU_WORD sending(const char16_t* to = u"bob@example.org") {
        OKU_WORD window = 0;
        core->queue.post(entry(whose).key, [&] {
            core->transfers.expect({wideText(to), Direction::out, QStringLiteral("wysyłany.bin"), file, 10});
            window = openWindow(to, whose);
        });
        return window;
    }
    /// The plugin has a file published, after it wrote to the transfer's window; gives its address.
    QString prepare(const QString& published, OKU_WORD window = 0) {
        auto result = makeRecord<OK7_PREPARE_RESULT>();
        result.path = widePointer(published);
        auto record = makeRecord<OK7_PREPARE_RECORD>();
        record.result = &result;
        record.stateData = record.progressData = wordOf(this);
        record.stateCallback = [](OKU_WORD state, OKU_WORD, OKU_WORD context) -> OKU_WORD {
            auto& self = *reinterpret_cast<FilePublisherTest*>(context);
            EXPECT_TRUE(self.core->queue.busy());
            EXPECT_FALSE(self.inside) << "not from inside the call";
            self.trace.append(QStringLiteral("state %1").arg(state));
            if (self.onState) self.onState(state);
            return 0;
        };
        record.progressCallback = [](OKU_WORD position, OKU_WORD total, OKU_WORD context) -> OKU_WORD {
            auto& self = *reinterpret_cast<FilePublisherTest*>(context);
            EXPECT_TRUE(self.core->queue.busy());
            self.trace.append(QStringLiteral("%1 of %2").arg(position).arg(total));
            return 0;
        };
        core->queue.post(entry(whose).key, [&] {
            inside = true;
            if (window != 0) writeStatus(window, u"Sesja przyjęta");
            call(u"OK7/PrepareFile", wordOf(&record));
            inside = false;
        });
        return wideText(result.url);
    }
    /// Listens on a port that the system gives nobody by itself, so that it stays free when it is given back. The
    /// servers of other tests, which reserve theirs from 20000 on, do not meet it there.
    static bool listenAside(QTcpServer& server, const QHostAddress& address) {
        constexpr int first = 10'000;
        constexpr int many = 10'000;
        const int begin = static_cast<int>(QCoreApplication::applicationPid() * 37 % many);
        for (int step = 0; step < many; ++step) {
            if (server.listen(address, static_cast<quint16>(first + (begin + step) % many))) return true;
        }
        return false;
    }
    bool enabled() {
        bool result = false;
        inPlugin([&] { result = call(u"OK7/IsEnabled") != 0; });
        return result;
    }
    static QByteArray fetch(const QUrl& url) {
        QTcpSocket socket;
        socket.connectToHost(url.host(), static_cast<quint16>(url.port()));
        socket.write("GET " + url.path().toLatin1() + " HTTP/1.1\r\n\r\n");
        QByteArray all;
        waitFor([&] {
            all += socket.readAll();
            return socket.state() == QTcpSocket::UnconnectedState;
        });
        return all.mid(all.indexOf("\r\n\r\n") + 4);
    }

    QString file;
    int whose = 0;  ///< the account's number
    QStringList trace;
    bool inside = false;
    std::function<void(OKU_WORD)> onState;
};

TEST_F(FilePublisherTest, PublishesNothingUnlessTheUserWantsIt) {
    EXPECT_FALSE(enabled());
    sending();
    EXPECT_EQ(prepare(file), QString()) << "a receiver may ask for it all the same";
    EXPECT_EQ(trace, QStringList{QStringLiteral("state 0")});
    EXPECT_EQ(notices.size(), 1);
}

TEST_F(FilePublisherTest, PublishesAFileThatIsSent) {
    allow();
    EXPECT_TRUE(enabled());
    const OKU_WORD window = sending();
    const QUrl url(prepare(file));
    EXPECT_EQ(url.scheme(), QStringLiteral("http"));
    EXPECT_EQ(url.host(), QStringLiteral("127.0.0.1"));
    EXPECT_EQ(url.path().size(), 33);
    EXPECT_EQ(fetch(url), QByteArray("zawartość"));
    ASSERT_TRUE(waitFor([&] { return trace.contains(QStringLiteral("state 1")); }));
    EXPECT_EQ(trace.first(), QStringLiteral("state 2"));
    EXPECT_EQ(trace.at(trace.size() - 2), QStringLiteral("11 of 11"));
    EXPECT_EQ(trace.last(), QStringLiteral("state 1"));
    drop(window);
}

TEST_F(FilePublisherTest, KnowsWhoseItIsWhereSeveralAreSentOneFile) {
    allow();
    const OKU_WORD bobs = sending();
    const OKU_WORD carols = sending(u"carol@example.org");
    const QUrl forCarol(prepare(file, carols));
    const QUrl forBob(prepare(file, bobs));
    drop(carols);
    EXPECT_EQ(fetch(forCarol), QByteArray());
    EXPECT_EQ(fetch(forBob), QByteArray("zawartość"));
    ASSERT_TRUE(waitFor([&] { return trace.contains(QStringLiteral("state 1")); }));
}

TEST_F(FilePublisherTest, WithdrawsWhatItServesWhenThatIsSwitchedOff) {
    allow();
    const OKU_WORD window = sending();
    const QUrl url(prepare(file, window));
    core->publisher.reconsider();
    EXPECT_TRUE(trace.isEmpty()) << "it is still allowed";
    set(setting::publishFiles, 0);
    inPlugin([&] {
        inside = true;
        core->publisher.reconsider();
        inside = false;
    });
    EXPECT_EQ(trace, QStringList{QStringLiteral("state 0")});
    EXPECT_EQ(fetch(url), QByteArray());
    core->publisher.reconsider();
    EXPECT_EQ(trace.size(), 1) << "once";
    drop(window);
}

TEST_F(FilePublisherTest, HearsWhenTheUserSwitchesItOff) {
    allow();
    const OKU_WORD window = sending();
    const QUrl url(prepare(file, window));
    const auto accounts = accountsOnHost(*core);
    EXPECT_EQ(accounts->setSetting(entry().jid(), QString::fromUtf16(setting::publishFiles), 0), QString());
    EXPECT_EQ(trace, QStringList{QStringLiteral("state 0")});
    EXPECT_EQ(fetch(url), QByteArray());
    drop(window);
}

TEST_F(FilePublisherTest, PublishesNothingTwiceForOneWindow) {
    allow();
    const OKU_WORD window = sending();
    const QUrl url(prepare(file, window));
    EXPECT_EQ(prepare(file, window), QString());
    EXPECT_EQ(fetch(url), QByteArray("zawartość"));
}

TEST_F(FilePublisherTest, PublishesNothingElse) {
    allow();
    sending();
    EXPECT_EQ(prepare(folder("inny.bin")), QString());
    EXPECT_EQ(prepare(QStringLiteral("/etc/passwd")), QString());
    EXPECT_EQ(trace, (QStringList{QStringLiteral("state 0"), QStringLiteral("state 0")}));
}

TEST_F(FilePublisherTest, NeedsAnAddress) {
    set(setting::publishFiles, 1);
    sending();
    EXPECT_EQ(prepare(file), QString()) << "there is no connection, and no address was chosen";
    set(setting::publishAddress, QStringLiteral("to nie adres"));
    EXPECT_EQ(prepare(file), QString());
}

TEST_F(FilePublisherTest, ListensOnlyWhereItPublishesSomething) {
    QTcpServer probe;
    ASSERT_TRUE(probe.listen(QHostAddress::Any, 0));
    const quint16 port = probe.serverPort();
    set(setting::publishFiles, 1);
    set(setting::publishPort, port);
    sending();
    EXPECT_EQ(prepare(file), QString()) << "there is no address";
    ASSERT_EQ(notices.size(), 1);
    EXPECT_FALSE(notices[0].contains(QString::number(port))) << "it did not try: " << notices[0].toStdString();
}

TEST_F(FilePublisherTest, ListensOnItsAddressAlone) {
    allow();
    sending();
    const QUrl url(prepare(file));
    ASSERT_EQ(url.host(), QStringLiteral("127.0.0.1"));
    QTcpSocket elsewhere;
    bool connected = false;
    bool refused = false;
    QObject::connect(&elsewhere, &QTcpSocket::connected, &elsewhere, [&] { connected = true; });
    QObject::connect(&elsewhere, &QTcpSocket::errorOccurred, &elsewhere,
                     [&](QTcpSocket::SocketError error) { refused = error == QTcpSocket::ConnectionRefusedError; });
    elsewhere.connectToHost(QHostAddress(QStringLiteral("127.0.0.2")), static_cast<quint16>(url.port()));
    EXPECT_TRUE(waitFor([&] { return connected || refused; }));
    EXPECT_FALSE(connected);
    EXPECT_EQ(fetch(url), QByteArray("zawartość"));
}

TEST_F(FilePublisherTest, TellsAnAddressThatLeadsHere) {
    allow();
    set(setting::publishAddress, QStringLiteral("192.0.2.7"));
    sending();
    const QUrl url(prepare(file));
    EXPECT_EQ(url.host(), QStringLiteral("192.0.2.7"));
    QUrl here = url;
    here.setHost(QStringLiteral("127.0.0.1"));
    EXPECT_EQ(fetch(here), QByteArray("zawartość"));
}

TEST_F(FilePublisherTest, ListensOnThePortThatWasChosen) {
    QTcpServer probe;
    ASSERT_TRUE(listenAside(probe, QHostAddress::LocalHost));
    const quint16 port = probe.serverPort();
    allow();
    set(setting::publishPort, port);
    const OKU_WORD first = sending();
    EXPECT_EQ(prepare(file), QString()) << "somebody else has it";
    drop(first);
    probe.close();
    sending();
    EXPECT_EQ(QUrl(prepare(file)).port(), port);
}

class TwoFilePublishersTest : public FilePublisherTest {
protected:
    void SetUp() override {
        writeAccount(QStringLiteral("b"), QStringLiteral("bea@example.org"));
        FilePublisherTest::SetUp();
    }
};

TEST_F(TwoFilePublishersTest, OnOnePortAreToldWhoHasIt) {
    QTcpServer probe;
    ASSERT_TRUE(listenAside(probe, QHostAddress::Any));
    const quint16 port = probe.serverPort();
    allow();
    set(setting::publishAddress, QStringLiteral("192.0.2.7"));
    set(setting::publishPort, port);
    const OKU_WORD bobs = sending();
    EXPECT_EQ(prepare(file, bobs), QString());
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices[0].contains(QString::number(port))) << notices[0].toStdString();
    EXPECT_FALSE(notices[0].contains(QStringLiteral("@"))) << "somebody else has it";
    probe.close();
    EXPECT_EQ(QUrl(prepare(file, bobs)).port(), port);

    whose = 1;
    allow();
    set(setting::publishPort, port);
    const OKU_WORD carols = sending(u"carol@example.org");
    EXPECT_EQ(prepare(file, carols), QString());
    ASSERT_EQ(notices.size(), 2);
    EXPECT_TRUE(notices[1].contains(QString::number(port))) << notices[1].toStdString();
    EXPECT_TRUE(notices[1].contains(QStringLiteral("alice@example.org"))) << notices[1].toStdString();
    EXPECT_TRUE(notices[1].contains(QStringLiteral("OKU/PublishPort")));

    drop(bobs);
    EXPECT_EQ(QUrl(prepare(file, carols)).port(), port) << "it is free";
}

TEST_F(TwoFilePublishersTest, ShareOneAddressAndPort) {
    QTcpServer probe;
    ASSERT_TRUE(listenAside(probe, QHostAddress::LocalHost));
    const quint16 port = probe.serverPort();
    probe.close();
    QList<QUrl> urls;
    for (whose = 0; whose < 2; ++whose) {
        allow();
        set(setting::publishPort, port);
        urls.append(QUrl(prepare(file, sending())));
    }
    EXPECT_TRUE(notices.isEmpty());
    for (const QUrl& url : urls) EXPECT_EQ(fetch(url), QByteArray("zawartość"));
}

TEST_F(FilePublisherTest, StopsWithItsWindow) {
    allow();
    const OKU_WORD window = sending();
    const QUrl url(prepare(file));
    drop(window);
    EXPECT_EQ(fetch(url), QByteArray());
    EXPECT_TRUE(trace.isEmpty());
}

TEST_F(FilePublisherTest, StopsWhenThePluginDropsTheWindowFromItsCallback) {
    allow();
    const OKU_WORD window = sending();
    onState = [&](OKU_WORD state) {
        if (state == OK7_STATE_SENT) call(u"OKU/FTDropWindow", window);
    };
    EXPECT_EQ(fetch(QUrl(prepare(file))), QByteArray("zawartość"));
    ASSERT_TRUE(waitFor([&] { return trace.contains(QStringLiteral("state 1")); }));
    EXPECT_TRUE(core->transfers.sending(entry(), file).isEmpty());
}

TEST_F(FilePublisherTest, TellsOnlyTheNewestPositionWhileThePluginIsHeld) {
    QFile big(file);
    ASSERT_TRUE(big.resize(8 << 20));
    allow();
    sending();
    const QUrl url(prepare(file));
    QTimer::singleShot(0, face.get(), [&] {
        EXPECT_EQ(fetch(url).size(), 8 << 20);
        EXPECT_TRUE(trace.isEmpty());
        face->answerOffer(face->openOffers().first().number, OfferReply::ignore);
    });
    inPlugin([&] { ask(QStringLiteral("inny.txt")); });
    EXPECT_EQ(trace, (QStringList{QStringLiteral("state 2"), QStringLiteral("8388608 of 8388608"),
                                  QStringLiteral("state 1")}));
}

TEST_F(FilePublisherTest, TellsAPluginThatHasGoneNothing) {
    allow();
    sending();
    const QUrl url(prepare(file));
    core->queue.post({}, [&] { core->unload(); });
    EXPECT_EQ(fetch(url), QByteArray());
    EXPECT_TRUE(trace.isEmpty());
    core->queue.post({}, [&] { core->load(); });
}

TEST_F(FilePublisherTest, BearsNoRecord) {
    inPlugin([&] { EXPECT_EQ(call(u"OK7/PrepareFile", 0), 0); });
    auto record = makeRecord<OK7_PREPARE_RECORD>();
    inPlugin([&] { EXPECT_EQ(call(u"OK7/PrepareFile", wordOf(&record)), 0); });
    EXPECT_EQ(call(u"OK7/IsEnabled"), 0);
}

}  // namespace
}  // namespace oku::test
