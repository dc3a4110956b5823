// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The windows, the status line, and who is told that a line is typed.
#include "messenger/terminal/screen/display_width.h"
#include "tests/messenger/terminal/session_fixture.h"

namespace oku::terminal::test {
namespace {

TEST_F(SessionTest, CountsWhatIsUnreadAndShowsItWhereItIsRead) {
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "olek@localhost", "raz"));
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "olek@localhost", "dwa"));
    EXPECT_NE(status().find(" 1:Olek(2)"), std::string::npos);
    EXPECT_EQ(type("/window"), "history|ala@localhost|olek@localhost|20|\nmarkRead|ala@localhost|olek@localhost");
    EXPECT_EQ(status().find("(2)"), std::string::npos);
    EXPECT_NE(status().find("[1:Olek]"), std::string::npos);
    EXPECT_EQ(session->log().entries().size(), 3U);
    heard();
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "ewa@localhost", "inna"));
    EXPECT_EQ(heard(), "");
    EXPECT_NE(status().find("2:Ewa Żółć(1)"), std::string::npos);
    type("/window 0");
    EXPECT_NE(session->log().entries().back()->text, "dwa");
    EXPECT_EQ(type("/close"), "");
    EXPECT_EQ(heard(), "! no conversation is open; /chat-with WHO opens one");
}

TEST_F(SessionTest, DividesNewMessagesFromThoseThatWereReadUntilTheNextLook) {
    const auto texts = [this] {
        QStringList result;
        for (const LogEntry* entry : session->log().entries()) result.append(entry->text);
        return result.join(u'|').toStdString();
    };
    type("/chat-with Olek");
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "olek@localhost", "raz"));
    session->conversations().show(0);
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "olek@localhost", "dwa"));
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "olek@localhost", "trzy"));
    EXPECT_EQ(texts().find("new messages"), std::string::npos);
    session->conversations().show(1);
    EXPECT_EQ(texts(), "raz|new messages|dwa|trzy");
    session->conversations().show(0);
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "olek@localhost", "cztery"));
    session->conversations().show(1);
    EXPECT_EQ(texts(), "raz|dwa|trzy|new messages|cztery");
    session->conversations().show(0);
    session->conversations().show(1);
    EXPECT_EQ(texts(), "raz|dwa|trzy|cztery");
}

TEST_F(SessionTest, ShowsWhatMustNotBeMissedInTheWindowThatIsLookedAt) {
    type("/chat-with Olek");
    heard();
    emit messenger.windows().noticed(kMe, "notice");
    emit messenger.roster().authorizationRequested(kMe, "ewa@localhost");
    EXPECT_EQ(session->log().entries().size(), 2U);
    // Conversations that nobody looked at are not filled with it, but a request stands in its own.
    type("/chat-with Ola");
    EXPECT_TRUE(session->log().entries().empty());
    type("/chat-with Ewa");
    EXPECT_EQ(session->log().entries().size(), 1U);
    type("/window 0");
    EXPECT_EQ(session->log().entries().back()->style, Style::Question);
}

TEST_F(SessionTest, LeavesOutOfANarrowStatusLineWhatMattersLeast) {
    messenger.accountList[0].connection = ConnectionState::online;
    messenger.accountList[0].status = Status::away;
    messenger.accountList[0].description = QStringLiteral("w pociągu");
    for (const char* who : {"olek@localhost", "ola@localhost", "ewa@localhost"})
        session->conversations().open({kMe, QString::fromUtf8(who)});
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "ola@localhost", "hej"));
    EXPECT_EQ(status(), " ala@localhost ◐ away — w pociągu │ 0:main 1:Olek 2:Ola(1) [3:Ewa Żółć]");
    display.width = 60;
    EXPECT_EQ(status(), " ala@localhost ◐ │ 0:main 1:Olek 2:Ola(1) [3:Ewa Żółć]");
    display.width = 40;
    EXPECT_EQ(status(), " ala@localhost ◐ │ 2:Ola(1) [3:Ewa Żółć]");
    display.beside = 18;
    EXPECT_EQ(status(), " ala@localhost ◐ │ 2:Ola(1) [3:Ewa Żółć]")
        << "what stands beside the log takes nothing from it";
    display.width = 39;
    EXPECT_EQ(status(), " ala@localhost ◐ │ 2:Ola(1) [3:Ewa Ż…]");
    display.width = 30;
    EXPECT_EQ(status(), " ala ◐ │ 2:Ola(1) [3:Ewa Ż…]");
}

