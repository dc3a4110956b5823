// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the host lets in and out in each state of a line, and that it tells of what it took away.
#include "messenger/core/values/setting_keys.h"
#include "tests/messenger/core/stage.h"

namespace oku::test {
namespace {

enum State { clear, tls, authorized, bound };

const std::string kStarttls = "<starttls xmlns='urn:ietf:params:xml:ns:xmpp-tls'/>";

class LineStates : public Stage {
protected:
    LineStates() {
        writeAccount({}, QStringLiteral("alice@example.org/home"));
        start();
    }

    void enter(State state) {
        entry().line = {.encrypted = state != clear, .bound = state == bound};
        account().flags = OKU_FLAG_CONNECTED | (state == clear ? 0 : OKU_FLAG_ENCRYPTION_ACTIVATED) |
                          (state >= authorized ? OKU_FLAG_AUTHORIZED : OKU_FLAG_CONNECTING);
        notices.clear();
    }
    void allowClearText() { entry().settings->set(QString::fromUtf16(setting::allowClearText), 1); }
    /// What is left of the text, without blanks at its ends.
    std::string left(const std::string& text) {
        std::string result;
        inPlugin([&] { result = offerIncoming(text); });
        EXPECT_EQ(result.size(), text.size()) << "the length must stay";
        return QString::fromStdString(result).trimmed().toStdString();
    }
};

struct Row {
    const char* element;
    const char* passes;  ///< for each state: 'p' passes, '-' is taken out
};

const Row kRows[] = {
    {"<stream:stream xmlns='jabber:client' id='1'/>", "pppp"},
    {"<stream:features><starttls xmlns='urn:ietf:params:xml:ns:xmpp-tls'/></stream:features>", "pppp"},
    {"<stream:features xmlns='urn:other'/>", "pppp"},
    {"<stream:features/>", "pppp"},
    {"<features/>", "-ppp"},
    {"<s:features xmlns:s='http://etherx.jabber.org/streams'/>", "-ppp"},
    {"<Stream:Features/>", "-ppp"},
    {"<proceed xmlns='urn:ietf:params:xml:ns:xmpp-tls'/>", "pppp"},
    {"<proceed/>", "pppp"},
    {"<t:proceed xmlns:t='urn:ietf:params:xml:ns:xmpp-tls'/>", "-ppp"},
    {"<failure xmlns='urn:ietf:params:xml:ns:xmpp-tls'/>", "pppp"},
    {"<failure xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><not-authorized/></failure>", "pppp"},
    {"<success xmlns='urn:ietf:params:xml:ns:xmpp-sasl'/>", "-ppp"},
    {"<success/>", "-ppp"},
    {"<challenge xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>bm9uY2U9IngiCg==</challenge>", "-ppp"},
    {"<compressed xmlns='http://jabber.org/protocol/compress'/>", "-ppp"},
    {"<stream:error><conflict xmlns='urn:ietf:params:xml:ns:xmpp-streams'/></stream:error>", "pppp"},
    {"<error/>", "-ppp"},
    {"<message from='bob@example.org'><body>hej</body></message>", "---p"},
    {"<message/>", "---p"},
    {"<message xmlns='urn:other' from='bob@example.org'/>", "---p"},
    {"<message xmlns='jabber:client' from='example.org' id='asked' type='result'/>", "---?"},
    {"<c:message xmlns:c='jabber:client' from='bob@example.org'/>", "-ppp"},
    {"<Message from='bob@example.org'/>", "-ppp"},
    {"<presence from='bob@example.org'/>", "---p"},
    {"<presence type='subscribe' from='bob@example.org'/>", "---p"},
    {"<iq type='get' from='example.org' id='p'><ping xmlns='urn:xmpp:ping'/></iq>", "---p"},
    {"<iq type='set' id='p'><query xmlns='jabber:iq:roster'><item jid='bob@example.org'/></query></iq>", "---p"},
    {"<iq type='set' from='eve@example.net' id='p'><query xmlns='jabber:iq:roster'/></iq>", "----"},
    {"<iq type='result' id='asked'/>", "-ppp"},
    {"<iq type='error' from='example.org' id='asked'><error/></iq>", "-ppp"},
    {"<iq type='result' from='eve@example.net' id='asked'/>", "----"},
    {"<iq type='set' id='asked'/>", "----"},
    {"<iq type='result' id='unasked'/>", "---p"},
    {"<iq type='result'><bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'/></iq>", "---p"},
    {"<iq/>", "---p"},
    {"<iq:iq xmlns:iq='jabber:client' type='set'/>", "-ppp"},
    {"<x xmlns='urn:other'/>", "-ppp"},
    {"</mrn>", "----"},
};

TEST_F(LineStates, LetInWhatBelongsToThem) {
    for (const Row& row : kRows) {
        for (const State state : {clear, tls, authorized, bound}) {
            if (row.passes[state] == '?') continue;  // passes without its id, see the test below
            enter(bound);
            offerOutgoing("<iq type='get' id='asked'><query xmlns='jabber:iq:private'/></iq>");
            enter(state);
            EXPECT_EQ(left(row.element), row.passes[state] == 'p' ? row.element : "") << row.element << ' ' << state;
        }
    }
}

TEST_F(LineStates, LetInEverythingWhereTheUserAllowedClearText) {
    allowClearText();
    for (const Row& row : kRows) {
        if (std::string_view(row.passes).ends_with('-') || std::string_view(row.passes).ends_with('?')) continue;
        for (const State state : {clear, tls, authorized}) {
            enter(state);
            EXPECT_EQ(left(row.element), row.element) << state;
        }
    }
    EXPECT_TRUE(notices.isEmpty());
}

TEST_F(LineStates, ShowNoIdOfARequestInAnythingButItsAnswer) {
    enter(bound);
    offerOutgoing("<iq type='get' id='asked'/>");
    EXPECT_EQ(left("<message id='asked' from='b@c'/>"), "<message            from='b@c'/>");
    EXPECT_EQ(left("<x id='asked'/>"), "<x           />");
    enter(clear);
    EXPECT_EQ(left("<stream:features id='asked'/>"), "<stream:features           />");
    EXPECT_EQ(left("<failure id='dummy-reg-result'/>"), "<failure                      />");
}

TEST_F(LineStates, LetInNothingBehindAProceedInClear) {
    for (const char* proceed : {"<proceed/>", "<proceed xmlns='urn:x' a='b'>c</proceed>"}) {
        enter(clear);
        EXPECT_EQ(left(std::string("<stream:features/>") + proceed + "<stream:features/><failure/>x"),
                  std::string("<stream:features/>") + proceed);
        EXPECT_EQ(notices.size(), 1);
    }
    enter(clear);
    EXPECT_EQ(left("<x:proceed/><stream:features/>"), "");
    enter(tls);
    EXPECT_EQ(left("<proceed/><stream:features/>"), "<proceed/><stream:features/>");
}

TEST_F(LineStates, LetInNothingInClearThatCouldBeReadInTwoWays) {
    for (const std::string inside :
         {"<!-- <a> -->", "<![CDATA[</stream:features><message/>]]>", "<?a </stream:features> ?>"}) {
        enter(clear);
        EXPECT_EQ(left("<stream:features>" + inside + "</stream:features>"), "") << inside;
        EXPECT_EQ(left(inside + "<proceed/>"), "<proceed/>");
    }
    for (const std::string text :
         {"<stream:features><message/>", "<message/></stream:features>", "<stream:features", "<"}) {
        enter(clear);
        EXPECT_EQ(left(text), "") << text;
    }
    enter(clear);
    EXPECT_EQ(left("xml version='1.0'?><stream:stream a='&gt;'/> text <stream:features/>"),
              "<stream:stream a='&gt;'/>      <stream:features/>");
    EXPECT_TRUE(notices.isEmpty()) << "what is left of a declaration is nothing to tell of";
}

TEST_F(LineStates, TellOnceOfWhatWasTakenOut) {
    enter(clear);
    EXPECT_EQ(left("<success/><message/>"), "");
    EXPECT_EQ(left("<presence/>"), "");
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices[0].startsWith(QStringLiteral("Zanim połączenie było szyfrowane"))) << notices[0].toStdString();
    enter(tls);
    EXPECT_EQ(left("<message/><message/>"), "");
    EXPECT_EQ(left("<iq/>"), "");
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices[0].startsWith(QStringLiteral("Zanim logowanie się skończyło"))) << notices[0].toStdString();
}

