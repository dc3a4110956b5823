// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Making an account in the band (XEP-0077): a connection in the mode that only the account wizard sets.
#include <gtest/gtest.h>

#include "router/namespaces.h"
#include "router/negotiation.h"
#include "stream/socket_events.h"
#include "tests/support/fake_platform.h"
#include "tests/support/recording_host.h"

using namespace protolink;

namespace {

using harness::render;

struct Quiet : StreamListener, SessionListener {
    void forgetSession() override {}
    void onStateReset() override {}
    void onSocketConnected() override {}
    void onSocketClosed() override {}
    void routeElements(XmlSequence&) override {}
    void publishStatus(Status, const std::u16string&) override {}
    void onServerDiscoInfo(xmlElement&) override {}
    void rosterResult(xmlElement&) override {}
};

struct Dialog : CXMLTarget {
    void onXMLResult(xmlElement& element, void*) override { type = element.GetAttribute(u"type"); }
    std::u16string type = u"none";
};

OKU_WORD OKU_CALL ignore(OKU_WORD, OKU_WORD, OKU_WORD) { return 0; }

class RegistrationTest : public testing::Test {
protected:
    RegistrationTest() : client({u"r", u"c", u"XMPP"}, Host(host.table(), host.module)) {
        harness::world() = harness::FakeWorld();
        host.sockets["XMPP/Socket/1"] = {};
        host.onEvent = [this](const harness::Event& event) {
            if (event.category == harness::Event::Category::Sent) {
                events.push_back(event.line.head + " " + event.data);
            } else if (event.category == harness::Event::Category::Plain) {
                events.push_back(render(event.line));
            }
        };
        output.attach(connection);
        client.netId = 1;
        client.socketName = u"XMPP/Socket/1";
        client.jid = parseJID(u"new@example.org/home");
        client.password = u"a<b";
        client.flags = FLAG_CONNECTED | FLAG_CONNECTING;
        connection.registerMode = 1;
        dispatcher.addTarget(dialog, u"dummy-reg-result", nullptr);
    }

    /// The features that the server offers, with in-band registration among them or not.
    Routing offer(bool withRegistration, bool starttls = false) {
        xmlElement features(u"stream:features");
        if (starttls) features.SetChild(child(u"starttls", ns::kTls));
        if (withRegistration) features.SetChild(child(u"register", u"http://jabber.org/features/iq-register"));
        return negotiation.onFeatures(Stanza::of(features));
    }
    static xmlElement child(std::u16string_view name, std::u16string_view xmlns) {
        xmlElement element{std::u16string(name)};
        element.SetAttribute(u"xmlns", xmlns);
        return element;
    }
    /// The server's answer to the request that was sent last.
    void answer(std::u16string_view type) {
        const auto& sent = events.back();
        const auto start = sent.find("id=\"") + 4;
        const auto id = sent.substr(start, sent.find('"', start) - start);
        xmlElement reply(u"iq");
        reply.SetAttribute(u"id", std::u16string(id.begin(), id.end()));
        reply.SetAttribute(u"type", type);
        events.clear();
        EXPECT_TRUE(dispatcher.dispatch(reply));
    }

    harness::RecordingHost host;
    Quiet quiet;
    Dialog dialog;
    std::vector<std::string> events;
    CClientClass client;
    CZipStream zip;
    StreamOutput output{client, zip};
    CProtoEventDispatcher dispatcher;
    Reconnection reconnection{client, ignore};
    Connection connection{client, zip, output, reconnection, quiet};
    SocketEvents socketEvents{client, connection, reconnection, quiet};
    Requests requests{dispatcher, output};
    LoginProgress login;
    Encryption encryption{client, output};
    Registration registration{client, connection, reconnection, requests};
    Authentication authentication{client, output, connection, login};
    StreamCompression compression{client, zip, output, connection};
    Binding binding{client, output, connection, requests, login, quiet};
    Negotiation negotiation{connection, login, {encryption, registration, authentication, compression, binding}};
};

TEST_F(RegistrationTest, AsksForTheAccount) {
    EXPECT_EQ(offer(true), Routing::Done);
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0], "log 5 XMPP \"New account registration\"");
    EXPECT_TRUE(events[1].starts_with("C: <iq id=\"")) << events[1];
    EXPECT_TRUE(
        events[1].ends_with("\" type=\"set\"><query xmlns=\"jabber:iq:register\"><username>new</username>"
                            "<password>a&lt;b</password></query></iq>"))
        << events[1];
}

TEST_F(RegistrationTest, EncryptionComesFirst) {
    offer(true, true);
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0], "log 5 XMPP \"Starting TLS connection\"");
    EXPECT_EQ(connection.registerMode, 1u);
}

TEST_F(RegistrationTest, RunsOnTheStreamThatIsEncryptedThen) {
    offer(true, true);
    events.clear();
    NL_EVENT event{sizeof(NL_EVENT), NL_EVENT_TLS};
    NL_TLS_STATE up{sizeof(NL_TLS_STATE), 1};
    socketEvents.onSocketEvent(reinterpret_cast<OKU_WORD>(&event), reinterpret_cast<OKU_WORD>(&up));
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0], "log 5 XMSC \"Socket SSL INIT\"");
    EXPECT_TRUE(events[1].starts_with("C: <?xml version=\"1.0\"?><stream:stream ")) << events[1];
    events.clear();
    offer(true);
    ASSERT_EQ(events.size(), 2u);
    EXPECT_EQ(events[0], "log 5 XMPP \"New account registration\"");
    EXPECT_TRUE(events[1].starts_with("C: <iq id=\"")) << events[1];
}

