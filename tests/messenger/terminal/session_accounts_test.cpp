// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Start and end, accounts and their passwords.
#include "tests/messenger/terminal/session_fixture.h"

namespace oku::terminal::test {
namespace {

TEST_F(SessionTest, SaysHowToBeginWithoutAnAccount) {
    messenger.accountList.clear();
    session = std::make_unique<Session>(messenger, display, SessionOptions{});
    display.lines.clear();
    EXPECT_EQ(session->start(), "");
    EXPECT_EQ(display.lines.last(), "- there is no account yet; /account add you@server adds one");
    EXPECT_EQ(type("/roster"), "");
    EXPECT_EQ(display.lines.last(), "! there is no account yet; /account add you@server adds one");
}

TEST_F(SessionTest, TellsWhyItCannotStart) {
    messenger.refusals["start"] = "no such module";
    start({});
    EXPECT_EQ(reason, "no such module");
}

TEST_F(SessionTest, AsksForThePasswordOfANewAccountThenConnects) {
    SessionOptions options;
    options.account = QStringLiteral("Nowa@Localhost/Dom");
    options.status = QStringLiteral("away");
    start(options);
    EXPECT_TRUE(session->secret().wanted());
    EXPECT_EQ(session->view().prompt(), "password of Nowa@Localhost/Dom (not shown): ");
    EXPECT_EQ(type("tajne"), "addAccount|Nowa@Localhost/Dom|tajne\nsetStatus|nowa@localhost|away|");
    EXPECT_FALSE(session->secret().wanted());
    EXPECT_EQ(session->chosen().jid(), "nowa@localhost");
    for (const LogEntry* entry : session->log().entries()) EXPECT_FALSE(entry->text.contains("tajne"));
}

TEST_F(SessionTest, AsksForAPasswordThatIsNotKnownBeforeItConnects) {
    messenger.settings.remove("XMPP/Pass");
    EXPECT_EQ(type("/away na chwilę"), "");
    EXPECT_EQ(session->view().prompt(), "password of ala@localhost (not shown): ");
    EXPECT_EQ(type("tajne"), "addAccount|ala@localhost|tajne\nsetStatus|ala@localhost|away|na chwilę");
    EXPECT_EQ(type("/online"), "setStatus|ala@localhost|online|");
    messenger.settings.remove("XMPP/Pass");
    EXPECT_EQ(type("/offline"), "setStatus|ala@localhost|offline|");
    messenger.settings["OKU/PasswordInRing"] = 1;
    EXPECT_EQ(type("/online"), "setStatus|ala@localhost|online|");
}

TEST_F(SessionTest, AsksForAPasswordThatIsNotKnownAtTheStart) {
    messenger.settings.remove("XMPP/Pass");
    SessionOptions options;
    options.status = QStringLiteral("online");
    start(options);
    EXPECT_TRUE(session->secret().wanted());
    EXPECT_EQ(type(""), "");
    EXPECT_FALSE(session->secret().wanted());
    EXPECT_EQ(heard(), "- cancelled");
}

TEST_F(SessionTest, TakesThePasswordOfTheEnvironment) {
    SessionOptions options;
    options.account = kMe;
    options.password = QStringLiteral("tajne");
    options.status = QStringLiteral("online");
    session = std::make_unique<Session>(messenger, display, options);
    messenger.calls.clear();
    session->start();
    EXPECT_EQ(messenger.takeCalls().filter(QRegularExpression("^(?!settingValue)")).join(u'\n'),
              "start\naddAccount|ala@localhost|tajne\nsetStatus|ala@localhost|online|");
}

TEST_F(SessionTest, TakesLineFeedsAwayThatWerePastedBehindALine) {
    type("/chat-with Olek");
    EXPECT_EQ(type("raz\ndwa\n\n"), "sendMessage|ala@localhost|olek@localhost|raz\ndwa|chat|");
    type("/account password");
    EXPECT_EQ(type("tajne\n"), "addAccount|ala@localhost|tajne");
}

TEST_F(SessionTest, TellsThatANewPasswordIsTaken) {
    type("/account password");
    type("tajne");
    EXPECT_EQ(heard(), "- password of ala@localhost taken");
}

TEST_F(SessionTest, ForgetsAPasswordThatIsCancelled) {
    type("/account add nowa@localhost");
    session->secret().cancel();
    EXPECT_FALSE(session->secret().wanted());
    EXPECT_EQ(type("hej"), "");
    EXPECT_EQ(heard(), "- cancelled\n! no conversation is open; /chat-with WHO opens one");
}

TEST_F(SessionTest, UnloadsBeforeItEnds) {
    messenger.finishAtOnce = false;
    EXPECT_EQ(type("/quit"), "shutdown");
    EXPECT_EQ(type("/quit"), "");
    EXPECT_FALSE(display.over);
    emit messenger.finished();
    EXPECT_TRUE(display.over);
}

}  // namespace
}  // namespace oku::terminal::test