TEST_F(LineStates, AreBoundBehindTheAnswerToTheSession) {
    enter(authorized);
    offerOutgoing("<iq type='set' id='s1'><session xmlns='urn:ietf:params:xml:ns:xmpp-session'/></iq>");
    const std::string answer = "<iq type='result' id='s1'/>";
    EXPECT_EQ(left("<message/>" + answer + "<message from='b@c'/>"), answer + "<message from='b@c'/>");
    EXPECT_EQ(left("<message/>"), "") << "it is the plugin that says so in the end";
    offerOutgoing("<iq type='set' id='s2'><session xmlns='urn:ietf:params:xml:ns:xmpp-session'/></iq>");
    EXPECT_EQ(left("<iq type='error' id='s2'/><message/>"), "<iq type='error' id='s2'/>");
    offerOutgoing("<iq type='set' id='s3'><bind xmlns='urn:ietf:params:xml:ns:xmpp-bind'/></iq>");
    EXPECT_EQ(left("<iq type='result' id='s3'/><message/>"), "<iq type='result' id='s3'/>");
    raise(OKU_HOOK_SESSION_BOUND, OKU_PHASE_NOTICE);
    EXPECT_EQ(left("<message/>"), "<message/>");
}

TEST_F(LineStates, KeepWhyTheServerOpensNoSession) {
    const auto refuse = [&](const char* error) {
        enter(authorized);
        offerOutgoing("<iq type='set' id='s1'><session xmlns='urn:ietf:params:xml:ns:xmpp-session'/></iq>");
        left(std::string("<iq type='error' id='s1'>") + error + "</iq>");
        return entry().reason;
    };
    EXPECT_EQ(refuse("<error type='wait'><conflict xmlns='x'/><text/></error>"),
              QStringLiteral("Serwer odmówił otwarcia sesji. (conflict)"));
    EXPECT_EQ(refuse("<error/>"), QStringLiteral("Serwer odmówił otwarcia sesji."));
    EXPECT_EQ(refuse(""), QStringLiteral("Serwer odmówił otwarcia sesji."));
}

