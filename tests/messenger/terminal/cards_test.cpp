// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <QDir>

#include "messenger/terminal/json/json_mode.h"
#include "tests/messenger/terminal/session_fixture.h"

namespace oku::terminal::test {
namespace {

ContactCard cardOf(const char* jid) {
    return {QString::fromLatin1(jid),
            {{CardRow::Kind::section, {}, QStringLiteral("Dane osobowe")},
             {CardRow::Kind::field, QStringLiteral("Nick:"), QStringLiteral("Ol\x1b[2Jek\u202e\nx")},
             {CardRow::Kind::picture, QStringLiteral("Awatar:"), QStringLiteral("/cache/a.png")}}};
}

class CardCommands : public SessionTest {
protected:
    CardsFace& cards() { return messenger.cards(); }
};

TEST_F(CardCommands, ACardIsAskedForByNameAndAddress) {
    EXPECT_EQ(type("/card Olek"), "requestCard|ala@localhost|olek@localhost");
    EXPECT_EQ(type("/card somebody@example.org"), "requestCard|ala@localhost|somebody@example.org");
    EXPECT_EQ(type("/card"), "");
    EXPECT_EQ(heard(), "! usage: /card [WHO]");
    type("/chat-with Olek");
    EXPECT_EQ(type("/card"), "requestCard|ala@localhost|olek@localhost");
}

TEST_F(CardCommands, ACardIsShownRowByRowAndDrivesNoTerminal) {
    emit cards().cardReceived(kMe, cardOf("olek@localhost"));
    EXPECT_EQ(heard(),
              "card: Olek (olek@localhost)\n  Dane osobowe\n    Nick: Ol\ufffd[2Jek\ufffd⏎x\n    Awatar: /cache/a.png");
    emit cards().cardReceived(kMe, {QStringLiteral("x@y"), {}});
    EXPECT_EQ(heard(), "card: x@y (x@y)\n  nothing is in it");
    emit cards().cardFailed(kMe, QStringLiteral("olek@localhost"), QStringLiteral("Serwer zwrócił błąd"));
    EXPECT_EQ(heard(), "! card of Olek: Serwer zwrócił błąd");
    emit cards().progressed(kMe, QStringLiteral("Pobieranie danych..."));
    EXPECT_EQ(heard(), "- Pobieranie danych...");
}

TEST_F(CardCommands, TheOwnCardIsChangedFieldByFieldAndStored) {
    EXPECT_EQ(type("/my-card"), "requestOwnCard|ala@localhost");
    EXPECT_EQ(type("/my-card store"), "");
    EXPECT_EQ(heard(), "! nothing of the card was changed");
    type("/my-card Nick \"Ala z kotem\"");
    type("/my-card role");
    heard();
    OwnCard card;
    card.fields = {{"nick", "Al"}, {"title", "dr"}};
    card.lost = QStringList{"PHOTO", "N/MIDDLE", "X-\u202eODD"};
    emit cards().ownCardReceived(kMe, card);
    EXPECT_EQ(heard(),
              "own card: ala@localhost\n  nick (nickname): Ala z kotem (not stored)\n  name (given name): \n"
              "  surname (family name): \n  email (e-mail): \n  www (web page): \n  title (title): dr\n"
              "  role (role):  (not stored)\n  birth (birthday): \n"
              "  storing takes away from it: photo, middle name, X-\ufffdODD\n"
              "/my-card FIELD TEXT changes a field, /my-card store stores the card on the server");
    EXPECT_EQ(type("/my-card store"), "storeOwnCard|ala@localhost|nick=Ala z kotem|role=|");
    emit cards().ownCardStored(kMe);
    EXPECT_EQ(heard(), "- card stored");
    type("/my-card store");
    EXPECT_EQ(heard(), "! nothing of the card was changed");
    type("/my-card phone 5");
    EXPECT_EQ(heard(), "! unknown field \"phone\" (there are: nick name surname email www title role birth)");
}

TEST_F(CardCommands, WhatIsChangedWhileTheCardIsBeingStoredWaitsOn) {
    type("/my-card nick Ala");
    type("/my-card role");
    EXPECT_EQ(type("/my-card store"), "storeOwnCard|ala@localhost|nick=Ala|role=|");
    type("/my-card title dr");
    type("/my-card nick Ola");
    messenger.refusals.insert(QStringLiteral("storeOwnCard"), QStringLiteral("busy"));
    EXPECT_EQ(type("/my-card store"), "storeOwnCard|ala@localhost|nick=Ola|role=|title=dr|");
    messenger.refusals.clear();
    heard();
    emit cards().ownCardStored(kMe);
    EXPECT_EQ(heard(), "- card stored");
    EXPECT_EQ(type("/my-card store"), "storeOwnCard|ala@localhost|nick=Ola|title=dr|")
        << "the title and the second nickname are not on the server";
    emit cards().ownCardStored(kMe);
    heard();
    EXPECT_EQ(type("/my-card store"), "");
    EXPECT_EQ(heard(), "! nothing of the card was changed");
}

TEST_F(CardCommands, StoringAgainAgreesToTheLosses) {
    type("/my-card nick Ala");
    EXPECT_EQ(type("/my-card store"), "storeOwnCard|ala@localhost|nick=Ala|");
    heard();
    emit cards().ownCardWouldLose(kMe, {QStringLiteral("TEL")});
    EXPECT_EQ(heard(),
              "? storing takes away from the card on the server: telephone. Store it all the same? Then repeat "
              "/my-card store.");
    EXPECT_EQ(type("/my-card store"), "storeOwnCard|ala@localhost|nick=Ala|agreed");
    EXPECT_EQ(type("/my-card store"), "storeOwnCard|ala@localhost|nick=Ala|") << "each time anew";
    emit cards().ownCardWouldLose(kMe, {QStringLiteral("TEL")});
    type("/my-card nick Ola");
    EXPECT_EQ(type("/my-card store"), "storeOwnCard|ala@localhost|nick=Ola|") << "another card";
    emit cards().ownCardFailed(kMe, QStringLiteral("Bład"));
    EXPECT_EQ(type("/my-card store"), "storeOwnCard|ala@localhost|nick=Ola|") << "the changes stay";
    type("/my-card forget");
    EXPECT_EQ(type("/my-card store"), "");
}

TEST_F(CardCommands, TheOwnPictureIsSetPublishedFetchedAndRemoved) {
    EXPECT_EQ(type("/picture set my face.png"), "setOwnPicture|/start/my face.png");
    EXPECT_EQ(type("/picture set \"/home/my face.png\""), "setOwnPicture|/home/my face.png");
    EXPECT_EQ(type("/picture set ~/face.png"), "setOwnPicture|" + (QDir::homePath() + "/face.png").toStdString());
    EXPECT_EQ(type("/picture publish"), "publishOwnPicture|ala@localhost");
    EXPECT_EQ(type("/picture fetch"), "fetchOwnPicture|ala@localhost");
    EXPECT_EQ(type("/picture remove"), "removeOwnPicture");
    for (const char* wrong : {"/picture set", "/picture fetch x", "/picture nothing"}) {
        heard();
        EXPECT_EQ(type(wrong), "") << wrong;
        EXPECT_EQ(heard(), "! usage: /picture [set FILE | remove | publish | fetch]") << wrong;
    }
    type("/picture");
    EXPECT_EQ(heard(), "- there is no own picture");
    messenger.ownPicture = {QStringLiteral("/p/_avatar"), QStringLiteral("abc")};
    type("/picture");
    EXPECT_EQ(heard(), "- own picture: /p/_avatar (SHA-1 abc)");
}

TEST_F(CardCommands, WhatBecomesOfThePictureIsTold) {
    emit cards().ownPictureChanged({QStringLiteral("/p/_avatar"), QStringLiteral("abc")});
    EXPECT_EQ(heard(), "- own picture set (SHA-1 abc); /picture publish brings it to the server");
    emit cards().ownPictureChanged({});
    EXPECT_EQ(heard(), "- own picture removed");
    emit cards().ownPicturePublished(kMe);
    EXPECT_EQ(heard(), "- picture published: ala@localhost");
    emit cards().ownPictureFailed(QStringLiteral("pełny dysk"));
    EXPECT_EQ(heard(), "! pełny dysk");
    emit cards().ownPictureRefused(kMe, QStringLiteral("Bląd, brak PubSub"));
    EXPECT_EQ(heard(), "! Bląd, brak PubSub");
}

TEST_F(CardCommands, ThatThePluginIsBusyIsTold) {
    emit cards().busyChanged(true);
    EXPECT_EQ(heard(), "- the plugin is busy with your own card or picture");
    emit cards().busyChanged(false);
    EXPECT_EQ(heard(), "");
}

TEST_F(CardCommands, NewPicturesOfContactsAreToldToThoseWhoAsked) {
    const ContactPicture picture{QStringLiteral("olek@localhost"), QStringLiteral("/c/a.png"), QStringLiteral("abc")};
    emit cards().pictureChanged(kMe, picture);
    EXPECT_EQ(heard(), "");
    type("/set OKU/TellPictures 1");
    heard();
    emit cards().pictureChanged(kMe, picture);
    EXPECT_EQ(heard(), "- Olek has a new picture");
}

TEST_F(CardCommands, TabOffersFieldsAndActs) {
    const auto offered = [this](const char* text) {
        const QString typed = QString::fromLatin1(text);
        return session->complete(typed, typed.size()).candidates.join(u',').toStdString();
    };
    EXPECT_EQ(offered("/my-card s"), "store ,surname ");
    EXPECT_EQ(offered("/picture "), "fetch ,publish ,remove ,set ");
    EXPECT_EQ(offered("/card Ol"), "Ola ,Olek ");
    EXPECT_EQ(offered("/picture set /et"), "/etc/");
}

class JsonCards : public testing::Test {
protected:
    void SetUp() override {
        setLanguage(Language::English);
        messenger.accountList = {account("ala@localhost"), account("ola@localhost")};
        ASSERT_EQ(mode.start(), QString());
        lines.clear();
    }
    void TearDown() override { setLanguage(Language::Polish); }

