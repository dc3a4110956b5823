#include "messenger/terminal/session.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QRegularExpression>

#include "messenger/core/texts.h"
#include "messenger/terminal/display_width.h"
#include "tests/messenger/terminal/fake_client.h"

namespace oku::terminal::test {
namespace {

const QString kMe = QStringLiteral("ala@localhost");
const Peer kOlek{kMe, QStringLiteral("olek@localhost")};

class NotingDisplay final : public Display {
public:
    QStringList lines;
    bool over = false;
    int width = 80;

    void appended(const LogEntry& entry) override {
        const QString who = entry.who.isEmpty() ? entry.mark : entry.who;
        lines.append(who.isEmpty() ? entry.text : who + u' ' + entry.text);
    }
    void changed() override {}
    int columns() const override { return width; }
    void ended() override { over = true; }
};

class SessionTest : public testing::Test {
protected:
    void SetUp() override {
        setLanguage(Language::English);
        client.accountList = {account("ala@localhost")};
        client.contactLists[kMe] = {contact("olek@localhost", "Olek", "Znajomi", Status::away),
                                    contact("ewa@localhost", "Ewa Żółć", "Praca"),
                                    contact("ola@localhost", "Ola", "Praca")};
        client.contactLists[kMe][0].resources = {resource("dom", Status::away, 5, "Zaraz wracam")};
        start({});
    }
    void TearDown() override { setLanguage(Language::Polish); }

    void start(SessionOptions options) {
        session.reset();
        options.startDirectory = QStringLiteral("/start");
        session = std::make_unique<Session>(client, display, options);
        reason = session->start();
        heard();
        client.calls.clear();
    }
    // What the display was told since the last time.
    std::string heard() { return std::exchange(display.lines, {}).join(u'\n').toStdString(); }
    // Types a line; gives what the messenger was asked for.
    std::string type(const char* line) {
        client.calls.clear();
        session->submit(QString::fromUtf8(line));
        return client.takeCalls().filter(QRegularExpression("^(?!settingValue)")).join(u'\n').toStdString();
    }
    void typing(const char* text) { session->typed(QString::fromUtf8(text)); }
    std::string typingCalls() { return client.takeCalls().filter("sendTyping").join(u'\n').toStdString(); }
    std::string status() { return lineText(session->status()).toStdString(); }

