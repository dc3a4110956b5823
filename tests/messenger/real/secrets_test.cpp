// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a whole login leaves in the log and in the console when both show all that they have.
#include "messenger/core/wire_on_host.h"
#include "tests/messenger/real/stage.h"

namespace oku::test {
namespace {

class RealSecrets : public RealStage {
protected:
    void SetUp() override {
        verbose = true;
        start(true);
        QObject::connect(&core->log, &LogService::logged, core.get(),
                         [this](const LogLine& line) { log += line.text; });
        core->console.setOn(true);
        QObject::connect(&core->console, &Console::seen, core.get(),
                         [this](const QString&, bool, const QString& data) { console += data; });
        core->choices.set(entry(), Status::online, {});
        ASSERT_TRUE(waitFor([&] { return entry().ready(); }));
    }

    QString log;
    QString console;
};

TEST_F(RealSecrets, StandNeitherInTheLogNorInTheConsole) {
    const QByteArray payload = QByteArray("\0alice\0hunter22", 15).toBase64();
    ASSERT_TRUE(server.heardOf(payload)) << "what is looked for below is what went over the line";
    ASSERT_TRUE(console.contains(QStringLiteral("<auth "))) << "and the console showed the login";
    ASSERT_FALSE(log.isEmpty());
    for (const QString& shown : {log, console}) {
        EXPECT_FALSE(shown.contains(QString::fromLatin1(payload)));
        EXPECT_FALSE(shown.contains(QStringLiteral("hunter22")));
    }
}

TEST_F(RealSecrets, OfARegistrationStandNeitherInTheLogNorInTheConsole) {
    const QString registration = QStringLiteral(
        "<iq type='set' id='r1'><query xmlns='jabber:iq:register'><username>alice</username>"
        "<password>nowe-haslo</password><email>alice@poczta.example</email></query></iq>");
    EXPECT_EQ(wireOnHost(*core)->sendRaw(entry().jid(), registration), QString());
    settle();
    ASSERT_TRUE(server.heardOf("nowe-haslo"));
    ASSERT_TRUE(console.contains(QStringLiteral("jabber:iq:register")));
    for (const QString& shown : {log, console}) {
        EXPECT_FALSE(shown.contains(QStringLiteral("nowe-haslo")));
        EXPECT_FALSE(shown.contains(QStringLiteral("alice@poczta.example")));
    }
}

}  // namespace
}  // namespace oku::test
