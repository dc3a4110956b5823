// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the messenger tells, in words.
#include <QCoreApplication>

#include "tests/messenger/terminal/session_fixture.h"

namespace oku::terminal::test {
namespace {

TEST_F(SessionTest, TellsEachStepOfAConnection) {
    emit messenger.accounts().connectionChanged(kMe, ConnectionState::connecting, {});
    emit messenger.accounts().connectionChanged(kMe, ConnectionState::encrypted, {});
    emit messenger.accounts().connectionChanged(kMe, ConnectionState::online, {});
    emit messenger.accounts().connectionChanged(kMe, ConnectionState::offline, "the server refused the password");
    EXPECT_EQ(heard(),
              "- connecting to the server\n- the connection is encrypted\n- ready, the contact list is here\n"
              "! offline: the server refused the password");
}

TEST_F(SessionTest, TellsOfALoginThatIsNotEncrypted) {
    messenger.accountList[0].encrypted = false;
    emit messenger.accounts().connectionChanged(kMe, ConnectionState::connected, {});
    emit messenger.accounts().connectionChanged(kMe, ConnectionState::authorized, {});
    emit messenger.accounts().connectionChanged(kMe, ConnectionState::online, {});
    EXPECT_EQ(heard(),
              "- connected to the server\n- logged in (not encrypted)\n"
              "- ready, the contact list is here (not encrypted)");
    messenger.accountList[0].connection = ConnectionState::online;
    messenger.accountList[0].status = Status::online;
    session->submit("/account");
    EXPECT_TRUE(QString::fromStdString(heard()).contains("ready, the contact list is here (not encrypted)"));
    for (const int width : {80, 30, 10}) {
        display.width = width;
        QString bar;
        for (const Span& span : session->view().status()) bar += span.text;
        EXPECT_TRUE(bar.contains("(not encrypted)")) << bar.toStdString();
    }
    messenger.accountList[0].encrypted = true;
    QString bar;
    for (const Span& span : session->view().status()) bar += span.text;
    EXPECT_FALSE(bar.contains("encrypted")) << bar.toStdString();
}

TEST_F(SessionTest, TellsNoReasonTwice) {
    emit messenger.windows().noticed(kMe, "wrong password");
    emit messenger.accounts().connectionChanged(kMe, ConnectionState::offline, "wrong password");
    EXPECT_EQ(heard(), "! wrong password\n! offline");
    emit messenger.accounts().connectionChanged(kMe, ConnectionState::connecting, {});
    emit messenger.accounts().connectionChanged(kMe, ConnectionState::offline, "wrong password");
    EXPECT_EQ(heard(), "- connecting to the server\n! offline: wrong password");
}

TEST_F(SessionTest, TellsPresencesOnce) {
    emit messenger.roster().presenceReceived(kMe, "olek@localhost", resource("dom", Status::away, 5, "Zaraz\nwracam"));
    emit messenger.roster().presenceReceived(kMe, "olek@localhost", resource("dom", Status::away, 5, "Zaraz\nwracam"));
    emit messenger.roster().presenceReceived(kMe, "olek@localhost", resource("dom", Status::dnd));
    emit messenger.roster().presenceReceived(kMe, "olek@localhost", resource("dom", Status::offline));
    emit messenger.roster().presenceReceived(kMe, "olek@localhost", resource("dom", Status::offline));
    emit messenger.roster().presenceReceived(kMe, "obcy@localhost", resource("", Status::online));
    EXPECT_EQ(heard(),
              "◐ Olek (dom): away — Zaraz⏎wracam\n⊘ Olek (dom): busy\n○ Olek (dom): offline\n"
              "● obcy@localhost: available");
}

TEST_F(SessionTest, TellsAPresenceAnewAfterAReconnection) {
    emit messenger.roster().presenceReceived(kMe, "olek@localhost", resource("dom", Status::away));
    emit messenger.accounts().connectionChanged(kMe, ConnectionState::offline, {});
    heard();
    emit messenger.roster().presenceReceived(kMe, "olek@localhost", resource("dom", Status::away));
    EXPECT_EQ(heard(), "◐ Olek (dom): away");
}

TEST_F(SessionTest, LeavesItsOwnPresenceOut) {
    messenger.settings["XMPP/User"] = "ala@localhost/tu";
    emit messenger.roster().presenceReceived(kMe, kMe, resource("tu", Status::online));
    EXPECT_EQ(heard(), "");
    emit messenger.roster().presenceReceived(kMe, kMe, resource("telefon", Status::online));
    EXPECT_EQ(heard(), "● ala@localhost (telefon): available");
}

TEST_F(SessionTest, TellsWhatChangedOfAContact) {
    emit messenger.accounts().connectionChanged(kMe, ConnectionState::online, {});
    heard();
    Contact olek = messenger.contactLists[kMe][0];
    olek.status = Status::online;
    emit messenger.roster().contactChanged(kMe, olek);
    EXPECT_EQ(heard(), "");
    olek.name = QStringLiteral("Oleczek");
    olek.group = QStringLiteral("Dom");
    olek.subscription = QStringLiteral("to");
    olek.waiting = true;
    messenger.contactLists[kMe][0] = olek;
    emit messenger.roster().contactChanged(kMe, olek);
    EXPECT_EQ(heard(),
              "- the contact Olek is now called Oleczek\n- the contact Oleczek is now in the group Dom\n"
              "- contact Oleczek: you see them, they do not see you, waits for consent");
    emit messenger.roster().contactChanged(kMe, contact("nowy@localhost", "Nowy", "Dom"));
    EXPECT_EQ(heard(), "+ new contact: Nowy <nowy@localhost> in the group Dom");
    emit messenger.roster().contactRemoved(kMe, "nowy@localhost");
    EXPECT_EQ(heard(), "- contact removed: Nowy <nowy@localhost>");
}

TEST_F(SessionTest, IsQuietAboutContactsWhileTheListComes) {
    emit messenger.accounts().connectionChanged(kMe, ConnectionState::authorized, {});
    heard();
    emit messenger.roster().contactChanged(kMe, contact("nowy@localhost", "Nowy", "Dom"));
    EXPECT_EQ(heard(), "");
}

TEST_F(SessionTest, TellsMessagesWithWhatIsSpecialAboutThem) {
    Message message = incoming("ala@localhost", "olek@localhost", "hej\x1b[2J");
    emit messenger.talk().messageReceived(kMe, message);
    EXPECT_EQ(heard(), "Olek hej\uFFFD[2J");
    message.delayed = QDateTime(QDate(2026, 11, 20), QTime(8, 1));
    message.subject = QStringLiteral("Temat");
    message.body = QStringLiteral("raz\ndwa");
    emit messenger.talk().messageReceived(kMe, message);
    EXPECT_EQ(heard(), "Olek (written 20.11.2026 08:01) [Temat] raz\ndwa");
    message = incoming("ala@localhost", "olek@localhost", "/me macha");
    emit messenger.talk().messageReceived(kMe, message);
    EXPECT_EQ(heard(), "Olek * Olek macha");
    Message sent = outgoing("ala@localhost", "olek@localhost", "no", 7);
    sent.state = DeliveryState::queued;
    emit messenger.talk().messageQueued(kMe, sent);
    EXPECT_EQ(heard(), "Olek (waits for the next login) no");
    sent.state = DeliveryState::unconfirmed;
    emit messenger.talk().messageStateChanged(kMe, sent);
    EXPECT_EQ(
        heard(),
        "! message 7 to Olek is not confirmed: the connection broke after it was sent — /resend 7 sends it again");
    sent.state = DeliveryState::sent;
    emit messenger.talk().messageStateChanged(kMe, sent);
    EXPECT_EQ(heard(), "- message 7 to Olek was sent");
}

TEST_F(SessionTest, ShowsAWaitingMessageOnceWhenItIsSent) {
    type("/chat-with Olek");
    Message message = outgoing("ala@localhost", "olek@localhost", "no", 7);
    message.state = DeliveryState::queued;
    emit messenger.talk().messageQueued(kMe, message);
    emit messenger.talk().messageReceived(kMe, incoming("ala@localhost", "olek@localhost", "hej"));
    message.state = DeliveryState::sent;
    emit messenger.talk().messageSent(kMe, message);
    ASSERT_EQ(session->log().entries().size(), 2U);
    EXPECT_EQ(session->log().entries()[0]->text, "no");
    // Sent once more, it stands below.
    emit messenger.talk().messageSent(kMe, message);
    EXPECT_EQ(session->log().entries().size(), 3U);
}

TEST_F(SessionTest, TellsInPlainLinesThatAWaitingMessageIsSent) {
    SessionOptions options;
    options.oneWindow = true;
    start(options);
    Message message = outgoing("ala@localhost", "olek@localhost", "no", 7);
    message.state = DeliveryState::queued;
    emit messenger.talk().messageQueued(kMe, message);
    message.state = DeliveryState::sent;
    emit messenger.talk().messageSent(kMe, message);
    EXPECT_EQ(heard(), "Olek (waits for the next login) no\nOlek no");
}

TEST_F(SessionTest, AsksAboutAuthorizationsAndBoxes) {
    emit messenger.roster().authorizationRequested(kMe, "obcy@localhost");
    EXPECT_EQ(heard(),
              "? obcy@localhost asks for authorization to see your presence: /authorize obcy@localhost or /deny "
              "obcy@localhost");
    emit messenger.roster().authorizationRequested(kMe, "obcy@localhost");
    EXPECT_EQ(heard(), "");
    emit messenger.roster().authorizationRequested(kMe, "inny@localhost");
    EXPECT_NE(heard(), "");
    type("/deny obcy@localhost");
    heard();
    emit messenger.roster().authorizationRequested(kMe, "obcy@localhost");
    EXPECT_NE(heard(), "") << "it was answered, and asks anew";
    emit messenger.accounts().connectionChanged(kMe, ConnectionState::offline, {});
    heard();
    emit messenger.roster().authorizationRequested(kMe, "obcy@localhost");
    EXPECT_NE(heard(), "") << "it still waits at the next login";
    MessageBox box;
    box.number = 4;
    box.title = QStringLiteral("Pewnyś?");
    box.text = QStringLiteral("Usunąć?");
    box.style = BoxStyle::question;
    emit messenger.windows().boxOpened(box);
    EXPECT_EQ(heard(), "? Pewnyś?: Usunąć?\nanswer: /answer 4 yes or /answer 4 no");
    QCoreApplication::processEvents();
    EXPECT_TRUE(messenger.takeCalls().filter("answerBox").isEmpty());
}

TEST_F(SessionTest, ConfirmsANoticeOnceItIsShown) {
    MessageBox box;
    box.number = 5;
    box.title = QStringLiteral("Błąd");
    box.text = QStringLiteral("Nie działa");
    box.style = BoxStyle::error;
    emit messenger.windows().boxOpened(box);
    EXPECT_EQ(heard(), "! Błąd: Nie działa");
    EXPECT_TRUE(messenger.takeCalls().filter("answerBox").isEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(messenger.takeCalls().filter("answerBox").join(u' '), "answerBox|5|1");
    box.style = BoxStyle::information;
    emit messenger.windows().boxOpened(box);
    EXPECT_EQ(heard(), "- Błąd: Nie działa") << "no alarm";
}

TEST_F(SessionTest, TellsNoticesCertificatesConsoleAndAnswers) {
    emit messenger.windows().noticed(kMe, "Serwer mówi");
    emit messenger.accounts().certificateRefused(kMe, {"srv", "expired.", "AA:BB"});
    emit messenger.wire().xmlSeen(kMe, true, "<a/>\n");
    emit messenger.wire().xmlSeen(kMe, false, "<b/>");
    emit messenger.wire().logged({0, "XMPP", "not shown"});
    EXPECT_EQ(heard(),
              "! Serwer mówi\n! the certificate of srv was refused: expired; SHA-256 fingerprint: AA:BB\n"
              "/pin accepts this certificate from now on; then /online\n⇐ <a/>\n⇒ <b/>");
    ContactInfo info;
    info.jid = QStringLiteral("olek@localhost");
    info.resource = resource("dom", Status::away, 5, "opis");
    info.client = QStringLiteral("protoLink");
    info.version = QStringLiteral("1.0");
    info.features = QStringList{"a", "b"};
    emit messenger.roster().infoReceived(kMe, info);
    emit messenger.roster().infoComplete(kMe, "olek@localhost");
    EXPECT_EQ(heard(),
              "Olek/dom\n  presence: ◐ away — opis\n  priority: 5\n  client: protoLink 1.0\n  features: a, b\n"
              "- Olek: that is all that is known");
    ServerInfo server;
    server.domain = QStringLiteral("localhost");
    server.identities = QStringList{"server/im Prosody"};
    server.features = QStringList{"x"};
    emit messenger.roster().serverInfoReceived(kMe, server);
    EXPECT_EQ(heard(), "localhost\n  server/im Prosody\n  features: x");
}

TEST_F(SessionTest, ShowsTheLogWhenItIsVerbose) {
    SessionOptions options;
    options.verbose = true;
    start(options);
    emit messenger.wire().logged({0, "XMPP", "line"});
    EXPECT_EQ(heard(), "# [XMPP] line");
}

}  // namespace
}  // namespace oku::terminal::test