TEST_F(LineStates, LetOutOnlyWhatLeadsToTlsOrToTheEnd) {
    for (const std::string& text :
         {std::string("<?xml version=\"1.0\"?><stream:stream xmlns:stream=\"x\" to=\"example.org\" >"), kStarttls,
          std::string("<stream:stream to='example.org'>"), std::string("</stream:stream>"), std::string(" ")}) {
        enter(clear);
        EXPECT_FALSE(offerOutgoing(text)) << text;
        EXPECT_TRUE(notices.isEmpty());
    }
    for (const std::string& text :
         {std::string("<message to='b@c'/>"), std::string("<presence/>"), std::string("<iq type='get' id='1'/>"),
          std::string("<auth xmlns='urn:ietf:params:xml:ns:xmpp-sasl'/>"), kStarttls + "<presence/>",
          "<presence/>" + kStarttls, std::string("<stream:stream to='a'><presence/>"), std::string("<starttls a='b'>"),
          std::string("<stream:streams/>"), std::string("<compress/>"), std::string("text"),
          std::string("<?xml version='1.0'?>text"), std::string("</stream:stream> x"), std::string("<")}) {
        enter(clear);
        EXPECT_TRUE(offerOutgoing(text)) << text;
        EXPECT_TRUE(offerOutgoing(text)) << text;
        EXPECT_EQ(notices.size(), 1) << text;
        EXPECT_TRUE(entry().reason.contains(QStringLiteral("nie jest szyfrowane"))) << entry().reason.toStdString();
        EXPECT_TRUE(logged("status 7 ")) << "what cannot go on must not stand open";
        for (const State state : {tls, authorized, bound}) {
            enter(state);
            EXPECT_FALSE(offerOutgoing(text)) << text;
        }
    }
    allowClearText();
    enter(clear);
    EXPECT_FALSE(offerOutgoing("<message to='b@c'/>"));
}

TEST_F(LineStates, EndNoConnectionWhereThereIsNone) {
    for (const std::uint32_t flags : {0U, static_cast<std::uint32_t>(OKU_FLAG_CONNECTING)}) {
        enter(clear);
        account().flags = flags;
        EXPECT_TRUE(offerOutgoing("<iq type='set'><close xmlns='http://jabber.org/protocol/ibb' sid='s'/></iq>"));
        EXPECT_TRUE(notices.isEmpty());
        EXPECT_FALSE(logged("status 7 ")) << "the next connection is still to come";
        enter(bound);
        EXPECT_FALSE(offerOutgoing("<message to='b@c'/>")) << "and is a line like any other";
    }
}

TEST_F(LineStates, EndASessionInClearThatIsNotAllowedAnyMore) {
    allowClearText();
    enter(clear);
    account().flags = OKU_FLAG_CONNECTED | OKU_FLAG_AUTHORIZED;
    EXPECT_EQ(left("<message/>"), "<message/>");
    EXPECT_FALSE(logged("status 7 "));
    entry().settings->set(QString::fromUtf16(setting::allowClearText), 0);
    EXPECT_TRUE(logged("status 7 "));
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices[0].contains(QStringLiteral("już takie być nie może"))) << notices[0].toStdString();
    EXPECT_EQ(entry().reason, notices[0]);
}

TEST_F(LineStates, GoOnByTlsWhateverIsSaidOfClearText) {
    allowClearText();
    enter(bound);
    entry().settings->set(QString::fromUtf16(setting::allowClearText), 0);
    EXPECT_FALSE(logged("status 7 "));
    EXPECT_TRUE(notices.isEmpty());
}

TEST_F(LineStates, AreToldOfEachAccount) {
    enter(clear);
    EXPECT_FALSE(entry().encrypted());
    enter(tls);
    EXPECT_TRUE(entry().encrypted());
    account().flags = 0;
    EXPECT_FALSE(entry().encrypted()) << "there is no stream any more";
    account().flags = OKU_FLAG_AUTHORIZED;
    EXPECT_EQ(entry().currentState(), ConnectionState::offline) << "a success that comes behind the end logs nobody in";
}

}  // namespace
}  // namespace oku::test
