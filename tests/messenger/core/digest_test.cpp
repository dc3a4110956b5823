// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The server's proof in DIGEST-MD5.
#include <QCryptographicHash>

#include "messenger/core/boundary/wide.h"
#include "messenger/core/wire/digest_proof.h"
#include "tests/messenger/core/stage.h"

namespace oku::test {
namespace {

// RFC 2831, section 4.
const QByteArray kResponse =
    "charset=utf-8,username=\"chris\",realm=\"elwood.innosoft.com\",nonce=\"OA6MG9tEQGm2hh\",nc=00000001,"
    "cnonce=\"OA6MHXh6VqTrRk\",digest-uri=\"imap/elwood.innosoft.com\",response=d388dad90d4bbd760a152321f2143af7,"
    "qop=auth";
const QByteArray kProof = "ea40f60335c427b5527b84dbabcdfffd";

TEST(DigestProof, IsThatOfTheExampleOfItsRfc) {
    EXPECT_EQ(expectedProof(kResponse, "secret"), kProof);
    EXPECT_EQ(expectedProof(kResponse, "Secret"), std::nullopt) << "nothing can be said without the password";
    EXPECT_EQ(expectedProof("", ""), std::nullopt);
}

TEST(DigestProof, ReadsDirectives) {
    const QByteArray text = "a=\"x,rspauth=1\", RSPAUTH = \"2\" ,rspauth=3,b";
    EXPECT_EQ(digestDirective(text, "rspauth"), "2");
    EXPECT_EQ(digestDirective(text, "a"), "x,rspauth=1");
    EXPECT_EQ(digestDirective(text, "b"), std::nullopt);
    EXPECT_EQ(digestDirective("", "a"), std::nullopt);
}

class Digest : public Stage {
protected:
    Digest() {
        writeAccount({}, QStringLiteral("chris@elwood.innosoft.com/home"),
                     QStringLiteral("XMPP/Pass = \"secret\"\nOKU/AllowClearText = 1\n"));
        start();
    }

