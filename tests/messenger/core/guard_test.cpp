// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/core/stage.h"

#include "host/oku/log.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/values/jid_text.h"
#include "messenger/core/xml/secrets.h"

namespace oku::test {
namespace {

const std::string kRosterPush =
    "<query xmlns='jabber:iq:roster'><item jid='evil@example.net' subscription='both'/></query>";

class Guard : public Stage {
protected:
    Guard() { writeAccount({}, QStringLiteral("alice@example.org/home")); }

    void begin(bool guarded = true) {
        auto given = options();
        given.stanzaGuard = guarded;
        start(given);
        logIn();
    }

    /// What is left of the text, without blanks at its ends; empty when all of it was taken out.
    std::string left(const std::string& text) {
        std::string result;
        inPlugin([&] { result = offerIncoming(text); });
        EXPECT_EQ(result.size(), text.size()) << "the length must stay";
        return QString::fromStdString(result).trimmed().toStdString();
    }

    void expectTakenOut(const std::string& text) { EXPECT_EQ(left(text), "") << text; }
    void expectLeft(const std::string& text) { EXPECT_EQ(left(text), text); }
};

TEST_F(Guard, TakesOutRosterPushesAndErrorsOfStrangers) {
    begin();
    for (const char* from : {"mallory@example.net", "mallory@example.org", "example.net", "bob@example.org/x"}) {
        for (const char* type : {"set", "result", "error", "get"}) {
            expectTakenOut(std::string("<iq type='") + type + "' from='" + from + "' id='a1'>" + kRosterPush + "</iq>");
        }
    }
}

TEST_F(Guard, LeavesRosterPushesOfTheAccountAndItsServer) {
    begin();
    for (const char* from :
         {"", " from='alice@example.org'", " from='Alice@Example.org/home'", " from='example.org'"}) {
        expectLeft(std::string("<iq type='set'") + from + " id='a1'>" + kRosterPush + "</iq>");
    }
}

TEST_F(Guard, SeesThroughEntitiesQuotesAndAttributeOrder) {
    begin();
    expectTakenOut(
        "<iq from=\"mallory@example&#46;net\" type = 'set' ><query a='>' "
        "xmlns='jabber:iq:&#x72;oster'/></iq>");
    expectTakenOut(
        "<iq type='set' from='mallory@example.net'><!-- </iq> --><x/><query xmlns='jabber:iq:roster'/></iq>");
    const std::string type = "<!DOCTYPE a [<!ENTITY b '>'> <!-- > ' --> <?c > ?> ]>";
    EXPECT_EQ(left(type + "<iq type='set' from='mallory@example.net'>" + kRosterPush + "</iq>"), type);
}

TEST_F(Guard, TakesEachBlankInAValueForASpaceAsThePluginDoes) {
    begin();
    offerOutgoing("<iq type='get' id='a b c' to='bob@example.org/x'><ping xmlns='urn:xmpp:ping'/></iq>");
    expectTakenOut("<iq type='result' id='a\nb\r\nc' from='mallory@example.net/x'/>");
    expectLeft("<iq type='result' id='a&#10;b c' from='mallory@example.net/x'/>");
    expectLeft("<iq type='result' id='a\tb c' from='bob@example.org/x'/>");
}

TEST_F(Guard, TakesOutAnswersFromAnotherAddressThanTheRequestWentTo) {
    begin();
    offerOutgoing("<iq type='get' id='q1' to='bob@example.org/x'><ping xmlns='urn:xmpp:ping'/></iq>");
    offerOutgoing("<iq type='set' id='q2'><query xmlns='jabber:iq:private'/></iq>");
    offerOutgoing("<iq type='get' id='q3' to='example.org'><ping xmlns='urn:xmpp:ping'/></iq>");
    expectTakenOut("<iq type='result' id='q1' from='mallory@example.net/x'/>");
    expectTakenOut("<iq type='result' id='q1' from='bob@example.org/other'/>");
    expectTakenOut("<iq type='result' id='q1'/>");
    expectTakenOut("<iq type='error' id='q2' from='mallory@example.net'/>");
    expectTakenOut("<iq type='result' id='q3' from='alice@example.org'/>");
    expectTakenOut("<iq type='set' id='q3' from='mallory@example.net'/>");
    expectLeft("<iq type='result' id='q1' from='Bob@example.org/x'/>");
    expectLeft("<iq type='error' id='q2' from='alice@example.org'/>");
    expectLeft("<iq type='result' id='q3' from='example.org'/>");
    expectLeft("<iq type='result' id='q3' from='mallory@example.net'/>");  // nobody waits for it any more
}

TEST_F(Guard, HidesOnlyTheIdOfAMessageThatCarriesARequests) {
    begin();
    offerOutgoing("<iq type='get' id='q1' to='bob@example.org/x'/>");
    EXPECT_EQ(left("<message id='q1' from='mallory@example.net'><body>hej</body></message>"),
              "<message         from='mallory@example.net'><body>hej</body></message>");
    EXPECT_EQ(left("<presence from='mallory@example.net' id='q1'/>"), "<presence from='mallory@example.net'        />");
    EXPECT_EQ(left("<message id='dummy-reg-result' from='m@example.net'/>"),
              "<message                       from='m@example.net'/>");
    expectLeft("<iq type='result' id='q1' from='bob@example.org/x'/>");
}

TEST_F(Guard, LetsAServerAnswerForItselfAtWhichAnAccountIsBeingRegistered) {
    begin();
    entry().line = {.domain = QStringLiteral("new.example"), .encrypted = true};
    const char* const request = "<iq type='set' id='r1'><query xmlns='jabber:iq:register'/></iq>";
    offerOutgoing(request);
    expectTakenOut("<iq type='result' id='r1' from='elsewhere.example'/>");
    expectLeft("<iq type='result' id='r1' from='New.example'/>");
}

TEST_F(Guard, TakesOutMailAndSharedStatusFromOutside) {
    begin();
    for (const char* child : {"<mailbox xmlns='google:mail:notify'/>", "<new-mail xmlns='google:mail:notify'/>",
                              "<query xmlns='google:shared-status'><show>dnd</show></query>"}) {
        expectTakenOut(std::string("<iq type='set' from='m@example.net'>") + child + "</iq>");
        expectLeft(std::string("<iq type='set' from='alice@example.org'>") + child + "</iq>");
    }
}

TEST_F(Guard, TakesOutLoginConfirmationsThatAPersonAsksFor) {
    begin();
    const std::string confirm = "<confirm xmlns='http://jabber.org/protocol/http-auth' url='http://x'/>";
    expectTakenOut("<iq type='get' from='mallory@example.net'>" + confirm + "</iq>");
    expectTakenOut("<message from='mallory@example.net/x'>" + confirm + "</message>");
    expectLeft("<iq type='get' from='files.example.net'>" + confirm + "</iq>");
}

TEST_F(Guard, TakesOutSizesOfFilesThatAreNoNumbers) {
    begin();
    std::string before;
    const auto offer = [&before](const std::string& file) {
        return "<iq type='set' id='o1' from='bob@example.org/x'>" + before +
               "<si xmlns='http://jabber.org/protocol/si' id='s'><feature/>" + file + "</si></iq>";
    };
    const auto blanked = [](const std::string& text) { return std::string(text.size(), ' '); };
    for (const char* size : {"size='5 (6'", "size=\"x.txt (5\"", "size=''", "size='0x5'", "size=' 5'", "size='5.'",
                             "size='&#53; (6'", "size='--5'", "size='123456789012345678901'"}) {
        EXPECT_EQ(left(offer("<file name='a' " + std::string(size) + "/>")),
                  offer("<file name='a' " + blanked(size) + "/>"));
        EXPECT_EQ(left(offer("<x><file " + std::string(size) + "></file></x>")),
                  offer("<x><file " + blanked(size) + "></file></x>"));
    }
    for (const char* size : {"size='5'", "size='-5'", "size='&#53;'", "size='18446744073709551615'", ""})
        expectLeft(offer("<file name='a (6' " + std::string(size) + "/>"));
    expectLeft("<iq type='set' id='o1' from='bob@example.org/x'><other><file size='5 (6'/></other></iq>");
    for (const char* decoy : {"<si/>", "<si xmlns='x'/>", "<si><file size='5'/></si>"}) {
        before = decoy;
        EXPECT_EQ(left(offer("<file name='a' size='5 (6'/>")), offer("<file name='a' " + blanked("size='5 (6'") + "/>"))
            << "the plugin looks for the one of its own kind";
    }
}

TEST_F(Guard, TakesOutEndTagsThatCloseNothing) {
    begin();
    EXPECT_EQ(left("</mrn><message from='a@b'/></stream:stream>"), "<message from='a@b'/>");
}

TEST_F(Guard, TakesOutNothingElseOfAPiece) {
    begin();
    EXPECT_EQ(
        left("<message from='a@b'/><iq type='set' from='m@x'>" + kRosterPush + "</iq><presence from='a@b'/>").size(),
        ("<message from='a@b'/><iq type='set' from='m@x'>" + kRosterPush + "</iq><presence from='a@b'/>").size());
    const std::string rest =
        left("<message from='a@b'/><iq type='set' from='m@x'>" + kRosterPush + "</iq><presence from='a@b'/>");
    EXPECT_EQ(rest.find("iq"), std::string::npos);
    EXPECT_NE(rest.find("<message from='a@b'/>"), std::string::npos);
    EXPECT_NE(rest.find("<presence from='a@b'/>"), std::string::npos);
}

TEST_F(Guard, CanBeSwitchedOff) {
    begin(false);
    expectLeft("<iq type='set' from='m@example.net'>" + kRosterPush + "</iq>");
    expectLeft("</mrn>");
}

TEST_F(Guard, BearsTextThatIsNoXml) {
    begin();
    for (const std::string text :
         {"<", "</", "<iq", "<iq type='", "<![CDATA[", "<!--", "<?", ">>><<<", "<a><b></a></b></c>",
          "&#xffffffff;<iq id='&#1114112;&;&#;&#x;'/>", "<iq ==''/>", "</></></>"}) {
        left(text);
    }
    std::string deep;
    for (int depth = 0; depth < 200000; ++depth) deep += "<a>";
    left(deep);
}

TEST_F(Guard, FoldsNoLettersButThoseOfAscii) {
    begin();
    for (const char* own : {"kasia@kraj.example", "KASIA@Kraj.example/\u212a", "KRAJ.example"}) {
        entry().settings->set(QStringLiteral("XMPP/User"), QStringLiteral("kasia@kraj.example/dom"));
        expectLeft(std::string("<iq type='set' from='") + own + "'>" + kRosterPush + "</iq>");
    }
    for (const char* other : {"\u212aasia@kraj.example", "kasia@\u212araj.example", "\u212araj.example",
                              "kasia@kraj.example\xc4", "&#x212a;raj.example"}) {
        expectTakenOut(std::string("<iq type='set' from='") + other + "'>" + kRosterPush + "</iq>");
    }
    offerOutgoing("<iq type='get' id='q1' to='kuba@example.net/dom'/>");
    expectTakenOut("<iq type='result' id='q1' from='\u212auba@example.net/dom'/>");
    expectTakenOut("<iq type='result' id='q1' from='kuba@example.net/Dom'/>");
    expectLeft("<iq type='result' id='q1' from='KUBA@example.net/dom'/>");
}

TEST(Addresses, AreOneByTheirBytesAndTheCaseOfAscii) {
    EXPECT_TRUE(sameAddress("Ala@X.Z", "aLA@x.z"));
    EXPECT_TRUE(sameAddress("\u017bółw", "\u017bółw"));
    EXPECT_FALSE(sameAddress("\u017bółw", "żółw"));
    EXPECT_FALSE(sameAddress("k", "\u212a"));
    EXPECT_FALSE(sameAddress("a", "ab"));
    EXPECT_FALSE(sameAddress("[", "{"));
    EXPECT_EQ(bareAddress("a@b/c/d"), "a@b");
    EXPECT_EQ(bareAddress("a@b"), "a@b");
}

TEST_F(Guard, ShowsNoSecretInTheConsole) {
    begin();
    QStringList shown;
    QObject::connect(
        &core->console, &Console::seen, core.get(),
        [&](const QString&, bool incoming, const QString& data) { shown.append((incoming ? u'<' : u'>') + data); });
    offerIncoming("<a/>");
    EXPECT_TRUE(shown.isEmpty());
    core->console.setOn(true);
    inPlugin([&] {
        offerIncoming("<challenge xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>c2VjcmV0</challenge><message/>");
        core->queries.sendRaw(entry(),
                              "<iq type='set'><query xmlns='jabber:iq:register'><username>al</username>"
                              "<password>tajne</password></query></iq>");
    });
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(shown[0],
              QStringLiteral("<<challenge xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>***</challenge><message/>"));
    EXPECT_EQ(shown[1], QStringLiteral("><iq type='set'><query xmlns='jabber:iq:register'>***</query></iq>"));
}

TEST_F(Guard, WritesNoSecretIntoTheLog) {
    auto given = options();
    given.verbose = true;
    start(given);
    QStringList lines;
    QObject::connect(&core->log, &LogService::logged, core.get(),
                     [&](const LogLine& line) { lines.append(line.text); });
    auto record = makeRecord<OKU_LOG_RECORD>();
    record.level = 5;
    for (const char16_t* text :
         {u"login with hunter22", u"out: <auth xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>AGEAYg==</auth>",
          u"out: <iq><query xmlns='jabber:iq:register'><username>al</username><password>x</password></query></iq>"}) {
        record.text = text;
        call(u"OKU/Log", wordOf(&record));
    }
    EXPECT_EQ(lines, (QStringList{QStringLiteral("login with ***"),
                                  QStringLiteral("out: <auth xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>***</auth>"),
                                  QStringLiteral("out: <iq><query xmlns='jabber:iq:register'>***</query></iq>")}));
}

}  // namespace
}  // namespace oku::test
