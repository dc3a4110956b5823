// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/xml/secrets.h"

#include <gtest/gtest.h>

namespace oku::test {
namespace {

std::string masked(const char* xml) { return maskedXml(xml).toStdString(); }

std::string masked(std::initializer_list<const char*> pieces) {
    SecretMask mask;
    std::string shown;
    for (const char* piece : pieces) shown += mask.masked(piece).toStdString() + "|";
    return shown + mask.finish().toStdString();
}

TEST(Secrets, AreMaskedAlsoWhereTheTextIsCut) {
    EXPECT_EQ(masked("<auth xmlns='urn:ietf:params:xml:ns:xmpp-sasl' mechanism='PLAIN'>AGFs"),
              "<auth xmlns='urn:ietf:params:xml:ns:xmpp-sasl' mechanism='PLAIN'>***");
    EXPECT_EQ(masked("<a/><password>x</password>b"), "<a/><password>***</password>b");
    EXPECT_EQ(masked("<auth xmlns='urn:ietf:params:xml:ns:xmpp-sasl'/>"),
              "<auth xmlns='urn:ietf:params:xml:ns:xmpp-sasl'/>");
    EXPECT_EQ(masked("a < b"), "a < b");
    EXPECT_EQ(masked("<x password='tajne"), "***");
    EXPECT_EQ(
        maskedText(QStringLiteral("pass hunter22 and <password>x</password>"), {QStringLiteral("hunter22"), QString()}),
        QStringLiteral("pass *** and <password>***</password>"));
}

TEST(Secrets, AreFoundByNamespaceWhateverThePrefix) {
    EXPECT_EQ(masked("<r:query xmlns:r='jabber:iq:register'><r:username>al</r:username></r:query>"),
              "<r:query xmlns:r='jabber:iq:register'>***</r:query>");
    EXPECT_EQ(masked("<s:auth xmlns:s='urn:ietf:params:xml:ns:xmpp-sasl'>AGFs</s:auth>"),
              "<s:auth xmlns:s='urn:ietf:params:xml:ns:xmpp-sasl'>***</s:auth>");
    EXPECT_EQ(masked("<query xmlns=\"jabber:iq:regis&#116;er\">x</query>"),
              "<query xmlns=\"jabber:iq:regis&#116;er\">***</query>");
    EXPECT_EQ(masked("<query xmlns='jabber:iq:&#x61;uth'><d/>x</query >y"),
              "<query xmlns='jabber:iq:&#x61;uth'>***</query >y");
    EXPECT_EQ(masked("<r:password xmlns:r='a'>x</r:password>"), "<r:password xmlns:r='a'>***</r:password>");
    EXPECT_EQ(masked("<response xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><![CDATA[</response>x]]>y</response>"),
              "<response xmlns='urn:ietf:params:xml:ns:xmpp-sasl'>***</response>");
}

TEST(Secrets, AreFoundInAnInheritedNamespace) {
    EXPECT_EQ(masked("<a xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><b><response>x</response></b></a>"),
              "<a xmlns='urn:ietf:params:xml:ns:xmpp-sasl'><b><response>***</response></b></a>");
    EXPECT_EQ(masked("<a xmlns:r='jabber:iq:register'><b xmlns:r='c'/><r:query>x</r:query></a>"),
              "<a xmlns:r='jabber:iq:register'><b xmlns:r='c'/><r:query>***</r:query></a>");
    EXPECT_EQ(masked("<a xmlns:r='jabber:iq:register'><r:username>x</r:username></a>"),
              "<a xmlns:r='jabber:iq:register'><r:username>***</r:username></a>");
    EXPECT_EQ(masked("<a xmlns:r='jabber:iq:register'><b xmlns:r='c'><r:query>x</r:query></b></a>"),
              "<a xmlns:r='jabber:iq:register'><b xmlns:r='c'><r:query>x</r:query></b></a>");
}

TEST(Secrets, AreTakenForSomeWhereNobodyDeclaredTheNamespace) {
    EXPECT_EQ(masked("<r:query>x</r:query><challenge>y</challenge>"),
              "<r:query>***</r:query><challenge>***</challenge>");
    EXPECT_EQ(masked("<iq xmlns='jabber:client'><query>x</query></iq>"),
              "<iq xmlns='jabber:client'><query>x</query></iq>");
    EXPECT_EQ(masked("<query xmlns='jabber:iq:version'>x</query><r:name>y</r:name>"),
              "<query xmlns='jabber:iq:version'>x</query><r:name>y</r:name>");
}

TEST(Secrets, OfFormsAreMasked) {
    EXPECT_EQ(masked("<x xmlns='jabber:x:data' type='form'><field var='jid'><value>a@b</value></field>"
                     "<field type='text-private' var='pin'><value>1234</value></field></x>"),
              "<x xmlns='jabber:x:data' type='form'><field var='jid'><value>a@b</value></field>"
              "<field type='text-private' var='pin'>***</field></x>");
    EXPECT_EQ(masked("<command><x xmlns='jabber:x:data' type='submit'><field var='pin'><value>1234</value></field></x>"
                     "</command><f:x xmlns:f='jabber:x:data' type='&#115;ubmit'>x</f:x>"),
              "<command><x xmlns='jabber:x:data' type='submit'>***</x>"
              "</command><f:x xmlns:f='jabber:x:data' type='&#115;ubmit'>***</f:x>");
    EXPECT_EQ(masked("<x xmlns='jabber:x:other' type='submit'>y</x>"), "<x xmlns='jabber:x:other' type='submit'>y</x>");
}

TEST(Secrets, InAttributesAreMasked) {
    EXPECT_EQ(masked("<x xmlns='jabber:x:conference' jid='a@b' password='tajne' reason=\"c\"/>"),
              "<x xmlns='jabber:x:conference' jid='a@b' password='***' reason=\"c\"/>");
    EXPECT_EQ(masked("<a xmlns:password='u'><password:b/></a>"), "<a xmlns:password='u'><password:b/></a>")
        << "a prefix's namespace is no secret";
}

TEST(Secrets, AreFoundInPieces) {
    EXPECT_EQ(masked({"<query xmlns='jabber:iq:reg", "ister'><pass", "word>ta", "jne</password></que", "ry><b/>"}),
              "|<query xmlns='jabber:iq:register'>|***||</query><b/>|");
    EXPECT_EQ(masked({"<stream:stream xmlns='jabber:client' xmlns:r='jabber:iq:auth'/>", "<query>x</query>",
                      "<r:query>y</r:query>", "<stream:stream xmlns='a'>", "<query>z</query>"}),
              "<stream:stream xmlns='jabber:client' xmlns:r='jabber:iq:auth'/>|<query>x</query>|"
              "<r:query>***</r:query>|<stream:stream xmlns='a'>|<query>z</query>|");
}

TEST(Secrets, StayHiddenBehindAnEndTagOfAnotherName) {
    EXPECT_EQ(masked("<password></a>x</password>y"), "<password>***</password>y");
    EXPECT_EQ(masked("<password><a></password>x"), "<password>***");
}

TEST(Secrets, AreNotShownBehindATagOfAnyLength) {
    const std::string longTag = "<password a='" + std::string(20'000, 'a');
    EXPECT_EQ(masked({longTag.c_str(), "'>x</password>"}), "***||");
}

}  // namespace
}  // namespace oku::test
