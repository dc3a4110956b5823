// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The terminal messenger on a scripted messenger: what the tests run in a terminal. The account logs in at once, its
// contacts come online, and whoever is written to answers with what was written.
#include <unistd.h>
#include <csignal>
#include <QCoreApplication>
#include <QTimer>

#include "messenger/core/texts.h"
#include "messenger/terminal/options.h"
#include "messenger/terminal/posix_io.h"
#include "messenger/terminal/run_interactive.h"
#include "messenger/terminal/run_json.h"
#include "tests/messenger/terminal/fake_messenger.h"

namespace {

using namespace oku;
using namespace oku::terminal;
using namespace oku::terminal::test;

const QString kAccount = QStringLiteral("ala@localhost");

// What goes on between the faces.
class LivelyMessenger final : public FakeMessenger {
public:
    LivelyMessenger();

    QString setStatus(const QString& which, Status status, const QString& description) {
        accountList[0].status = status;
        accountList[0].description = description;
        const bool online = status != Status::offline;
        if (online && accountList[0].connection == ConnectionState::offline) {
            for (const auto state : {ConnectionState::connecting, ConnectionState::connected,
                                     ConnectionState::encrypted, ConnectionState::authorized, ConnectionState::online})
                changeConnection(state);
            emit roster().rosterComplete(which);
            presence(0, resource("dom", Status::away, 5, "Zaraz wracam ☕"));
            presence(2, resource("手机", Status::online, 1, ""));
        } else if (!online) {
            changeConnection(ConnectionState::offline);
        }
        emit accounts().ownStatusChanged(which, status, description);
        return {};
    }

private:
    void changeConnection(ConnectionState state) {
        accountList[0].connection = state;
        emit accounts().connectionChanged(kAccount, state, {});
    }

    void presence(int place, const Resource& one) {
        Contact& who = contactLists[kAccount][place];
        who.resources = {one};
        who.status = one.status;
        who.description = one.description;
        emit roster().presenceReceived(kAccount, who.jid, one);
        emit roster().contactChanged(kAccount, who);
    }
};

class LivelyAccounts final : public FakeAccounts {
public:
    explicit LivelyAccounts(LivelyMessenger& messenger) : FakeAccounts(messenger), messenger_(messenger) {}

    QString setStatus(const QString& which, Status status, const QString& description) override {
        return messenger_.setStatus(which, status, description);
    }

private:
    LivelyMessenger& messenger_;
};

class LivelyTalk final : public FakeTalk {
public:
    using FakeTalk::FakeTalk;

    QString sendMessage(const QString& which, const QString& to, const QString& body, MessageKind kind,
                        const QString& subject, qint64* number) override {
        if (script_.accountList[0].connection != ConnectionState::online)
            return QStringLiteral("konto jest rozłączone");
        const QString reason = FakeTalk::sendMessage(which, to, body, kind, subject, number);
        emit typingReceived(which, to, true);
        QTimer::singleShot(300, this, [this, which, to, body] {
            emit messageReceived(which, incoming(which.toUtf8(), to.toUtf8(), ("Echo: " + body).toUtf8()));
        });
        return reason;
    }
};

LivelyMessenger::LivelyMessenger() {
    accounts_ = std::make_unique<LivelyAccounts>(*this);
    talk_ = std::make_unique<LivelyTalk>(*this);
    accountList = {test::account("ala@localhost")};
    contactLists[kAccount] = {
        test::contact("olek@localhost", "Olek", "Znajomi"), test::contact("ewa@localhost", "Ewa Żółć", "Praca"),
        test::contact("mei@localhost", "李梅 🦆", "Praca"), test::contact("bot@localhost", "Bot", "Kontakty")};
    contactLists[kAccount][3].subscription = QStringLiteral("none");
    contactLists[kAccount][3].waiting = true;
}

}  // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);
    QCoreApplication application(argc, argv);
    setLanguage(languageOfEnvironment());
    const ReadOptions read = readOptions(QCoreApplication::arguments().mid(1));
    if (!std::holds_alternative<Options>(read)) return static_cast<int>(ExitCode::BadUsage);
    LivelyMessenger messenger;
    messenger.refusals[QStringLiteral("start")] = qEnvironmentVariable("FAKE_REFUSAL");
    const auto& options = std::get<Options>(read);
    return static_cast<int>(options.json ? runJson(messenger, options) : runInteractive(messenger, options));
}