TEST_F(SessionTest, LeavesLongNamesNoMoreThanTheirRoom) {
    messenger.contactLists[kMe][0].name = QStringLiteral("Aleksander ").repeated(20);
    session->conversations().open({kMe, "olek@localhost"});
    emit messenger.talk().typingReceived(kMe, "olek@localhost", true);
    EXPECT_TRUE(lineText(session->view().title()).contains("… <olek@localhost> ◐ away"));
    EXPECT_LE(lineWidth(session->view().title()), display.width);
    EXPECT_EQ(status(), " ala@localhost ○ offline │ Aleksander … is writing… │ 0:main [1:Aleksander …]");
}

TEST_F(SessionTest, AnswersOnlyWhereItWasAsked) {
    type("/chat-with Olek");
    messenger.messages = {incoming("olek@localhost", "ala@localhost", "sprzed tygodnia")};
    type("/roster");
    type("/history");
    EXPECT_NE(session->log().entries().back()->text.indexOf("sprzed tygodnia"), -1);
    type("/fly");
    const auto count = session->log().entries().size();
    EXPECT_GT(count, 5U);
    type("/window 0");
    for (const LogEntry* entry : session->log().entries()) {
        EXPECT_NE(entry->kind, EntryKind::Listing);
        EXPECT_FALSE(entry->text.contains("fly")) << qPrintable(entry->text);
    }
    type("/window 1");
    EXPECT_EQ(session->log().entries().size(), count);
}

TEST_F(SessionTest, SaysItselfThatAMessageCameBack) {
    type("/chat-with Olek");
    heard();
    Message back = incoming("ala@localhost", "olek@localhost", "Twoja wiadomość nie została dostarczona");
    back.failed = true;
    emit messenger.talk().messageReceived(kMe, back);
    EXPECT_EQ(heard(), "Olek Olek: Twoja wiadomość nie została dostarczona");
    const LogEntry& entry = *session->log().entries().back();
    EXPECT_EQ(entry.style, Style::Error);
    EXPECT_EQ(lineText(layOut(entry, session->view().layout()).front()).mid(6),
              "            ! │ Olek: Twoja wiadomość nie została dostarczona");
    session->conversations().show(0);
    emit messenger.talk().messageReceived(kMe, back);
    session->conversations().show(1);
    EXPECT_EQ((*(session->log().entries().end() - 2))->text, "new messages");
}

TEST_F(SessionTest, TakesUnreadMessagesOfTheLastTimeOver) {
    messenger.contactLists[kMe][1].unread = 3;
    start({});
    EXPECT_NE(status().find("1:Ewa Żółć(3)"), std::string::npos);
}

TEST_F(SessionTest, PutsTheHistoryAboveWhatCame) {
    Message older = incoming("ala@localhost", "olek@localhost", "dawno");
    older.number = 3;
    Message live = incoming("ala@localhost", "olek@localhost", "teraz");
    live.number = 4;
    messenger.messages = {older, live};
    emit messenger.talk().messageReceived(kMe, live);
    type("/chat-with Olek");
    const auto entries = session->log().entries();
    ASSERT_EQ(entries.size(), 3U);
    EXPECT_EQ(entries[0]->text, "dawno");
    EXPECT_EQ(entries[1]->text, "new messages");
    EXPECT_EQ(entries[2]->text, "teraz");
    type("/window 0");
    for (const LogEntry* entry : session->log().entries()) EXPECT_NE(entry->text, "dawno");
    type("/window 1");
    EXPECT_EQ(session->log().entries().size(), 2U);
}

TEST_F(SessionTest, ShowsEverythingInOneWindowWhereItIsAskedTo) {
    SessionOptions options;
    options.oneWindow = true;
    start(options);
    type("/chat-with Olek");
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "ewa@localhost", "inna"));
    emit messenger.talk().typingReceived(kMe, "ewa@localhost", true);
    EXPECT_EQ(heard(), "Ewa Żółć inna\n- Ewa Żółć is writing…");
}