    void say_(const char* line) {
        messenger.calls.clear();
        mode.feed(QByteArray(line) + '\n');
    }
    std::string called() { return messenger.takeCalls().join(u'\n').toStdString(); }
    std::string told() { return std::exchange(lines, {}).trimmed().toStdString(); }
    CardsFace& cards() { return messenger.cards(); }

    FakeMessenger messenger;
    QByteArray lines;
    JsonMode mode{messenger, [this](const QByteArray& line) { lines += line; }, false};
};

TEST_F(JsonCards, ACardIsAnEventBeforeItsAnswer) {
    say_(R"({"cmd":"card","id":1,"jid":"Olek@localhost/dom"})");
    EXPECT_EQ(called(), "requestCard|ala@localhost|olek@localhost");
    emit cards().cardReceived(QStringLiteral("ola@localhost"), {QStringLiteral("olek@localhost"), {}});
    EXPECT_EQ(told(), R"({"event":"card","account":"ola@localhost","jid":"olek@localhost","rows":[]})")
        << "another account's answers nothing";
    emit cards().cardReceived(kMe, cardOf("olek@localhost"));
    EXPECT_EQ(told(), R"({"event":"card","account":"ala@localhost","jid":"olek@localhost","rows":[)"
                      R"({"kind":"section","label":"","value":"Dane osobowe"},)"
                      R"({"kind":"field","label":"Nick:","value":"Ol\u001b[2Jek)"
                      "\u202e"
                      R"(\nx"},{"kind":"picture","label":"Awatar:","value":"/cache/a.png"}]})"
                      "\n"
                      R"({"event":"ok","cmd":"card","id":1})");
}

