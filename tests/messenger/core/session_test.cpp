// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/core/stage.h"

#include "host/oku/message.h"
#include "host/oku/netlib.h"
#include "messenger/core/boundary/wide.h"
#include "tests/messenger/core/full_disk.h"

namespace oku::test {
namespace {

class SessionsOfAccounts : public Stage {
protected:
    SessionsOfAccounts() {
        writeAccount({}, QStringLiteral("alice@example.org/home"));
        auto given = options();
        given.typingSeconds = 1;
        start(given);
        QObject::connect(&core->arrivals, &Arrivals::received, core.get(),
                         [this](const QString&, const Message& message) { received.append(message); });
        const auto note = [this](const char* word) {
            return [this, word](const QString&, const Message& message) {
                trace.append(QLatin1String(word) + u' ' + message.body + u' ' + deliveryStateWord(message.state));
            };
        };
        QObject::connect(&core->delivery, &Delivery::sent, core.get(), note("sent"));
        QObject::connect(&core->delivery, &Delivery::queued, core.get(), note("queued"));
        QObject::connect(&core->delivery, &Delivery::stateChanged, core.get(), note("changed"));
    }

    qint64 send(const char* body) {
        Message message;
        message.account = QStringLiteral("alice@example.org");
        message.contact = QStringLiteral("bob@example.org");
        message.direction = Direction::out;
        message.body = QString::fromLatin1(body);
        message.time = QDateTime::currentDateTime();
        return core->delivery.send(entry(), message);
    }

    /// What was told until the end of the event loop's turn.
    QStringList& told() {
        core->history.flush();
        return trace;
    }
    DeliveryState stateOf(qint64 number) { return core->history.message(number)->state; }
    void cut() {
        inPlugin([&] { account().flags = 0; });
    }

    /// Waits for the request that confirms messages, and answers it.
    bool confirm() {
        const auto isPing = [](const std::string& line) { return line.find("urn:xmpp:ping") != std::string::npos; };
        auto& log = plugin().log;
        if (!waitFor([&] { return std::any_of(log.begin(), log.end(), isPing); })) return false;
        const std::string sent = *std::find_if(log.begin(), log.end(), isPing);
        const std::size_t at = sent.find("id=\"") + 4;
        const std::string id = sent.substr(at, sent.find('"', at) - at);
        inPlugin([&] { offerIncoming("<iq type='result' from='example.org' id='" + id + "'/>"); });
        std::erase_if(log, isPing);
        return true;
    }

