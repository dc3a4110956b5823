// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a stranger may try: with the guard nothing of it happens, and without it the plugin does what it is told. So
// that each trick is known to work where nobody guards against it.
#include "tests/messenger/real/stage.h"

namespace oku::test {
namespace {

const QByteArray kStranger = "mallory@example.net/x";

class RealGuard : public RealStage {
protected:
    bool onList(const char* jid) { return core->contacts.list(entry()).has(QString::fromLatin1(jid)); }
    QByteArray unloadedDatabase() {
        core.reset();
        QFile file(directory.filePath(QStringLiteral("XMPPClientDB.xml")));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }
    /// The id of the plugin's question for what this client can do.
    QByteArray questionTo(const QByteArray& jid) {
        server.say("<presence from='" + jid +
                   "'><c xmlns='http://jabber.org/protocol/caps' node='http://bob.example/' ver='v1' "
                   "hash='sha-1'/></presence>");
        EXPECT_TRUE(waitFor([&] { return server.heardOf("disco#info"); }));
        for (const QByteArray& one : server.heard()) {
            if (!one.contains("disco#info")) continue;
            const qsizetype at = one.indexOf(" id=\"") + 5;
            return one.mid(at, one.indexOf('"', at) - at);
        }
        return {};
    }
    static QByteArray requestForAConfirmation(const QByteArray& from) {
        return "<iq type='get' id='p1' from='" + from +
               "'><confirm xmlns='http://jabber.org/protocol/http-auth' id='1' method='GET' url='http://x/'/></iq>";
    }
    /// Answers each question of the plugin at once; a box holds the plugin until then.
    void answerQuestionsWith(BoxButton button) {
        QObject::connect(&core->boxes, &MessageBoxes::opened, core.get(), [this, button](const MessageBox& box) {
            questions.append(box.text);
            EXPECT_TRUE(core->boxes.answer(box.number, button));
        });
    }
    static QByteArray capabilities(const QByteArray& from, const QByteArray& id, const QByteArray& feature) {
        return "<iq type='result' from='" + from + "' id='" + id +
               "'><query xmlns='http://jabber.org/protocol/disco#info' node='http://bob.example/#v1'><feature var='" +
               feature + "'/></query></iq>";
    }

    QStringList questions;
};

class Tricks : public RealGuard, public testing::WithParamInterface<bool> {
protected:
    bool guarded() const { return GetParam(); }
    void begin() { logIn(guarded()); }
};

TEST_P(Tricks, ARosterPush) {
    begin();
    server.say("<iq type='set' id='p1' from='" + kStranger +
               "'><query xmlns='jabber:iq:roster'><item jid='evil@example.net' subscription='both'/></query></iq>");
    settle();
    EXPECT_EQ(onList("evil@example.net"), !guarded());
    server.say("<iq type='set' id='p2' from='" + kStranger +
               "'><query xmlns='jabber:iq:roster'><item jid='bob@example.org' subscription='remove'/></query></iq>");
    settle();
    EXPECT_EQ(onList("bob@example.org"), guarded());
}

TEST_P(Tricks, ARosterError) {
    begin();
    server.say("<iq type='error' id='p1' from='" + kStranger +
               "'><query xmlns='jabber:iq:roster'><item jid='evil@example.net' subscription='both'/></query>"
               "<error type='cancel'/></iq>");
    settle();
    EXPECT_EQ(onList("evil@example.net"), !guarded());
}

TEST_P(Tricks, AnAnswerToAQuestionThatWentToSomebodyElse) {
    begin();
    const QByteArray id = questionTo("bob@example.org/dom");
    // Another contact claims the hash of this one's client.
    server.say("<presence from='eve@example.org/x'/>");
    server.say(capabilities("eve@example.org/x", id, "urn:evil"));
    server.say(capabilities("bob@example.org/dom", id, "urn:bob"));
    settle();
    const QByteArray database = unloadedDatabase();
    EXPECT_EQ(database.contains("urn:evil"), !guarded());
    EXPECT_EQ(database.contains("urn:bob"), guarded()) << "the first one to claim the hash is believed";
}

TEST_P(Tricks, NewMail) {
    begin();
    server.say("<iq type='set' id='p1' from='" + kStranger + "'><new-mail xmlns='google:mail:notify'/></iq>");
    settle();
    EXPECT_EQ(server.heardOf("google:mail:notify"), !guarded()) << "the mailbox is asked for";
}

TEST_P(Tricks, SharedStatus) {
    server.features = "<feature var='google:shared-status'/>";
    begin();
    server.say("<iq type='set' id='p1' from='" + kStranger +
               "'><query xmlns='google:shared-status'><show>dnd</show><status>cudze</status></query></iq>");
    settle();
    EXPECT_EQ(entry().status == Status::dnd, !guarded());
    EXPECT_EQ(entry().description == QStringLiteral("cudze"), !guarded());
}

TEST_P(Tricks, ARequestForAConfirmation) {
    begin();
    answerQuestionsWith(BoxButton::no);
    server.say(requestForAConfirmation(kStranger));
    settle();
    EXPECT_EQ(server.heardOf("p1"), !guarded());
    EXPECT_EQ(questions.isEmpty(), guarded());
}

TEST_P(Tricks, AnEndTagOfTheWrapper) {
    begin();
    server.say("</mrn><message type='chat' from='bob@example.org/dom'><body>za nim</body></message>");
    const bool came = waitFor([&] { return !received.isEmpty(); }, guarded() ? patience : 500);
    EXPECT_EQ(came, guarded()) << "without the guard the text is never whole for the plugin";
}

INSTANTIATE_TEST_SUITE_P(, Tricks, testing::Bool(),
                         [](const auto& test) { return test.param ? "Guarded" : "Unguarded"; });

TEST_F(RealGuard, LeavesTheQuestionOfAWebSiteToTheUser) {
    logIn(true);
    answerQuestionsWith(BoxButton::yes);
    server.say(requestForAConfirmation("site.example.net"));
    settle();
    ASSERT_EQ(questions.size(), 1);
    EXPECT_TRUE(questions.front().contains(QStringLiteral("http://x/"))) << questions.front().toStdString();
    EXPECT_TRUE(server.heardOf("<iq id=\"p1\" type=\"result\" to=\"site.example.net\">"));
}

TEST_F(RealGuard, AServerWithoutStarttlsGetsNoLoginData) {
    start(true, {});
    core->choices.set(entry(), Status::online, {});
    ASSERT_TRUE(waitFor([&] { return states.contains(QStringLiteral("offline")); }));
    EXPECT_FALSE(server.heardOf("<auth"));
    EXPECT_EQ(notices.size(), 1) << notices.join(u'\n').toStdString();
    EXPECT_FALSE(waitFor([&] { return server.connections() > 1; }, 4000)) << "it does not dial again";
}

TEST_F(RealGuard, AServerWithoutStarttlsGetsItWhereTheUserAllowedThat) {
    start(true);
    core->choices.set(entry(), Status::online, {});
    EXPECT_TRUE(waitFor([&] { return server.heardOf("<auth"); }));
}

}  // namespace
}  // namespace oku::test
