// What the messenger tells, in words.
#include <QCoreApplication>

#include "tests/messenger/terminal/session_fixture.h"

namespace oku::terminal::test {
namespace {

TEST_F(SessionTest, TellsEachStepOfAConnection) {
    session->connectionChanged(kMe, ConnectionState::connecting, {});
    session->connectionChanged(kMe, ConnectionState::encrypted, {});
    session->connectionChanged(kMe, ConnectionState::online, {});
    session->connectionChanged(kMe, ConnectionState::offline, "the server refused the password");
    EXPECT_EQ(heard(),
              "- connecting to the server\n- the connection is encrypted\n- ready, the contact list is here\n"
              "! offline: the server refused the password");
}

TEST_F(SessionTest, TellsOfALoginThatIsNotEncrypted) {
    client.accountList[0].encrypted = false;
    session->connectionChanged(kMe, ConnectionState::connected, {});
    session->connectionChanged(kMe, ConnectionState::authorized, {});
    session->connectionChanged(kMe, ConnectionState::online, {});
    EXPECT_EQ(heard(),
              "- connected to the server\n- logged in (not encrypted)\n"
              "- ready, the contact list is here (not encrypted)");
    client.accountList[0].connection = ConnectionState::online;
    client.accountList[0].status = Status::online;
    session->submit("/account");
    EXPECT_TRUE(QString::fromStdString(heard()).contains("ready, the contact list is here (not encrypted)"));
    for (const int width : {80, 30, 10}) {
        display.width = width;
        QString bar;
        for (const Span& span : session->status()) bar += span.text;
        EXPECT_TRUE(bar.contains("(not encrypted)")) << bar.toStdString();
    }
    client.accountList[0].encrypted = true;
    QString bar;
    for (const Span& span : session->status()) bar += span.text;
    EXPECT_FALSE(bar.contains("encrypted")) << bar.toStdString();
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
    session->authorizationRequested(kMe, "obcy@localhost");
    EXPECT_EQ(heard(), "");
    session->authorizationRequested(kMe, "inny@localhost");
    EXPECT_NE(heard(), "");
    type("/deny obcy@localhost");
    heard();
    session->authorizationRequested(kMe, "obcy@localhost");
    EXPECT_NE(heard(), "") << "it was answered, and asks anew";
    session->connectionChanged(kMe, ConnectionState::offline, {});
    heard();
    session->authorizationRequested(kMe, "obcy@localhost");
    EXPECT_NE(heard(), "") << "it still waits at the next login";
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

}  // namespace
}  // namespace oku::terminal::test