    FakeClient client;
    NotingDisplay display;
    std::unique_ptr<Session> session;
    QString reason;
};

// What the messenger tells --------------------------------------------------------------------------------------------

TEST_F(SessionTest, TellsEachStepOfAConnection) {
    session->connectionChanged(kMe, ConnectionState::connecting, {});
    session->connectionChanged(kMe, ConnectionState::encrypted, {});
    session->connectionChanged(kMe, ConnectionState::online, {});
    session->connectionChanged(kMe, ConnectionState::offline, "the server refused the password");
    EXPECT_EQ(heard(),
              "- connecting to the server\n- the connection is encrypted\n- ready, the contact list is here\n"
              "! offline: the server refused the password");
}

TEST_F(SessionTest, TellsNoReasonTwice) {
    session->noticed(kMe, "wrong password");
    session->connectionChanged(kMe, ConnectionState::offline, "wrong password");
    EXPECT_EQ(heard(), "! wrong password\n! offline");
    session->connectionChanged(kMe, ConnectionState::connecting, {});
    session->connectionChanged(kMe, ConnectionState::offline, "wrong password");
    EXPECT_EQ(heard(), "- connecting to the server\n! offline: wrong password");
}

TEST_F(SessionTest, TellsPresencesOnce) {
    session->presenceReceived(kMe, "olek@localhost", resource("dom", Status::away, 5, "Zaraz\nwracam"));
    session->presenceReceived(kMe, "olek@localhost", resource("dom", Status::away, 5, "Zaraz\nwracam"));
    session->presenceReceived(kMe, "olek@localhost", resource("dom", Status::dnd));
    session->presenceReceived(kMe, "olek@localhost", resource("dom", Status::offline));
    session->presenceReceived(kMe, "olek@localhost", resource("dom", Status::offline));
    session->presenceReceived(kMe, "obcy@localhost", resource("", Status::online));
    EXPECT_EQ(heard(),
              "◐ Olek (dom): away — Zaraz⏎wracam\n⊘ Olek (dom): busy\n○ Olek (dom): offline\n"
              "● obcy@localhost: available");
}

TEST_F(SessionTest, TellsAPresenceAnewAfterAReconnection) {
    session->presenceReceived(kMe, "olek@localhost", resource("dom", Status::away));
    session->connectionChanged(kMe, ConnectionState::offline, {});
    heard();
    session->presenceReceived(kMe, "olek@localhost", resource("dom", Status::away));
    EXPECT_EQ(heard(), "◐ Olek (dom): away");
}

TEST_F(SessionTest, LeavesItsOwnPresenceOut) {
    client.settings["XMPP/User"] = "ala@localhost/tu";
    session->presenceReceived(kMe, kMe, resource("tu", Status::online));
    EXPECT_EQ(heard(), "");
    session->presenceReceived(kMe, kMe, resource("telefon", Status::online));
    EXPECT_EQ(heard(), "● ala@localhost (telefon): available");
}

TEST_F(SessionTest, TellsWhatChangedOfAContact) {
    session->connectionChanged(kMe, ConnectionState::online, {});
    heard();
    Contact olek = client.contactLists[kMe][0];
    olek.status = Status::online;
    session->contactChanged(kMe, olek);
    EXPECT_EQ(heard(), "");
    olek.name = QStringLiteral("Oleczek");
    olek.group = QStringLiteral("Dom");
    olek.subscription = QStringLiteral("to");
    olek.waiting = true;
    client.contactLists[kMe][0] = olek;
    session->contactChanged(kMe, olek);
    EXPECT_EQ(heard(),
              "- the contact Olek is now called Oleczek\n- the contact Oleczek is now in the group Dom\n"
              "- contact Oleczek: you see them, they do not see you, waits for consent");
    session->contactChanged(kMe, contact("nowy@localhost", "Nowy", "Dom"));
    EXPECT_EQ(heard(), "+ new contact: Nowy <nowy@localhost> in the group Dom");
    session->contactRemoved(kMe, "nowy@localhost");
    EXPECT_EQ(heard(), "- contact removed: Nowy <nowy@localhost>");
}

TEST_F(SessionTest, IsQuietAboutContactsWhileTheListComes) {
    session->connectionChanged(kMe, ConnectionState::authorized, {});
    heard();
    session->contactChanged(kMe, contact("nowy@localhost", "Nowy", "Dom"));
    EXPECT_EQ(heard(), "");
}

TEST_F(SessionTest, TellsMessagesWithWhatIsSpecialAboutThem) {
    Message message = incoming("ala@localhost", "olek@localhost", "hej\x1b[2J");
    session->messageReceived(kMe, message);
    EXPECT_EQ(heard(), "Olek hej\uFFFD[2J");
    message.delayed = QDateTime(QDate(2026, 11, 20), QTime(8, 1));
    message.subject = QStringLiteral("Temat");
    message.body = QStringLiteral("raz\ndwa");
    session->messageReceived(kMe, message);
    EXPECT_EQ(heard(), "Olek (written 20.11.2026 08:01) [Temat] raz\ndwa");
    message = incoming("ala@localhost", "olek@localhost", "/me macha");
    session->messageReceived(kMe, message);
    EXPECT_EQ(heard(), "Olek * Olek macha");
    Message sent = outgoing("ala@localhost", "olek@localhost", "no", 7);
    sent.state = DeliveryState::queued;
    session->messageQueued(kMe, sent);
    EXPECT_EQ(heard(), "Olek (waits for the next login) no");
    sent.state = DeliveryState::unconfirmed;
    session->messageStateChanged(kMe, sent);
    EXPECT_EQ(
        heard(),
        "! message 7 to Olek is not confirmed: the connection broke after it was sent — /resend 7 sends it again");
    sent.state = DeliveryState::sent;
    session->messageStateChanged(kMe, sent);
    EXPECT_EQ(heard(), "- message 7 to Olek was sent");
}

TEST_F(SessionTest, ShowsAWaitingMessageOnceWhenItIsSent) {
    type("/chat-with Olek");
    Message message = outgoing("ala@localhost", "olek@localhost", "no", 7);
    message.state = DeliveryState::queued;
    session->messageQueued(kMe, message);
    session->messageReceived(kMe, incoming("ala@localhost", "olek@localhost", "hej"));
    message.state = DeliveryState::sent;
    session->messageSent(kMe, message);
    ASSERT_EQ(session->entries().size(), 2U);
    EXPECT_EQ(session->entries()[0]->text, "no");
    // Sent once more, it stands below.
    session->messageSent(kMe, message);
    EXPECT_EQ(session->entries().size(), 3U);
}

TEST_F(SessionTest, TellsInPlainLinesThatAWaitingMessageIsSent) {
    SessionOptions options;
    options.oneWindow = true;
    start(options);
    Message message = outgoing("ala@localhost", "olek@localhost", "no", 7);
    message.state = DeliveryState::queued;
    session->messageQueued(kMe, message);
    message.state = DeliveryState::sent;
    session->messageSent(kMe, message);
    EXPECT_EQ(heard(), "Olek (waits for the next login) no\nOlek no");
}

TEST_F(SessionTest, AsksAboutAuthorizationsAndBoxes) {
    session->authorizationRequested(kMe, "obcy@localhost");
    EXPECT_EQ(heard(),
              "? obcy@localhost asks for authorization to see your presence: /authorize obcy@localhost or /deny "
              "obcy@localhost");
    MessageBox box;
    box.number = 4;
    box.title = QStringLiteral("Pewnyś?");
    box.text = QStringLiteral("Usunąć?");
    box.style = BoxStyle::question;
    session->boxOpened(box);
    EXPECT_EQ(heard(), "? Pewnyś?: Usunąć?\nanswer: /answer 4 yes or /answer 4 no");
    QCoreApplication::processEvents();
    EXPECT_TRUE(client.takeCalls().filter("answerBox").isEmpty());
}

TEST_F(SessionTest, ConfirmsANoticeOnceItIsShown) {
    MessageBox box;
    box.number = 5;
    box.title = QStringLiteral("Błąd");
    box.text = QStringLiteral("Nie działa");
    box.style = BoxStyle::error;
    session->boxOpened(box);
    EXPECT_EQ(heard(), "! Błąd: Nie działa");
    EXPECT_TRUE(client.takeCalls().filter("answerBox").isEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(client.takeCalls().filter("answerBox").join(u' '), "answerBox|5|1");
}

TEST_F(SessionTest, TellsNoticesCertificatesConsoleAndAnswers) {
    session->noticed(kMe, "Serwer mówi");
    session->certificateRefused(kMe, {"srv", "expired.", "AA:BB"});
    session->xmlSeen(kMe, true, "<a/>\n");
    session->xmlSeen(kMe, false, "<b/>");
    session->logged({0, "XMPP", "not shown"});
    EXPECT_EQ(heard(),
              "! Serwer mówi\n! the certificate of srv was refused: expired; SHA-256 fingerprint: AA:BB\n"
              "/pin accepts this certificate from now on; then /online\n⇐ <a/>\n⇒ <b/>");
    ContactInfo info;
    info.jid = QStringLiteral("olek@localhost");
    info.resource = resource("dom", Status::away, 5, "opis");
    info.client = QStringLiteral("protoLink");
    info.version = QStringLiteral("1.0");
    info.features = QStringList{"a", "b"};
    session->infoReceived(kMe, info);
    session->infoComplete(kMe, "olek@localhost");
    EXPECT_EQ(heard(),
              "Olek/dom\n  presence: ◐ away — opis\n  priority: 5\n  client: protoLink 1.0\n  features: a, b\n"
              "- Olek: that is all that is known");
    ServerInfo server;
    server.domain = QStringLiteral("localhost");
    server.identities = QStringList{"server/im Prosody"};
    server.features = QStringList{"x"};
    session->serverInfoReceived(kMe, server);
    EXPECT_EQ(heard(), "localhost\n  server/im Prosody\n  features: x");
}

TEST_F(SessionTest, ShowsTheLogWhenItIsVerbose) {
    SessionOptions options;
    options.verbose = true;
    start(options);
    session->logged({0, "XMPP", "line"});
    EXPECT_EQ(heard(), "# [XMPP] line");
}

// Windows -------------------------------------------------------------------------------------------------------------

TEST_F(SessionTest, CountsWhatIsUnreadAndShowsItWhereItIsRead) {
    session->messageReceived(kMe, incoming("ala@localhost", "olek@localhost", "raz"));
    session->messageReceived(kMe, incoming("ala@localhost", "olek@localhost", "dwa"));
    EXPECT_NE(status().find(" 1:Olek(2)"), std::string::npos);
    EXPECT_EQ(type("/window"), "history|ala@localhost|olek@localhost|20|\nmarkRead|ala@localhost|olek@localhost");
    EXPECT_EQ(status().find("(2)"), std::string::npos);
    EXPECT_NE(status().find("[1:Olek]"), std::string::npos);
    EXPECT_EQ(session->entries().size(), 2U);
    heard();
    session->messageReceived(kMe, incoming("ala@localhost", "ewa@localhost", "inna"));
    EXPECT_EQ(heard(), "");
    EXPECT_NE(status().find("2:Ewa Żółć(1)"), std::string::npos);
    type("/window 0");
    EXPECT_NE(session->entries().back()->text, "dwa");
    EXPECT_EQ(type("/close"), "");
    EXPECT_EQ(heard(), "! no conversation is open; /chat-with WHO opens one");
}

TEST_F(SessionTest, ShowsWhatMustNotBeMissedInTheWindowThatIsLookedAt) {
    type("/chat-with Olek");
    heard();
    session->noticed(kMe, "notice");
    session->authorizationRequested(kMe, "ewa@localhost");
    EXPECT_EQ(session->entries().size(), 2U);
    // Conversations that nobody looked at are not filled with it, but a request stands in its own.
    type("/chat-with Ola");
    EXPECT_TRUE(session->entries().empty());
    type("/chat-with Ewa");
    EXPECT_EQ(session->entries().size(), 1U);
    type("/window 0");
    EXPECT_EQ(session->entries().back()->style, Style::Question);
}

TEST_F(SessionTest, LeavesOutOfANarrowStatusLineWhatMattersLeast) {
    client.accountList[0].connection = ConnectionState::online;
    client.accountList[0].status = Status::away;
    client.accountList[0].description = QStringLiteral("w pociągu");
    for (const char* who : {"olek@localhost", "ola@localhost", "ewa@localhost"})
        session->openConversation({kMe, QString::fromUtf8(who)});
    session->messageReceived(kMe, incoming("ala@localhost", "ola@localhost", "hej"));
    EXPECT_EQ(status(), " ala@localhost ◐ away — w pociągu │ 0:main 1:Olek 2:Ola(1) [3:Ewa Żółć]");
    display.width = 60;
    EXPECT_EQ(status(), " ala ◐ │ 0:main 1:Olek 2:Ola(1) [3:Ewa Żółć]");
    display.width = 40;
    EXPECT_EQ(status(), " ala ◐ │ 2:Ola(1) [3:Ewa Żółć]");
}

TEST_F(SessionTest, TakesUnreadMessagesOfTheLastTimeOver) {
    client.contactLists[kMe][1].unread = 3;
    start({});
    EXPECT_NE(status().find("1:Ewa Żółć(3)"), std::string::npos);
}

TEST_F(SessionTest, PutsTheHistoryAboveWhatCame) {
    Message older = incoming("ala@localhost", "olek@localhost", "dawno");
    older.number = 3;
    Message live = incoming("ala@localhost", "olek@localhost", "teraz");
    live.number = 4;
    client.messages = {older, live};
    session->messageReceived(kMe, live);
    type("/chat-with Olek");
    const auto entries = session->entries();
    ASSERT_EQ(entries.size(), 2U);
    EXPECT_EQ(entries[0]->text, "dawno");
    EXPECT_EQ(entries[1]->text, "teraz");
    type("/window 0");
    for (const LogEntry* entry : session->entries()) EXPECT_NE(entry->text, "dawno");
    type("/window 1");
    EXPECT_EQ(session->entries().size(), 2U);
}

TEST_F(SessionTest, ShowsEverythingInOneWindowWhereItIsAskedTo) {
    SessionOptions options;
    options.oneWindow = true;
    start(options);
    type("/chat-with Olek");
    session->messageReceived(kMe, incoming("ala@localhost", "ewa@localhost", "inna"));
    session->typingReceived(kMe, "ewa@localhost", true);
    EXPECT_EQ(heard(), "Ewa Żółć inna\n- Ewa Żółć is writing…");
}

TEST_F(SessionTest, ShowsWhoIsWritingUntilTheMessageComes) {
    session->typingReceived(kMe, "olek@localhost", true);
    EXPECT_NE(status().find("Olek is writing…"), std::string::npos);
    session->messageReceived(kMe, incoming("ala@localhost", "olek@localhost", "x"));
    EXPECT_EQ(status().find("is writing"), std::string::npos);
    session->typingReceived(kMe, "olek@localhost", true);
    session->typingReceived(kMe, "olek@localhost", false);
    EXPECT_EQ(status().find("is writing"), std::string::npos);
}

TEST_F(SessionTest, TitlesAConversation) {
    type("/chat-with olek@localhost");
    EXPECT_EQ(lineText(session->title()), " Olek <olek@localhost> ◐ away (dom)");
    EXPECT_EQ(session->prompt(), "Olek> ");
    type("/chat-with obcy@localhost");
    EXPECT_EQ(lineText(session->title()), " obcy@localhost · not on the contact list");
}

TEST_F(SessionTest, ClearsAWindow) {
    session->noticed(kMe, "x");
    type("/clear");
    EXPECT_TRUE(session->entries().empty());
}

// Typing --------------------------------------------------------------------------------------------------------------

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
    client.calls.clear();
    session->showWindow(0);
    EXPECT_EQ(typingCalls(), "sendTyping|ala@localhost|olek@localhost|paused");
}

// Start and end
// --------------------------------------------------------------------------------------------------------

TEST_F(SessionTest, SaysHowToBeginWithoutAnAccount) {
    client.accountList.clear();
    session = std::make_unique<Session>(client, display, SessionOptions{});
    display.lines.clear();
    EXPECT_EQ(session->start(), "");
    EXPECT_EQ(display.lines.last(), "- there is no account yet; /account add you@server adds one");
    EXPECT_EQ(type("/roster"), "");
    EXPECT_EQ(display.lines.last(), "! there is no account yet; /account add you@server adds one");
}

TEST_F(SessionTest, TellsWhyItCannotStart) {
    client.refusals["start"] = "no such module";
    start({});
    EXPECT_EQ(reason, "no such module");
}

TEST_F(SessionTest, AsksForThePasswordOfANewAccountThenConnects) {
    SessionOptions options;
    options.account = QStringLiteral("Nowa@Localhost/Dom");
    options.status = QStringLiteral("away");
    start(options);
    EXPECT_TRUE(session->wantsSecret());
    EXPECT_EQ(session->prompt(), "password of Nowa@Localhost/Dom (not shown): ");
    EXPECT_EQ(type("tajne"), "addAccount|Nowa@Localhost/Dom|tajne\nsetStatus|nowa@localhost|away|");
    EXPECT_FALSE(session->wantsSecret());
    EXPECT_EQ(session->account(), "nowa@localhost");
    for (const LogEntry* entry : session->entries()) EXPECT_FALSE(entry->text.contains("tajne"));
}

TEST_F(SessionTest, AsksForAPasswordThatIsNotKnownBeforeItConnects) {
    client.settings.remove("XMPP/Pass");
    EXPECT_EQ(type("/away na chwilę"), "");
    EXPECT_EQ(session->prompt(), "password of ala@localhost (not shown): ");
    EXPECT_EQ(type("tajne"), "addAccount|ala@localhost|tajne\nsetStatus|ala@localhost|away|na chwilę");
    EXPECT_EQ(type("/online"), "setStatus|ala@localhost|online|");
    client.settings.remove("XMPP/Pass");
    EXPECT_EQ(type("/offline"), "setStatus|ala@localhost|offline|");
    client.settings["OKU/PasswordInRing"] = 1;
    EXPECT_EQ(type("/online"), "setStatus|ala@localhost|online|");
}

TEST_F(SessionTest, AsksForAPasswordThatIsNotKnownAtTheStart) {
    client.settings.remove("XMPP/Pass");
    SessionOptions options;
    options.status = QStringLiteral("online");
    start(options);
    EXPECT_TRUE(session->wantsSecret());
    EXPECT_EQ(type(""), "");
    EXPECT_FALSE(session->wantsSecret());
    EXPECT_EQ(heard(), "- cancelled");
}

TEST_F(SessionTest, TakesThePasswordOfTheEnvironment) {
    SessionOptions options;
    options.account = kMe;
    options.password = QStringLiteral("tajne");
    options.status = QStringLiteral("online");
    session = std::make_unique<Session>(client, display, options);
    client.calls.clear();
    session->start();
    EXPECT_EQ(client.takeCalls().filter(QRegularExpression("^(?!settingValue)")).join(u'\n'),
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
    session->cancelSecret();
    EXPECT_FALSE(session->wantsSecret());
    EXPECT_EQ(type("hej"), "");
    EXPECT_EQ(heard(), "- cancelled\n! no conversation is open; /chat-with WHO opens one");
}

TEST_F(SessionTest, UnloadsBeforeItEnds) {
    client.finishAtOnce = false;
    EXPECT_EQ(type("/quit"), "shutdown");
    EXPECT_EQ(type("/quit"), "");
    EXPECT_FALSE(display.over);
    session->finished();
    EXPECT_TRUE(display.over);
}

}  // namespace
}  // namespace oku::terminal::test