    QList<Message> received;
    QStringList trace;
};

TEST_F(SessionsOfAccounts, TellHowFarAConnectionIs) {
    QStringList states;
    QObject::connect(&core->sessions, &Sessions::connectionChanged, core.get(),
                     [&](const QString& jid, ConnectionState state, const QString&) {
                         EXPECT_EQ(jid, QStringLiteral("alice@example.org"));
                         states.append(connectionStateWord(state));
                     });
    inPlugin([&] { account().flags = OKU_FLAG_CONNECTING; });
    inPlugin([&] { account().flags = OKU_FLAG_CONNECTING | OKU_FLAG_CONNECTED; });
    inPlugin([&] { account().flags |= OKU_FLAG_ENCRYPTION_ACTIVATED; });
    inPlugin([&] { account().flags = OKU_FLAG_CONNECTED | OKU_FLAG_ENCRYPTION_ACTIVATED | OKU_FLAG_AUTHORIZED; });
    inPlugin([&] { answerRoster({}); });
    cut();
    EXPECT_EQ(states.join(u' '), QStringLiteral("connecting connected encrypted authorized online offline"));
}

TEST_F(SessionsOfAccounts, KeepAChoiceMadeDuringALogin) {
    inPlugin([&] { account().flags = OKU_FLAG_CONNECTING | OKU_FLAG_CONNECTED; });
    core->choices.set(entry(), Status::away, QStringLiteral("a"));
    core->choices.set(entry(), Status::dnd, QStringLiteral("b"));
    EXPECT_TRUE(plugin().log.empty()) << "the plugin would drop the attempt";
    inPlugin([&] { account().flags = OKU_FLAG_CONNECTED | OKU_FLAG_AUTHORIZED; });
    core->choices.set(entry(), Status::xa, QStringLiteral("c"));
    EXPECT_TRUE(plugin().log.empty()) << "the roster is not complete";
    inPlugin([&] { answerRoster({}); });
    EXPECT_EQ(plugin().log, std::vector<std::string>{"status 5 c"});
    core->choices.set(entry(), Status::online, {});
    EXPECT_EQ(plugin().log.back(), "status 1 ");
}

TEST_F(SessionsOfAccounts, GoOfflineAtOnceAlsoDuringALogin) {
    inPlugin([&] { account().flags = OKU_FLAG_CONNECTING | OKU_FLAG_CONNECTED; });
    core->choices.set(entry(), Status::away, QStringLiteral("a"));
    core->choices.set(entry(), Status::offline, {});
    EXPECT_EQ(plugin().log, std::vector<std::string>{"status 7 "});
    logIn();
    EXPECT_EQ(plugin().log.size(), 1U) << "the choice before it is forgotten";
}

TEST_F(SessionsOfAccounts, ForgetAChoiceMadeDuringALoginWhereALaterOneWaitedWithIt) {
    inPlugin([&] { account().flags = OKU_FLAG_CONNECTING | OKU_FLAG_CONNECTED; });
    inPlugin([&] {
        core->choices.set(entry(), Status::away, QStringLiteral("a"));
        core->choices.set(entry(), Status::offline, {});
    });
    logIn();
    EXPECT_EQ(plugin().log, std::vector<std::string>{"status 7 "});
}

TEST_F(SessionsOfAccounts, ForgetAChoiceMadeDuringALoginWhereALaterOneWaitedForItsEnd) {
    inPlugin([&] { account().flags = OKU_FLAG_CONNECTED | OKU_FLAG_AUTHORIZED; });
    inPlugin([&] {
        core->choices.set(entry(), Status::away, QStringLiteral("a"));
        core->queue.post({}, [&] { answerRoster({}); });
        core->choices.set(entry(), Status::xa, QStringLiteral("c"));
    });
    EXPECT_EQ(plugin().log, std::vector<std::string>{"status 5 c"});
}

TEST_F(SessionsOfAccounts, WriteAMessageDownBeforeTheyShowIt) {
    logIn();
    QObject::connect(&core->arrivals, &Arrivals::received, core.get(), [&](const QString&, const Message& message) {
        const auto kept = core->history.message(message.number);
        ASSERT_TRUE(kept);
        EXPECT_EQ(kept->body, message.body);
    });
    inPlugin([&] { receiveMessage(u"bob@example.org", u"Zażółć 😀\nx"); });
    ASSERT_EQ(received.size(), 1);
    EXPECT_EQ(received[0].contact, QStringLiteral("bob@example.org"));
    EXPECT_EQ(received[0].resource, QStringLiteral("komp"));
    EXPECT_EQ(received[0].kind, MessageKind::chat);
    EXPECT_FALSE(received[0].delayed.isValid());
}

TEST_F(SessionsOfAccounts, TellWhenALateMessageWasWritten) {
    logIn();
    inPlugin([&] {
        offerIncoming(
            "<message from='bob@example.org/komp'><body/></message>"
            "<message from='bob@example.org/komp'><composing/></message>"
            "<message from='bob@example.org/komp'><body>1</body>"
            "<delay xmlns='urn:xmpp:delay' stamp='2026-11-20T16:09:20.5Z'/></message>"
            "<message from='bob@example.org/komp'><body>2</body>"
            "<x xmlns='jabber:x:delay' stamp='20261120T16:09:21'/></message>"
            "<message from='bob@example.org/komp'><body>3</body></message>");
        receiveMessage(u"bob@example.org", u"1");
        receiveMessage(u"bob@example.org", u"2", 1);
        receiveMessage(u"bob@example.org", u"3", 516);
    });
    ASSERT_EQ(received.size(), 3);
    EXPECT_EQ(received[0].delayed.toUTC().toString(Qt::ISODateWithMs), QStringLiteral("2026-11-20T16:09:20.500Z"));
    EXPECT_EQ(received[1].delayed.toUTC().toString(Qt::ISODate), QStringLiteral("2026-11-20T16:09:21Z"));
    EXPECT_EQ(received[1].kind, MessageKind::normal);
    EXPECT_FALSE(received[2].delayed.isValid());
    EXPECT_TRUE(received[2].failed);
    EXPECT_LT(received[0].time.secsTo(QDateTime::currentDateTime()), 600) << "the time of its arrival";
}

TEST_F(SessionsOfAccounts, SendWhatWasWrittenOfflineAfterTheNextLogin) {
    const qint64 one = send("one");
    send("two");
    EXPECT_EQ(told(), (QStringList{QStringLiteral("queued one queued"), QStringLiteral("queued two queued")}));
    EXPECT_TRUE(plugin().log.empty());
    told().clear();
    logIn();
    EXPECT_EQ(told(), (QStringList{QStringLiteral("sent one sent"), QStringLiteral("sent two sent")}));
    EXPECT_EQ(plugin().log,
              (std::vector<std::string>{"message bob@example.org one 6", "message bob@example.org two 6"}));
    EXPECT_EQ(stateOf(one), DeliveryState::sent);
    cut();
    logIn();
    EXPECT_EQ(plugin().log.size(), 2U) << "once is enough";
}

TEST_F(SessionsOfAccounts, BelieveAConflictOnlyOfAServerThatIsKnown) {
    const auto believed = [this](LineState line) {
        entry().line = std::move(line);
        emit core->watch.streamError(&entry(), QStringLiteral("conflict"), {});
        return entry().reason.contains(QStringLiteral("zasobem"));
    };
    EXPECT_FALSE(believed({})) << "anybody on the line could say it";
    EXPECT_EQ(entry().reason, QStringLiteral("conflict"));
    EXPECT_TRUE(believed({.encrypted = true}));
    EXPECT_TRUE(believed({.bound = true}));
}

TEST_F(SessionsOfAccounts, SignOffBeforeThePluginIsLoadedAnew) {
    logIn();
    plugin().log.clear();
    core->reload.addAccount(QStringLiteral("new@example.org"), QStringLiteral("new"));
    EXPECT_EQ(plugin().log, std::vector<std::string>{"status 7 "});
    EXPECT_EQ(plugin().loads, 1) << "the server has not closed yet";
    core->reload.setStatus(entry(), Status::away, QStringLiteral("meanwhile"));
    EXPECT_EQ(plugin().log.size(), 1U) << "kept for later";
    emit core->sockets.ended(&entry(), net::End{}, true);
    for (int turn = 0; turn < 10 && plugin().loads == 1; ++turn) QCoreApplication::processEvents();
    EXPECT_EQ(plugin().loads, 2) << "at once then";
    EXPECT_TRUE(waitFor([&] { return plugin().log.back() == "status 4 meanwhile"; }));
    EXPECT_EQ(plugin().log, (std::vector<std::string>{"status 7 ", "unload", "status 4 meanwhile"}));
}

TEST_F(SessionsOfAccounts, TakeAStatusForANewOneBeforeItIsLoaded) {
    logIn();
    plugin().log.clear();
    core->reload.addAccount(QStringLiteral("new@example.org"), entry().key);
    EXPECT_FALSE(core->reload.setStatusOfNew(QStringLiteral("nobody@example.org"), Status::dnd, {}));
    EXPECT_TRUE(
        core->reload.setStatusOfNew(QStringLiteral("new@example.org/home"), Status::away, QStringLiteral("soon")));
    emit core->sockets.ended(&entry(), net::End{}, true);
    EXPECT_TRUE(waitFor([&] { return plugin().log.back() == "status 4 soon"; }));
    EXPECT_FALSE(core->reload.setStatusOfNew(QStringLiteral("new@example.org"), Status::dnd, {})) << "it is there now";
}

TEST_F(SessionsOfAccounts, WaitForAServerThatDoesNotCloseOnlyAWhile) {
    logIn();
    core->reload.addAccount(QStringLiteral("new@example.org"), QStringLiteral("new"));
    core->reload.addAccount(QStringLiteral("another@example.org"), QStringLiteral("another"));
    EXPECT_TRUE(waitFor([&] { return plugin().loads == 2; }));
    EXPECT_TRUE(waitFor([&] { return plugin().log.back() == "status 1 "; })) << "as it was before";
}

TEST_F(SessionsOfAccounts, KeepWhatIsWrittenOfflineOverARestart) {
    send("later");
    restart();
    logIn();
    EXPECT_TRUE(logged("message bob@example.org later 6"));
}

TEST_F(SessionsOfAccounts, SendWhatCouldNotBeReadAtALoginAsSoonAsItCan) {
    send("later");
    restart();
    FullDisk full;
    logIn();
    full.end();
    EXPECT_EQ(notices.filter(QStringLiteral("Nie można otworzyć archiwum")).size(), 1);
    EXPECT_FALSE(logged("message bob@example.org later 6"));
    EXPECT_TRUE(waitFor([this] { return logged("message bob@example.org later 6"); })) << "by itself";
}

TEST_F(SessionsOfAccounts, SendNothingBeforeWhatCouldNotBeReadAtALogin) {
    send("one");
    send("two");
    restart();
    FullDisk full;
    logIn();
    full.end();
    ASSERT_FALSE(logged("message bob@example.org one 6"));
    send("three");
    auto handed = plugin().log;
    std::erase_if(handed, [](const std::string& line) { return !line.starts_with("message "); });
    EXPECT_EQ(handed, (std::vector<std::string>{"message bob@example.org one 6", "message bob@example.org two 6",
                                                "message bob@example.org three 6"}));
}

TEST_F(SessionsOfAccounts, HandNothingOverTwiceThatCouldNotBeReadAtALogin) {
    send("one");
    restart();
    FullDisk full;
    logIn();
    full.end();
    int queued = 0;
    QObject::connect(&core->delivery, &Delivery::queued, core.get(), [&] { ++queued; });
    plugin().sendFails = true;
    send("two");
    EXPECT_TRUE(waitFor([&] { return queued >= 2; }));
    pass(1);
    EXPECT_EQ(queued, 2) << "once for each";
}

TEST_F(SessionsOfAccounts, SendWhatCouldNotBeReadInItsTurnAsSoonAsItCan) {
    logIn();
    send("one");
    told().clear();
    {
        const NoNewFiles none;
        inPlugin([this] {
            send("two");
            core->history.close();
        });
    }
    EXPECT_FALSE(logged("message bob@example.org two 6"));
    EXPECT_EQ(told(), QStringList(QStringLiteral("queued two queued")));
    EXPECT_TRUE(waitFor([this] { return logged("message bob@example.org two 6"); })) << "by itself";
}

TEST_F(SessionsOfAccounts, KeepAMessageThatThePluginDidNotTake) {
    logIn();
    plugin().sendFails = true;
    const qint64 number = send("x");
    EXPECT_EQ(stateOf(number), DeliveryState::queued);
    plugin().sendFails = false;
    cut();
    logIn();
    EXPECT_EQ(stateOf(number), DeliveryState::sent);
}

TEST_F(SessionsOfAccounts, KeepAMessageThatAListenerTookAway) {
    logIn();
    told().clear();
    entry().line.encrypted = false;
    const qint64 number = send("x");
    EXPECT_EQ(stateOf(number), DeliveryState::queued);
    EXPECT_EQ(told(), QStringList(QStringLiteral("queued x queued")));
    cut();
    entry().line = {};
    logIn();
    EXPECT_EQ(stateOf(number), DeliveryState::sent);
}

TEST_F(SessionsOfAccounts, MarkWhatWasHandedToAConnectionThatDied) {
    logIn();
    const qint64 first = send("first");
    ASSERT_TRUE(confirm());
    const qint64 second = send("second");
    told().clear();
    cut();
    inPlugin([&] { account().flags = OKU_FLAG_CONNECTING; });
    EXPECT_EQ(told(), QStringList(QStringLiteral("changed second unconfirmed")));
    EXPECT_EQ(stateOf(first), DeliveryState::sent);
    EXPECT_EQ(stateOf(second), DeliveryState::unconfirmed);
    logIn();
    EXPECT_EQ(plugin().log.back(), "message bob@example.org second 6");
    EXPECT_EQ(stateOf(second), DeliveryState::unconfirmed) << "nothing is sent twice by itself";
    core->delivery.resend(entry(), *core->history.message(second));
    EXPECT_EQ(stateOf(second), DeliveryState::sent);
}

TEST_F(SessionsOfAccounts, MarkWhatWasHandedOverWhenTheProgramDied) {
    logIn();
    const qint64 number = send("last words");
    EXPECT_EQ(stateOf(number), DeliveryState::sent);
    restart();
    EXPECT_EQ(stateOf(number), DeliveryState::unconfirmed);
}

TEST_F(SessionsOfAccounts, MarkAMessageThatCameBack) {
    logIn();
    const qint64 number = send("x");
    inPlugin([&] { offerIncoming("<message type='error' id='m-x' from='bob@example.org'><error/></message>"); });
    EXPECT_EQ(stateOf(number), DeliveryState::failed);
    EXPECT_EQ(told().last(), QStringLiteral("changed x failed"));
}

TEST_F(SessionsOfAccounts, TakeBackAMessageOnlyFromWhereItWent) {
    logIn();
    int count = 0;
    const auto comesBack = [&](const char* from) {
        const std::string body = std::to_string(++count);
        const qint64 number = send(body.c_str());
        const std::string sender = *from ? " from='" + std::string(from) + "'" : std::string();
        inPlugin([&] { offerIncoming("<message type='error' id='m-" + body + "'" + sender + "><error/></message>"); });
        return stateOf(number) == DeliveryState::failed;
    };
    for (const char* from : {"eve@example.net", "eve@example.org/x", "example.net", "bob@example.net"})
        EXPECT_FALSE(comesBack(from)) << from;
    for (const char* from : {"bob@example.org", "Bob@example.org/komp", "example.org", "alice@example.org", ""})
        EXPECT_TRUE(comesBack(from)) << from;
}

TEST_F(SessionsOfAccounts, ForgetTheOldestOfManyMessagesThatMayComeBack) {
    logIn();
    const qint64 oldest = send("z");
    qint64 second = 0;
    for (int count = 0; count < 1000; ++count) {
        const qint64 number = send(QByteArray::number(count).constData());
        if (count == 0) second = number;
    }
    const auto comesBack = [&](const char* id) {
        inPlugin([&] {
            offerIncoming("<message type='error' id='" + std::string(id) +
                          "' from='bob@example.org'><error/></message>");
        });
    };
    comesBack("m-z");
    comesBack("m-0");
    EXPECT_EQ(stateOf(oldest), DeliveryState::sent);
    EXPECT_EQ(stateOf(second), DeliveryState::failed);
}

TEST_F(SessionsOfAccounts, BringMessagesFromTheLogIntoTheDatabaseSoon) {
    send("needle");
    EXPECT_TRUE(waitFor([&] {
        QFile file(directory.filePath(QStringLiteral("history.sqlite")));
        return file.open(QIODevice::ReadOnly) && file.readAll().contains("needle");
    })) << "only then do they outlast a loss of power";
}

TEST_F(SessionsOfAccounts, LetATypingNoticeGoAway) {
    QStringList typing;
    QObject::connect(&core->typing, &TypingNotices::changed, core.get(),
                     [&](const QString&, const QString& jid, bool on) {
                         typing.append(jid + (on ? QStringLiteral(" on") : QStringLiteral(" off")));
                     });
    logIn();
    auto contact = makeRecord<OKU_CONTACT_RECORD>();
    contact.id = u"bob@example.org";
    contact.netId = account().netId;
    const auto notice = [&](OKU_WORD composing) {
        inPlugin([&] { call(u"OKU/PFTNSet", wordOf(&contact), composing); });
    };
    notice(1);
    notice(1);
    EXPECT_EQ(typing.size(), 1);
    EXPECT_TRUE(waitFor([&] { return typing.size() == 2; }));
    EXPECT_EQ(typing.last(), QStringLiteral("bob@example.org off"));
    notice(1);
    notice(0);
    notice(0);
    EXPECT_EQ(typing.size(), 4);
    notice(1);
    inPlugin([&] { receiveMessage(u"bob@example.org", u"x"); });
    EXPECT_EQ(typing.size(), 6) << "the message ends it";
    contact.id = u"stranger@example.org";
    notice(1);
    EXPECT_EQ(typing.size(), 6) << "strangers may be any number";
}

TEST_F(SessionsOfAccounts, BelongToTheirOwnFileWhenThePluginNumbersThemAnew) {
    core.reset();
    writeAccount(QStringLiteral("work"), QStringLiteral("alice@work.example"));
    start();
    ASSERT_EQ(core->accounts.all().size(), 2U);
    EXPECT_NE(entry(0).netId, entry(1).netId);
    EXPECT_EQ(core->accounts.byNetId(account(1).netId)->jid(), QStringLiteral("alice@work.example"));
    EXPECT_EQ(entry(1).socket, QString::fromStdU16String(account(1).socket));
}

TEST_F(SessionsOfAccounts, ReadAlongWhatAServerSaysAtTheEnd) {
    logIn();
    QString reason;
    QObject::connect(&core->sessions, &Sessions::connectionChanged, core.get(),
                     [&](const QString&, ConnectionState, const QString& text) { reason = text; });
    inPlugin([&] {
        offerIncoming(
            "<stream:error><system-shutdown xmlns='urn:ietf:params:xml:ns:xmpp-streams'/>"
            "<text xmlns='urn:ietf:params:xml:ns:xmpp-streams'>Przerwa &amp; wracamy</text></stream:error>");
        account().flags = 0;
    });
    EXPECT_EQ(reason, QStringLiteral("Przerwa & wracamy"));
}

TEST_F(SessionsOfAccounts, CarryAWorkersCallsOver) {
    logIn();
    std::atomic<bool> done = false;
    OKU_WORD sent = 0;
    std::thread worker([&] {
        auto record = makeRecord<NL_SEND_RECORD>();
        record.data = "x";
        record.length = 1;
        record.socket = account().socket.c_str();
        sent = call(u"NetLib/Send", wordOf(&record));
        done = true;
    });
    EXPECT_TRUE(waitFor([&] { return done.load(); }));
    worker.join();
    EXPECT_EQ(static_cast<std::int32_t>(sent), -1) << "the socket service answered: nothing is connected";
}

TEST_F(SessionsOfAccounts, DoNotKeepAWorkerThatTheUnloadWaitsFor) {
    std::atomic<bool> entered = false;
    std::thread worker;
    plugin().onUnload = [&] {
        worker = std::thread([&] {
            entered = true;
            call(u"NetLib/Send", 0);
        });
        worker.join();
    };
    bool finished = false;
    QObject::connect(core.get(), &HostCore::finished, core.get(), [&] { finished = true; });
    core->shutdown();
    EXPECT_TRUE(waitFor([&] { return finished; }));
    EXPECT_TRUE(entered);
}

}  // namespace
}  // namespace oku::test