TEST_F(SessionTest, ShowsWhoIsWritingUntilTheMessageComes) {
    emit messenger.talk().typingReceived(kMe, "olek@localhost", true);
    EXPECT_NE(status().find("Olek is writing…"), std::string::npos);
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "olek@localhost", "x"));
    EXPECT_EQ(status().find("is writing"), std::string::npos);
    emit messenger.talk().typingReceived(kMe, "olek@localhost", true);
    emit messenger.talk().typingReceived(kMe, "olek@localhost", false);
    EXPECT_EQ(status().find("is writing"), std::string::npos);
}

TEST_F(SessionTest, TitlesAConversation) {
    type("/chat-with olek@localhost");
    EXPECT_EQ(lineText(session->view().title()), " Olek <olek@localhost> ◐ away (dom)");
    EXPECT_EQ(session->view().prompt(), "Olek> ");
    type("/chat-with obcy@localhost");
    EXPECT_EQ(lineText(session->view().title()), " obcy@localhost · not on the contact list");
}

TEST_F(SessionTest, ClearsAWindow) {
    emit messenger.windows().noticed(kMe, "x");
    type("/clear");
    EXPECT_TRUE(session->log().entries().empty());
}

TEST_F(SessionTest, TellsTheOtherSideThatALineIsTyped) {
    type("/chat-with Olek");
    typing("h");
    typing("he");
    EXPECT_EQ(typingCalls(), "sendTyping|ala@localhost|olek@localhost|composing");
    typing("");
    EXPECT_EQ(typingCalls(), "sendTyping|ala@localhost|olek@localhost|paused");
    typing("hejka");
    typingCalls();
    EXPECT_EQ(type("hejka"), "sendMessage|ala@localhost|olek@localhost|hejka|chat|");
    typing("");
    EXPECT_EQ(typingCalls(), "");
}

TEST_F(SessionTest, WhoPressesNoKeyAnyMoreIsNotTypingAnyMore) {
    SessionOptions options;
    options.typingPause = 1;
    start(options);
    type("/chat-with Olek");
    typing("hej");
    EXPECT_EQ(typingCalls(), "sendTyping|ala@localhost|olek@localhost|composing");
    std::string paused;
    while (paused.empty()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        paused = typingCalls();
    }
    EXPECT_EQ(paused, "sendTyping|ala@localhost|olek@localhost|paused");
    typing("hejka");
    EXPECT_EQ(typingCalls(), "sendTyping|ala@localhost|olek@localhost|composing");
}

TEST_F(SessionTest, KeepsTypingToItselfWhereNobodyShouldHear) {
    typing("w oknie głównym");
    EXPECT_EQ(typingCalls(), "");
    type("/chat-with Olek");
    typing("/roster");
    EXPECT_EQ(typingCalls(), "");
    type("/chat-with Ola");
    typing("rozłączona");
    EXPECT_EQ(typingCalls(), "");
    type("/chat-with Olek");
    EXPECT_EQ(type("/typing off"), "setSetting|ala@localhost|OKU/SendTyping|int|0");
    typing("cicho");
    EXPECT_EQ(typingCalls(), "");
    EXPECT_EQ(type("/typing on"), "setSetting|ala@localhost|OKU/SendTyping|int|1");
    typing("głośno");
    EXPECT_EQ(typingCalls(), "sendTyping|ala@localhost|olek@localhost|composing");
    type("/window 0");
    EXPECT_EQ(typingCalls(), "");
}

TEST_F(SessionTest, StopsTypingWhenTheWindowChanges) {
    type("/chat-with Olek");
    typing("hej");
    messenger.calls.clear();
    session->conversations().show(0);
    EXPECT_EQ(typingCalls(), "sendTyping|ala@localhost|olek@localhost|paused");
}

class StrangersTest : public SessionTest {
protected:
    static std::string jidOf(int number) { return "obcy" + std::to_string(number) + "@daleko"; }
    void write(int number, const char* text) {
        emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", jidOf(number).c_str(), text));
    }
    std::size_t windows() const { return session->windows().conversations().size(); }
};