    void open(bool encrypted) {
        entry().line = {.encrypted = encrypted};
        account().flags = OKU_FLAG_CONNECTED | OKU_FLAG_CONNECTING;
        notices.clear();
        plugin().log.clear();
        offerOutgoing("<stream:stream to='elwood.innosoft.com'>");
    }
    static std::string sasl(const char* name, const QByteArray& content, const char* more = "") {
        return std::string("<") + name + " xmlns='urn:ietf:params:xml:ns:xmpp-sasl'" + more + ">" +
               content.toBase64().toStdString() + "</" + name + ">";
    }
    /// A login up to our response.
    void respond(bool encrypted, const QByteArray& response = kResponse) {
        open(encrypted);
        offerOutgoing(sasl("auth", {}, " mechanism='DIGEST-MD5'"));
        EXPECT_TRUE(passes(sasl("challenge", "realm=\"elwood.innosoft.com\",nonce=\"OA6MG9tEQGm2hh\"")));
        offerOutgoing(sasl("response", response));
    }
    /// Offers received text; false when it was kept from the plugin.
    bool passes(std::string text) {
        auto data = makeRecord<OKU_HOOK_DATA>();
        data.data = text.data();
        data.length = static_cast<std::uint32_t>(text.size());
        OKU_WORD taken = 0;
        inPlugin([&] { taken = raise(OKU_HOOK_STREAM_IN, OKU_PHASE_BEFORE, wordOf(&data)); });
        return taken == 0;
    }
    bool ended() { return notices.size() == 1 && logged("status 7 ") && entry().reason == notices[0]; }
    bool goesOn() { return notices.isEmpty() && !logged("status 7 "); }
};

TEST_F(Digest, APoofInASecondChallengeOrInTheSuccessIsEnough) {
    for (const bool encrypted : {false, true}) {
        respond(encrypted);
        EXPECT_TRUE(passes(sasl("challenge", "rspauth=" + kProof)));
        offerOutgoing("<response xmlns='urn:ietf:params:xml:ns:xmpp-sasl'/>");
        EXPECT_TRUE(passes("<success xmlns='urn:ietf:params:xml:ns:xmpp-sasl'/>"));
        EXPECT_TRUE(goesOn());
        respond(encrypted);
        EXPECT_TRUE(passes(sasl("success", "rspauth=\"" + kProof.toUpper() + "\"")));
        EXPECT_TRUE(goesOn());
    }
}

TEST_F(Digest, AWrongProofEndsTheConnection) {
    for (const bool encrypted : {false, true}) {
        for (const char* element : {"challenge", "success"}) {
            for (const QByteArray& proof :
                 {QByteArray("ea40f60335c427b5527b84dbabcdfffe"), QByteArray(), kProof + "0"}) {
                respond(encrypted);
                EXPECT_FALSE(passes(sasl(element, "rspauth=" + proof))) << element << proof.constData();
                EXPECT_TRUE(ended());
            }
        }
    }
    respond(true);
    EXPECT_FALSE(passes("<stream:features/>" + sasl("challenge", "rspauth=0") + sasl("success", "rspauth=" + kProof)));
    respond(true);
    EXPECT_FALSE(passes("<success>cnNw&#89;XV0aD0w</success>")) << "without a namespace, and with an entity";
    EXPECT_TRUE(ended());
}

TEST_F(Digest, NothingIsExchangedBehindAWrongProof) {
    respond(true);
    EXPECT_FALSE(passes(sasl("success", "rspauth=0")));
    EXPECT_FALSE(passes("<success/>"));
    EXPECT_FALSE(passes("<message/>"));
    EXPECT_TRUE(offerOutgoing("<iq type='get' id='q1'/>"));
    EXPECT_FALSE(offerOutgoing("</stream:stream>"));
    EXPECT_TRUE(ended());
}

TEST_F(Digest, AMissingProofEndsAConnectionInClear) {
    for (const std::string& success : {std::string("<success/>"), sasl("success", "="), sasl("success", "other=1")}) {
        respond(false);
        EXPECT_FALSE(passes(success)) << success;
        EXPECT_TRUE(ended());
        respond(true);
        EXPECT_TRUE(passes(success)) << success;
        EXPECT_TRUE(goesOn());
    }
    open(false);
    offerOutgoing(sasl("auth", {}, " mechanism='DIGEST-MD5'"));
    EXPECT_FALSE(passes("<success/>")) << "before any challenge";
    EXPECT_TRUE(ended());
}

TEST_F(Digest, AProofOfBeforeTheResponseIsWorthNothing) {
    open(false);
    offerOutgoing(sasl("auth", {}, " mechanism='DIGEST-MD5'"));
    EXPECT_FALSE(passes(sasl("challenge", "nonce=\"OA6MG9tEQGm2hh\",rspauth=" + kProof)));
    EXPECT_TRUE(ended());
}

TEST_F(Digest, AProofOfACutOffLoginIsWorthNothingInTheNext) {
    respond(false);
    EXPECT_TRUE(passes(sasl("challenge", "rspauth=" + kProof)));
    open(false);
    offerOutgoing(sasl("auth", {}, " mechanism='DIGEST-MD5'"));
    EXPECT_FALSE(passes("<success/>"));
    EXPECT_TRUE(ended());
}

TEST_F(Digest, AStreamThatIsSaidToBeCompressedOwesTheProofAllTheSame) {
    respond(false);
    EXPECT_TRUE(passes("<compressed xmlns='http://jabber.org/protocol/compress'/>"));
    offerOutgoing("<stream:stream to='elwood.innosoft.com'>");
    EXPECT_FALSE(passes("<success/>"));
    EXPECT_TRUE(ended());
}

TEST_F(Digest, AResponseThatTheKnownPasswordDidNotMakeCannotBeProven) {
    respond(true, QByteArray(kResponse).replace("d388", "d389"));
    EXPECT_FALSE(passes(sasl("success", "rspauth=" + kProof)));
    EXPECT_TRUE(ended());
}

TEST_F(Digest, ThePasswordMayBeTheOneThatTheAccountWasRegisteredWith) {
    entry().settings->set(QStringLiteral("XMPP/Pass"), QStringLiteral("old"));
    open(true);
    offerOutgoing(
        "<iq type='set' id='r1'><query xmlns='jabber:iq:register'><username>chris</username>"
        "<password>secret</password></query></iq>");
    offerOutgoing("<stream:stream to='elwood.innosoft.com'>");
    offerOutgoing(sasl("auth", {}, " mechanism='DIGEST-MD5'"));
    offerOutgoing(sasl("response", kResponse));
    EXPECT_TRUE(passes(sasl("success", "rspauth=" + kProof)));
    EXPECT_TRUE(goesOn());
}

TEST_F(Digest, OtherMechanismsAreLeftAlone) {
    open(false);
    offerOutgoing(sasl("auth", "x", " mechanism='PLAIN'"));
    EXPECT_TRUE(passes("<success/>"));
    respond(true);
    offerOutgoing(sasl("auth", "x", " mechanism='PLAIN'"));
    EXPECT_TRUE(passes(sasl("success", "rspauth=0")));
    EXPECT_TRUE(goesOn());
}

}  // namespace
}  // namespace oku::test
