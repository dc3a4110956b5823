// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/oku/windows.h"
#include "messenger/core/cards/picture_file.h"
#include "tests/messenger/core/cards_stage.h"

namespace oku::test {
namespace {

const QByteArray kPng("its points");

class OwnCardsTest : public CardsStage {
protected:
    OwnCardsTest() {
        begin();
        logIn();
        take();
        asked();
    }
    OKU_WORD token() const { return tokens.empty() ? 0 : tokens.back(); }
    void haveCard(const QString& content) {
        answerQuery(QStringLiteral("<vCard xmlns='vcard-temp'>%1</vCard>").arg(content));
    }
    /// What was begun reaches the plugin from the event loop; gives the reason why it was not.
    QString begun(const QString& reason) {
        QCoreApplication::sendPostedEvents(&core->ownCards, QEvent::MetaCall);
        return reason;
    }
    QString request() { return begun(cards->requestOwnCard(me)); }
    QString store(const CardFields& changes, bool agreed = false) {
        return begun(cards->storeOwnCard(me, changes, agreed));
    }
    QString publish() { return begun(cards->publishOwnPicture(me)); }
    QString fetch() { return begun(cards->fetchOwnPicture(me)); }
    void havePicture() {
        QFile file(directory.filePath(QStringLiteral("mine")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("mine");
        file.close();
        EXPECT_EQ(cards->setOwnPicture(file.fileName()), QString());
        reader->answer(kPng);
        take();
        asked();
    }
};

TEST_F(OwnCardsTest, TheServerIsAskedFirst) {
    EXPECT_EQ(request(), QString());
    EXPECT_NE(lastQuery(), QString());
    EXPECT_EQ(asked(), "");
    EXPECT_FALSE(request().isEmpty()) << "one at a time";
}

TEST_F(OwnCardsTest, WhatIsAskedBeforeTheEndComesBeforeIt) {
    havePicture();
    EXPECT_EQ(cards->publishOwnPicture(me), QString());
    core->shutdown();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    EXPECT_TRUE(logged("status 7 "));
    EXPECT_EQ(asked(), "PFSetMyAvatar");
}

TEST_F(OwnCardsTest, TheFieldsComeFromThePlugin) {
    request();
    haveCard(QStringLiteral("<NICKNAME>Al</NICKNAME><PHOTO><BINVAL>AAAA</BINVAL></PHOTO>"));
    EXPECT_EQ(asked(), "PFGetMyVCard");
    inPlugin([&] { call(u"MyVCard/SignalBusyness", 1); });
    inPlugin([&] {
        call(u"MyVCard/SignalBusyness", 0);
        ownField(token(), u"nick", QStringLiteral("Ala"));
        ownField(token(), u"birth", QStringLiteral("1990-01-01"));
        ownField(token(), u"unheard of", QStringLiteral("x"));
        EXPECT_EQ(take(), (QStringList{"busy", "idle"}));
        box(OKU_BOX_INFORMATION, u"Dane wizytówki zostały pobrane...");
    });
    EXPECT_EQ(take(), took("own card|alice@example.org|birth=1990-01-01|nick=Ala|PHOTO"));
}

TEST_F(OwnCardsTest, ACardThatIsNotThereIsEmpty) {
    request();
    answerQuery(
        QStringLiteral("<error type='cancel'><item-not-found xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'/></error>"),
        "error");
    EXPECT_EQ(take(), took("own card|alice@example.org"));
    EXPECT_EQ(asked(), "");
}

TEST_F(OwnCardsTest, AnErrorIsNoCard) {
    request();
    answerQuery(QStringLiteral(
                    "<error type='wait'><internal-server-error xmlns='urn:ietf:params:xml:ns:xmpp-stanzas'/></error>"),
                "error");
    EXPECT_EQ(take(), took("no own card|Serwer nie podał wizytówki."));
}

TEST_F(OwnCardsTest, AWarningAtTheEndIsAFailure) {
    request();
    haveCard({});
    inPlugin([&] { box(OKU_BOX_WARNING, u"O czym innym."); });
    EXPECT_EQ(take(), QStringList()) << "the answer has not come";
    inPlugin([&] {
        call(u"MyVCard/SignalBusyness", 0);
        box(OKU_BOX_WARNING, u"Podczas pobierania wystąpił błąd.");
    });
    EXPECT_EQ(take(), (QStringList{"idle", "no own card|Podczas pobierania wystąpił błąd."}));
}

TEST_F(OwnCardsTest, AnEndWithoutAWordIsAFailure) {
    request();
    haveCard({});
    inPlugin([&] { call(u"MyVCard/SignalBusyness", 0); });
    EXPECT_EQ(take(), (QStringList{"idle", "no own card|Serwer nie odpowiedział."}));
}

TEST_F(OwnCardsTest, WhatNobodyChangedIsStoredAsItWas) {
    std::map<std::u16string, std::u16string> form;
    plugin().onCard = [&](tiny::Account&, const std::string& service, OKU_WORD request) {
        if (service != "PFSetMyVCard") return;
        tokens.push_back(request);
        ownStatus(request, u"Uaktualnianie...");
        for (const char16_t* key : {u"name", u"title", u"role", u"surname", u"nick", u"birth", u"www", u"email"})
            form[key] = askedField(request, key);
    };
    EXPECT_EQ(store({{"nick", QStringLiteral("Ala\nz\u0001")}, {"role", QString()}}), QString());
    haveCard(
        QStringLiteral("<NICKNAME>Al</NICKNAME><N><GIVEN>Alicja</GIVEN><FAMILY>Ż</FAMILY></N><ROLE>szefowa</ROLE>"
                       "<EMAIL><INTERNET/><PREF/><USERID>a@b</USERID></EMAIL><BDAY>1990</BDAY><URL>u</URL>"
                       "<TITLE>dr</TITLE><JABBERID>Alice@example.org</JABBERID>"));
    const std::map<std::u16string, std::u16string> wanted = {
        {u"name", u"Alicja"}, {u"title", u"dr"},   {u"role", u""}, {u"surname", u"Ż"},
        {u"nick", u"Ala z"},  {u"birth", u"1990"}, {u"www", u"u"}, {u"email", u"a@b"}};
    EXPECT_EQ(form, wanted);
    EXPECT_EQ(take(), took("progress|Uaktualnianie..."));
    inPlugin([&] { ownStatus(token(), u"OK"); });
    EXPECT_EQ(take(), took("stored|alice@example.org"));
    EXPECT_EQ(askedField(token(), u"nick"), std::u16string(1024, u'?')) << "a form that is gone fills nothing";
}

TEST_F(OwnCardsTest, NothingIsStoredBeforeTheUserKnowsWhatIsLost) {
    const QString rest = QStringLiteral("<FN>Ala</FN><N><MIDDLE>Ewa</MIDDLE></N><TEL><NUMBER>1</NUMBER></TEL>");
    store({{"nick", "Ala"}});
    haveCard(rest);
    EXPECT_EQ(take(), took("loses|FN|N/MIDDLE|TEL"));
    EXPECT_EQ(asked(), "");
    plugin().log.clear();
    store({{"nick", "Ala"}}, true);
    haveCard(rest);
    EXPECT_EQ(asked(), "PFSetMyVCard");
    inPlugin([&] { ownStatus(token(), u"Bład"); });
    EXPECT_EQ(take(), took("no own card|Bład"));
}

TEST_F(OwnCardsTest, FieldsAreLookedAtBeforeTheServerIsAsked) {
    EXPECT_FALSE(store({{"phone", "1"}}).isEmpty());
    EXPECT_FALSE(store({{"nick", QString(1024, u'x')}}).isEmpty());
    EXPECT_EQ(lastQuery(), QString());
    EXPECT_EQ(store({{"nick", QString(1023, u'x')}}), QString());
}

TEST_F(OwnCardsTest, ASmallBufferIsNotWrittenOver) {
    store({{"nick", "Alicja"}});
    haveCard({});
    EXPECT_EQ(askedField(token(), u"nick", 7), u"Alicja");
    EXPECT_EQ(askedField(token(), u"nick", 6), u"??????");
}

TEST_F(OwnCardsTest, ThePictureIsPublished) {
    EXPECT_FALSE(publish().isEmpty()) << "there is none";
    havePicture();
    EXPECT_EQ(publish(), QString());
    EXPECT_EQ(asked(), "PFSetMyAvatar");
    inPlugin([&] { ownStatus(token(), u"Uaktualnianie danych..."); });
    EXPECT_FALSE(fetch().isEmpty()) << "one at a time";
    inPlugin([&] { ownStatus(token(), u"OK"); });
    EXPECT_EQ(take(), (QStringList{"progress|Uaktualnianie danych...", "published|alice@example.org"}));
    publish();
    inPlugin([&] { ownStatus(token(), u"Bląd, brak PubSub"); });
    EXPECT_EQ(take(), took("refused|Bląd, brak PubSub"));
}

TEST_F(OwnCardsTest, ThePublishedPictureBecomesTheOwn) {
    EXPECT_EQ(fetch(), QString());
    const QString path = cached(QStringLiteral("Lx"), "published");
    inPlugin([&] {
        call(u"MyVCard/SignalBusyness", 0);
        ownField(token(), u"avatar", path);
    });
    ASSERT_EQ(reader->waiting.size(), 1U);
    EXPECT_EQ(reader->waiting.front().first, "published");
    reader->answer(kPng);
    EXPECT_EQ(take(), (QStringList{"idle", "own picture|" + pictureHash(kPng)}));
    inPlugin([&] { EXPECT_EQ(ownField(token(), u"avatar", path), 0) << "its token is gone"; });
    EXPECT_TRUE(reader->waiting.empty());
}

TEST_F(OwnCardsTest, ARefusalInABoxIsTold) {
    plugin().onCard = [&](tiny::Account&, const std::string&, OKU_WORD) { box(OKU_BOX_WARNING, u"Nie można."); };
    fetch();
    EXPECT_EQ(take(), took("refused|Nie można."));
}

TEST_F(OwnCardsTest, ABoxHoldsNobodyWhoAsks) {
    plugin().onCard = [&](tiny::Account&, const std::string&, OKU_WORD) { box(OKU_BOX_WARNING, u"Nie można."); };
    EXPECT_EQ(cards->fetchOwnPicture(me), QString());
    EXPECT_EQ(asked(), "") << "the box would hold whoever asks";
    EXPECT_FALSE(fetch().isEmpty()) << "one at a time";
    EXPECT_EQ(asked(), "PFGetMyAvatar");
    EXPECT_EQ(take(), took("refused|Nie można."));
}

TEST_F(OwnCardsTest, WhatLosesItsConnectionBeforeItsTurnAsksNothing) {
    EXPECT_EQ(cards->fetchOwnPicture(me), QString());
    loseConnection();
    EXPECT_TRUE(take().join(u' ').startsWith(QStringLiteral("refused|")));
    begun({});
    EXPECT_EQ(asked(), "");
    EXPECT_EQ(take(), QStringList());
}

TEST_F(OwnCardsTest, TheConnectionsEndIsTheirs) {
    request();
    loseConnection();
    const QStringList lines = take();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("no own card|")));
    haveCard({});
    EXPECT_EQ(asked(), "");
    EXPECT_FALSE(request().isEmpty());
    EXPECT_FALSE(publish().isEmpty());
}

}  // namespace
}  // namespace oku::test
