// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/cards/stored_card.h"

#include <gtest/gtest.h>

namespace oku::test {
namespace {

std::optional<StoredCard> read(const QString& content) {
    return readStoredCard(
        QStringLiteral("<iq type='result'><vCard xmlns='vcard-temp'>%1</vCard></iq>").arg(content).toUtf8(),
        QStringLiteral("ala@example.org"));
}

TEST(StoredCard, TheFirstOfEachNameIsAField) {
    const auto stored =
        read(QStringLiteral("<EMAIL><WORK/><USERID>one@x</USERID></EMAIL><EMAIL><USERID>two@x</USERID></EMAIL>"
                            "<NICKNAME>A &amp; B</NICKNAME><NICKNAME>other</NICKNAME>"));
    ASSERT_TRUE(stored);
    EXPECT_TRUE(stored->there);
    EXPECT_EQ(stored->card.fields.value("email"), QStringLiteral("one@x"));
    EXPECT_EQ(stored->card.fields.value("nick"), QStringLiteral("A & B"));
    EXPECT_EQ(stored->card.fields.size(), 8);
    EXPECT_EQ(stored->card.lost, (QStringList{"EMAIL", "NICKNAME"}));
}

TEST(StoredCard, WhatThePluginWritesIsNotLost) {
    const auto stored =
        read(QStringLiteral("<N><GIVEN>a</GIVEN><FAMILY>b</FAMILY></N><NICKNAME/><BDAY>1990</BDAY><URL>u</"
                            "URL><TITLE>t</TITLE><ROLE>r</ROLE>"
                            "<JABBERID>Ala@example.org</JABBERID><EMAIL><USERID>e</USERID><INTERNET/><PREF/></EMAIL>"));
    ASSERT_TRUE(stored);
    EXPECT_EQ(stored->card.lost, QStringList());
    EXPECT_EQ(read(QStringLiteral("<JABBERID>ola@example.org</JABBERID>"))->card.lost, QStringList("JABBERID"));
}

TEST(StoredCard, AllElseIsLostIfItHoldsSomething) {
    const auto stored =
        read(QStringLiteral("<FN>a</FN><ADR><HOME/><CTRY>PL</CTRY></ADR><ADR><CTRY>DE</CTRY></ADR><TEL><HOME/></TEL>"
                            "<N><PREFIX>dr</PREFIX></N><PHOTO><TYPE>image/png</TYPE><BINVAL>A</BINVAL></PHOTO>"));
    EXPECT_EQ(stored->card.lost, (QStringList{"FN", "ADR", "N/PREFIX", "PHOTO"}));
    EXPECT_EQ(read(QStringLiteral("<TITLE>%1</TITLE>").arg(QString(2000, u'x')))->card.lost, QStringList("TITLE"))
        << "what does not fit into the form is lost in part";
}

TEST(StoredCard, NoCardIsNoError) {
    EXPECT_FALSE(readStoredCard("<iq type='error'><error><item-not-found xmlns='x'/></error></iq>", {})->there);
    EXPECT_FALSE(readStoredCard("<iq type='result'/>", {})->there);
    EXPECT_FALSE(readStoredCard("<iq type='error'><error><forbidden xmlns='x'/></error></iq>", {}));
    EXPECT_FALSE(readStoredCard("<iq type='result'><vCard xmlns='vcard-temp'><FN>", {}));
    EXPECT_FALSE(readStoredCard("<presence/>", {}));
    EXPECT_FALSE(readStoredCard({}, {}));
}

TEST(StoredCard, ADeepOrLongOneIsReadInProportion) {
    QString deep;
    for (int i = 0; i < 1000; ++i) deep += QStringLiteral("<X>");
    deep += QStringLiteral("text");
    for (int i = 0; i < 1000; ++i) deep += QStringLiteral("</X>");
    ASSERT_TRUE(read(deep));
    EXPECT_EQ(read(deep)->card.lost, QStringList("X")) << "and is told";
    QString many;
    for (int i = 0; i < 5000; ++i) many += QStringLiteral("<X%1>x</X%1>").arg(i);
    EXPECT_EQ(read(many)->card.lost.size(), 32);
}

TEST(StoredCard, FieldsAreOneLineOfWhatXmlBears) {
    EXPECT_EQ(cardFieldText(QStringLiteral(" a\n\tb\u0001\u2028c ")), QStringLiteral("a  b  c"));
    EXPECT_EQ(cardFieldText(QString(QChar(0xd800)) + u'x'), QStringLiteral("?x"));
    EXPECT_EQ(cardFieldText(QString(QChar(0xfffe))), QStringLiteral("\ufffd"));
    const QString face = QStringLiteral("😀");
    EXPECT_EQ(cardFieldText(QString(1022, u'x') + face), QString(1022, u'x')) << "not cut inside a character";
}

}  // namespace
}  // namespace oku::test