TEST_F(StrangersTest, ShareAWindowWhenTheyAreMany) {
    for (int number = 1; number <= 50; ++number) write(number, "hej");
    EXPECT_EQ(windows(), 50U);
    for (int number = 51; number <= 5000; ++number) write(number, "oferta");
    EXPECT_EQ(windows(), 51U);
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "olek@localhost", "kontakt"));
    EXPECT_EQ(windows(), 52U) << "contacts have their own";
    write(7, "znowu");
    EXPECT_EQ(windows(), 52U);
    EXPECT_EQ(session->windows().unread(Windows::strangers()), 4950);
    type("/window 51");
    EXPECT_EQ(lineText(session->view().title()), " strangers · answer: /chat-with ADDRESS");
    const auto entries = session->log().entries();
    EXPECT_EQ(entries.front()->text, "new messages");
    EXPECT_EQ(entries.back()->text, "<obcy5000@daleko> oferta");
    write(77, "na oku");
    EXPECT_EQ(session->log().entries().back()->text, "<obcy77@daleko> na oku");
    EXPECT_EQ(session->windows().unreadOfAll(), 50 + 1 + 1);
}

TEST_F(StrangersTest, WhoShareAWindowAreAnsweredInTheirOwn) {
    for (int number = 1; number <= 60; ++number) write(number, "hej");
    type("/window 51");
    heard();
    EXPECT_EQ(type("do kogo?"), "");
    EXPECT_NE(heard().find("no conversation is open"), std::string::npos);
    typing("do kogo?");
    EXPECT_EQ(typingCalls(), "");
    type("/chat-with obcy55@daleko");
    EXPECT_EQ(windows(), 52U);
    EXPECT_EQ(session->log().entries().back()->text, "<obcy55@daleko> hej") << "what came stands here too";
    EXPECT_EQ(type("cześć"), "sendMessage|ala@localhost|obcy55@daleko|cześć|chat|");
    write(55, "dalej");
    EXPECT_EQ(session->log().entries().back()->text, "dalej");
}

TEST_F(StrangersTest, MakeRoomWhenTheirWindowIsClosedOrTheyBecomeContacts) {
    for (int number = 1; number <= 50; ++number) write(number, "hej");
    type("/window 50");
    type("/close");
    write(51, "hej");
    EXPECT_EQ(windows(), 50U);
    EXPECT_FALSE(session->windows().isOpen(Windows::strangers()));
    emit messenger.roster().contactChanged(kMe, contact(jidOf(3).c_str(), "Trzeci", "Praca"));
    write(52, "hej");
    EXPECT_EQ(windows(), 51U);
    EXPECT_FALSE(session->windows().isOpen(Windows::strangers()));
    write(53, "hej");
    EXPECT_TRUE(session->windows().isOpen(Windows::strangers()));
}

TEST_F(StrangersTest, DoNotMakeTheStatusLineLonger) {
    for (int number = 1; number <= 200; ++number) {
        const std::string jid = "znajomy" + std::to_string(number) + "@localhost";
        messenger.contactLists[kMe].append(contact(jid.c_str(), jid.c_str(), "Praca"));
        emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", jid.c_str(), "hej"));
    }
    EXPECT_LE(session->view().status().size(), 90U) << "no more windows than the line has columns";
    EXPECT_NE(status().find("1:"), std::string::npos);
}

TEST_F(SessionTest, KeepsCountOfWindowsThatMoveUp) {
    for (const char* who : {"olek@localhost", "ola@localhost", "ewa@localhost"})
        session->conversations().open({kMe, QString::fromUtf8(who)});
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "olek@localhost", "hej"));
    type("/window 2");
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "ewa@localhost", "hej"));
    type("/close");
    EXPECT_EQ(status(), " ala@localhost ○ offline │ [0:main] 1:Olek(1) 2:Ewa Żółć(1)");
    type("/window");
    type("/window");
    EXPECT_EQ(session->windows().currentNumber(), 2);
    EXPECT_EQ(session->windows().unreadOfAll(), 0);
    EXPECT_EQ(session->windows().current(), (Peer{kMe, "ewa@localhost"}));
}

TEST_F(SessionTest, ReadsInTheHistoryWhatTheLogHasNoRoomFor) {
    Message old = incoming("ala@localhost", "olek@localhost", "dawno");
    old.number = 1;
    emit messenger.talk().messageReceived(kMe, old);
    type("/chat-with Olek");
    type("/window 0");
    for (int number = 0; number < 6000; ++number) emit messenger.windows().noticed(kMe, QString::number(number));
    EXPECT_EQ(session->log().entries().size(), 5000U);
    messenger.messages = {old};
    type("/chat-with Olek");
    ASSERT_FALSE(session->log().entries().empty());
    EXPECT_EQ(session->log().entries().front()->text, "dawno");
}

}  // namespace
}  // namespace oku::terminal::test