TEST_F(JsonCards, ACardThatDoesNotComeIsAnError) {
    say_(R"({"cmd":"card","id":1,"jid":"olek@localhost"})");
    emit cards().cardFailed(kMe, QStringLiteral("olek@localhost"), QStringLiteral("nic"));
    EXPECT_EQ(told(), R"({"event":"error","reason":"nic","cmd":"card","id":1})");
    messenger.refusals[QStringLiteral("requestCard")] = QStringLiteral("offline");
    say_(R"({"cmd":"card","id":2,"jid":"olek@localhost"})");
    EXPECT_EQ(told(), R"({"event":"error","reason":"offline","cmd":"card","id":2})");
}

TEST_F(JsonCards, TheOwnCardIsShownAndStored) {
    say_(R"({"cmd":"own-card","id":1})");
    EXPECT_EQ(called(), "requestOwnCard|ala@localhost");
    emit cards().ownCardReceived(kMe, {{{"nick", "Al"}}, {QStringLiteral("PHOTO")}});
    EXPECT_EQ(told(),
              R"({"event":"own-card","account":"ala@localhost","fields":{"birth":"","email":"","name":"","nick":"Al",)"
              R"("role":"","surname":"","title":"","www":""},"lost":["PHOTO"]})"
              "\n"
              R"({"event":"ok","cmd":"own-card","id":1})");
    say_(R"({"cmd":"store-card","id":2,"fields":{"nick":"Ala","role":""}})");
    EXPECT_EQ(called(), "storeOwnCard|ala@localhost|nick=Ala|role=|");
    emit cards().ownCardWouldLose(kMe, {QStringLiteral("PHOTO"), QStringLiteral("TEL")});
    EXPECT_EQ(told(), R"({"event":"card-losses","account":"ala@localhost","lost":["PHOTO","TEL"]})"
                      "\n"
                      R"({"event":"error","reason":"storing takes away from the card on the server: )"
                      R"x(PHOTO, TEL (agree with \"lose\": true)","cmd":"store-card","id":2})x");
    say_(R"({"cmd":"store-card","id":3,"fields":{"nick":"Ala"},"lose":true})");
    EXPECT_EQ(called(), "storeOwnCard|ala@localhost|nick=Ala|agreed");
    emit cards().ownCardStored(kMe);
    EXPECT_EQ(told(), R"({"event":"ok","cmd":"store-card","id":3})");
    say_(R"({"cmd":"store-card","id":4,"fields":{"nick":5}})");
    EXPECT_EQ(called(), "");
    EXPECT_NE(told().find(R"("event":"error")"), std::string::npos);
    say_(R"({"cmd":"store-card","id":5,"fields":{}})");
    emit cards().ownCardFailed(kMe, QStringLiteral("Bład"));
    EXPECT_EQ(told(), R"({"event":"error","reason":"Bład","cmd":"store-card","id":5})");
}