TEST_F(RegistrationTest, ServerWithoutItIsToldInABoxAndLeft) {
    EXPECT_EQ(offer(false), Routing::Abandon);
    const std::vector<std::string> expected = {
        "log 5 XMPP \"New account registration\"",
        "call UI/MessageBox text=\"Ten serwer nie obsługuje rejestracji inline.\" title=\"Błąd\" style=16",
        "C: </stream:stream>", "call OKU/CTL/SetAllOffline", "hook connection-ended notice"};
    std::erase_if(events, [](const std::string& event) { return event.starts_with("call OKU/Timer/Destroy"); });
    EXPECT_EQ(events, expected);
    EXPECT_EQ(connection.registerMode, 0u);
    EXPECT_EQ(reconnection.noReconnect, 1u);
}

TEST_F(RegistrationTest, ServerWithoutItIsLeftOnlyOnceTheBoxIsClosed) {
    std::vector<std::string> seen;
    host.onEvent = [&](const harness::Event& event) {
        const auto line = render(event);
        const bool box = line.starts_with("call UI/MessageBox");
        if (!box && line != "C: </stream:stream>") return;
        seen.push_back(std::string(box ? "box" : "end") + (reconnection.noReconnect ? " final" : "") +
                       (connection.registerMode ? " registering" : ""));
    };
    offer(false);
    EXPECT_EQ(seen, std::vector<std::string>({"box registering", "end final"}));
}

TEST_F(RegistrationTest, AnswerThatComesWhileItIsAskedForIsTaken) {
    host.onEvent = [this](const harness::Event& event) {
        events.push_back(render(event));
        if (events.back().starts_with("C: <iq id=")) answer(u"result");
    };
    offer(true);
    EXPECT_EQ(dialog.type, u"result");
}

TEST_F(RegistrationTest, SuccessReachesTheDialogAndOpensTheStreamAgain) {
    offer(true);
    answer(u"result");
    EXPECT_EQ(dialog.type, u"result");
    EXPECT_EQ(connection.registerMode, 0u);
    EXPECT_EQ(reconnection.noReconnect, 0u);
    ASSERT_EQ(events.size(), 1u);
    EXPECT_TRUE(events[0].starts_with("C: <?xml version=\"1.0\"?><stream:stream ")) << events[0];
}

TEST_F(RegistrationTest, IsOverOnceTheStreamHasOpenedAgain) {
    offer(true);
    std::uint32_t modeAtTheHeader = 0;
    const auto noting = host.onEvent;
    host.onEvent = [&](const harness::Event& event) {
        if (event.category == harness::Event::Category::Sent) modeAtTheHeader = connection.registerMode;
        noting(event);
    };
    answer(u"result");
    EXPECT_EQ(modeAtTheHeader, 1u);
    EXPECT_EQ(connection.registerMode, 0u);
}

TEST_F(RegistrationTest, RefusalReachesTheDialogAndEndsTheStream) {
    offer(true);
    bool isOverAtTheEnd = false;
    const auto noting = host.onEvent;
    host.onEvent = [&](const harness::Event& event) {
        if (event.category == harness::Event::Category::Sent)
            isOverAtTheEnd = reconnection.noReconnect && !connection.registerMode;
        noting(event);
    };
    answer(u"error");
    EXPECT_EQ(dialog.type, u"error");
    const std::vector<std::string> expected = {"C: </stream:stream>", "call OKU/CTL/SetAllOffline",
                                               "hook connection-ended notice"};
    std::erase_if(events, [](const std::string& event) { return event.starts_with("call OKU/Timer/Destroy"); });
    EXPECT_EQ(events, expected);
    EXPECT_TRUE(isOverAtTheEnd);
    EXPECT_EQ(connection.registerMode, 0u);
    EXPECT_EQ(reconnection.noReconnect, 1u);
    EXPECT_FALSE(client.flags & FLAG_CONNECTED);
}

TEST_F(RegistrationTest, AnyCertificateWillDo) {
    NL_EVENT event{sizeof(NL_EVENT), NL_EVENT_CERTIFICATE};
    EXPECT_EQ(socketEvents.onSocketEvent(reinterpret_cast<OKU_WORD>(&event), 0), 1);
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0], "log 5 XMSC \"Overriding SSL Cert Verification\"");
}

TEST_F(RegistrationTest, ConnectingLeavesAddressAndPasswordAsTheWizardSetThem) {
    client.flags = 0;
    connection.connect();
    EXPECT_EQ(client.jid.bare, u"new@example.org");
    EXPECT_EQ(client.password, u"a<b");
    EXPECT_TRUE(client.flags & FLAG_CONNECTING);
    host.complaints.clear();  // the settings store is none in this connection
}

}  // namespace
