// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/talk/plain_display.h"

#include "messenger/core/texts.h"
#include "tests/messenger/terminal/session_fixture.h"

namespace oku::terminal::test {
namespace {

class PlainDisplayTest : public testing::Test {
protected:
    PlainDisplayTest()
        : display(
              messenger, {}, Colours::None, 0, -1, [](const QByteArray&) {}, [] {}) {
        messenger.accountList = {account("ala@localhost")};
        messenger.contactLists[kMe] = {contact("olek@localhost", "Olek", "Znajomi")};
        EXPECT_EQ(display.session().start(), "");
        display.feed("/chat-with Olek\n");
        messenger.calls.clear();
    }

    // The messages that the lines sent, and the end.
    std::string feed(const QByteArray& bytes) {
        display.feed(bytes);
        return messenger.takeCalls()
            .filter(QRegularExpression("^(sendMessage|setStatus|shutdown|addAccount)"))
            .join(u'\n')
            .replace("sendMessage|ala@localhost|olek@localhost|", "")
            .replace("|chat|", "")
            .toStdString();
    }

    FakeMessenger messenger;
    PlainDisplay display;
};

TEST_F(PlainDisplayTest, SendsWhatWasPastedAsOneMessage) {
    EXPECT_EQ(feed("\x1B[200~raz\ndwa"), "");
    EXPECT_EQ(feed("\ntrzy\x1B[201~"), "");
    EXPECT_EQ(feed("\n"), "raz\ndwa\ntrzy");
    EXPECT_EQ(feed("no tak: \x1B[200~raz\r\n\r\ndwa\x1B[201~!\ncztery\n"), "no tak: raz\n\ndwa!\ncztery");
    EXPECT_EQ(feed("\x1B[200~raz\n\x1B[201~\x1B[200~dwa\x1B[201~\n"), "raz\ndwa");
}

TEST_F(PlainDisplayTest, TakesNoPastedLinesForCommands) {
    EXPECT_EQ(feed("\x1B[200~/quit\n/away\x1B[201~\n"), "/quit\n/away");
    EXPECT_EQ(feed("\x1B[200~//quit\n/away\x1B[201~\n"), "//quit\n/away");
    EXPECT_EQ(feed("\x1B[200~raz\n/quit\n\x1B[201~\n"), "raz\n/quit");
    EXPECT_EQ(feed("/msg Olek \x1B[200~raz\ndwa\x1B[201~\n"), "raz\ndwa") << "the command was typed";
    EXPECT_EQ(feed("\x1B[200~/dnd\x1B[201~\n"), "setStatus|ala@localhost|dnd|") << "one line, and Enter pressed";
    EXPECT_EQ(feed("/quit\n"), "shutdown");
}

TEST_F(PlainDisplayTest, PartsAPasteThatIsTooLong) {
    const std::string sent = feed("\x1B[200~" + QByteArray("/quit\n").repeated(200'000));
    EXPECT_GT(sent.size(), 1'000'000U);
    EXPECT_EQ(sent.find("shutdown"), std::string::npos);
    EXPECT_EQ(feed("dalej\x1B[201~\n").find("shutdown"), std::string::npos);
    EXPECT_EQ(feed("raz\n"), "raz");
}

TEST_F(PlainDisplayTest, TakesAPastedPasswordAsItIs) {
    feed("/account add nowa@localhost\n");
    EXPECT_EQ(feed("\x1B[200~/tajne\x1B[201~\n"), "addAccount|nowa@localhost|/tajne");
}

TEST_F(PlainDisplayTest, KeepsTheOrderOfLinesWhileOneHoldsIt) {
    messenger.within["fetchOwnPicture"] = [this] { display.feed("a\ntrzy\ncz"); };
    EXPECT_EQ(feed("/picture fetch\nraz\ndw"), "raz\ndwa\ntrzy");
    EXPECT_EQ(feed("tery\n"), "cztery");
}

TEST_F(PlainDisplayTest, SubmitsTheLinesBeforeTheEndWhileOneHoldsIt) {
    messenger.within["fetchOwnPicture"] = [this] { display.feed({}); };
    EXPECT_EQ(feed("/picture fetch\nraz\ndwa"), "raz\ndwa\nshutdown");
}

}  // namespace
}  // namespace oku::terminal::test