TEST_F(JsonCards, TheOwnPictureIsThatOfAllAccounts) {
    const OwnPicture picture{QStringLiteral("/p/_avatar"), QStringLiteral("abc")};
    const std::string event = R"({"event":"own-picture","path":"/p/_avatar","hash":"abc"})";
    say_(R"({"cmd":"set-picture","id":1,"path":"/x.png"})");
    EXPECT_EQ(called(), "setOwnPicture|/x.png");
    emit cards().ownPictureChanged(picture);
    EXPECT_EQ(told(), event + "\n" + R"({"event":"ok","cmd":"set-picture","id":1})");
    say_(R"({"cmd":"fetch-picture","id":2,"account":"ola@localhost"})");
    EXPECT_EQ(called(), "fetchOwnPicture|ola@localhost");
    emit cards().ownPictureChanged(picture);
    EXPECT_EQ(told(), event + "\n" + R"({"event":"ok","cmd":"fetch-picture","id":2})");
    say_(R"({"cmd":"set-picture","id":3,"path":"/x.png"})");
    emit cards().ownPictureFailed(QStringLiteral("nic"));
    EXPECT_EQ(told(), R"({"event":"error","reason":"nic","cmd":"set-picture","id":3})");
    messenger.ownPicture = picture;
    say_(R"({"cmd":"own-picture","id":4})");
    EXPECT_EQ(told(), event + "\n" + R"({"event":"ok","cmd":"own-picture","id":4})");
    say_(R"({"cmd":"remove-picture","id":5})");
    EXPECT_EQ(called(), "removeOwnPicture");
    EXPECT_EQ(told(), R"({"event":"ok","cmd":"remove-picture","id":5})");
}

TEST_F(JsonCards, PublishingAndFetchingAreAnsweredByTheirAccount) {
    say_(R"({"cmd":"publish-picture","id":1})");
    EXPECT_EQ(called(), "publishOwnPicture|ala@localhost");
    emit cards().ownPicturePublished(QStringLiteral("ola@localhost"));
    emit cards().progressed(kMe, QStringLiteral("Uaktualnianie danych..."));
    emit cards().ownPicturePublished(kMe);
    EXPECT_EQ(told(), R"({"event":"notice","account":"ala@localhost","text":"Uaktualnianie danych..."})"
                      "\n"
                      R"({"event":"ok","cmd":"publish-picture","id":1})");
    say_(R"({"cmd":"fetch-picture","id":2})");
    emit cards().ownPictureRefused(kMe, QStringLiteral("nie ma"));
    EXPECT_EQ(told(), R"({"event":"error","reason":"nie ma","cmd":"fetch-picture","id":2})");
}

TEST_F(JsonCards, ThatThePluginIsBusyIsAnEvent) {
    emit cards().busyChanged(true);
    emit cards().busyChanged(false);
    EXPECT_EQ(told(), "{\"event\":\"own-card-busy\",\"busy\":true}\n{\"event\":\"own-card-busy\",\"busy\":false}");
}

TEST_F(JsonCards, ARemovedPictureAnswersTheOneThatIsBeingSet) {
    say_(R"({"cmd":"set-picture","id":1,"path":"/x.png"})");
    called();
    emit cards().ownPictureFailed(QStringLiteral("usunięto"));
    emit cards().ownPictureChanged({});
    EXPECT_EQ(told(), R"({"event":"error","reason":"usunięto","cmd":"set-picture","id":1})"
                      "\n"
                      R"({"event":"own-picture","path":"","hash":""})");
}

TEST_F(JsonCards, AContactsPictureIsAnEvent) {
    emit cards().pictureChanged(kMe,
                                {QStringLiteral("olek@localhost"), QStringLiteral("/c/a.png"), QStringLiteral("abc")});
    EXPECT_EQ(told(),
              R"({"event":"picture","account":"ala@localhost","jid":"olek@localhost","path":"/c/a.png","hash":"abc"})");
}

}  // namespace
}  // namespace oku::terminal::test
