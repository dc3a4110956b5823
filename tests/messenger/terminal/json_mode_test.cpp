// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <QJsonArray>
#include <QJsonDocument>

#include "messenger/core/texts.h"
#include "messenger/terminal/json/json_commands.h"
#include "messenger/terminal/json/json_mode.h"
#include "tests/messenger/terminal/json_fixture.h"

namespace oku::terminal::test {
namespace {

TEST_F(JsonModeTest, SaysThatItIsReady) {
    mode.start();
    EXPECT_EQ(QJsonDocument(last()).toJson(QJsonDocument::Compact).toStdString(),
              R"({"accounts":["ala@localhost","ola@localhost"],"event":"ready","profile":"profile/"})");
}

TEST_F(JsonModeTest, TellsWhyItCannotStart) {
    messenger.refusals["start"] = "no such module";
    EXPECT_EQ(mode.start(), "no such module");
    EXPECT_EQ(last().value("event"), "error");
    EXPECT_EQ(last().value("reason"), "no such module");
}

TEST_F(JsonModeTest, CarriesOutEachCommand) {
    const QString me = QStringLiteral("ala@localhost");
    expectOk(R"({"cmd":"account","jid":"ewa@localhost/x","password":"s3","settings":)"
             R"({"XMPP/Serv/Enable":1,"XMPP/Serv/Host":"127.0.0.1:5","XMPP/Serv/SSL":true}})",
             "addAccount|ewa@localhost/x|s3|XMPP/Serv/Enable=qlonglong:1|XMPP/Serv/Host=QString:127.0.0.1:5|"
             "XMPP/Serv/SSL=int:1");
    expectOk(R"({"cmd":"status","status":"xa","description":"śpię"})", "setStatus|ala@localhost|xa|śpię");
    expectOk(R"({"cmd":"status","status":"offline"})", "setStatus|ala@localhost|offline|");
    expectOk(R"({"cmd":"message","to":"olek@localhost","body":"cześć 🦆"})",
             "sendMessage|ala@localhost|olek@localhost|cześć 🦆|chat|");
    expectOk(R"({"cmd":"message","to":"o@l","body":"b","kind":"normal","subject":"s"})",
             "sendMessage|ala@localhost|o@l|b|normal|s");
    expectOk(R"({"cmd":"resend","message":12})", "resendMessage|12");
    expectOk(R"({"cmd":"cancel","message":12})", "cancelMessage|12");
    expectOk(R"({"cmd":"remove-account","jid":"a@b"})", "removeAccount|a@b|");
    expectOk(R"({"cmd":"remove-account","jid":"a@b","history":true})", "removeAccount|a@b|history");
    expectOk(R"({"cmd":"typing","to":"o@l","composing":true})", "sendTyping|ala@localhost|o@l|composing");
    expectOk(R"({"cmd":"typing","to":"o@l","composing":false})", "sendTyping|ala@localhost|o@l|paused");
    expectOk(R"({"cmd":"add","jid":"o@l","name":"O","group":"G"})", "addContact|ala@localhost|o@l|O|G");
    expectOk(R"({"cmd":"add","jid":"o@l"})", "addContact|ala@localhost|o@l||");
    expectOk(R"({"cmd":"rename","jid":"o@l","name":"N"})", "renameContact|ala@localhost|o@l|N");
    expectOk(R"({"cmd":"group","jid":"o@l","group":"H"})", "moveContact|ala@localhost|o@l|H");
    expectOk(R"({"cmd":"remove","jid":"o@l"})", "removeContact|ala@localhost|o@l");
    expectOk(R"({"cmd":"subscribe","jid":"o@l"})", "subscribe|ala@localhost|o@l");
    expectOk(R"({"cmd":"authorize","jid":"o@l","ask":true})", "authorize|ala@localhost|o@l|ask");
    expectOk(R"({"cmd":"authorize","jid":"o@l"})", "authorize|ala@localhost|o@l|");
    expectOk(R"({"cmd":"deny","jid":"o@l"})", "deny|ala@localhost|o@l");
    expectOk(R"({"cmd":"answer","box":3,"button":"yes"})", "answerBox|3|6");
    expectOk(R"({"cmd":"answer","box":4,"button":"no"})", "answerBox|4|7");
    expectOk(R"({"cmd":"answer","box":5,"button":"ok"})", "answerBox|5|1");
    expectOk(R"({"cmd":"set","key":"XMPP/Priority","value":7})", "setSetting|ala@localhost|XMPP/Priority|qlonglong|7");
    expectOk(R"({"cmd":"set","key":"k","value":-7.0})", "setSetting|ala@localhost|k|qlonglong|-7");
    expectOk(R"({"cmd":"set","key":"k","value":3000000000})", "setSetting|ala@localhost|k|qlonglong|3000000000");
    expectOk(R"({"cmd":"set","key":"k","value":false})", "setSetting|ala@localhost|k|int|0");
    expectOk(R"({"cmd":"set","key":"k","value":"t"})", "setSetting|ala@localhost|k|QString|t");
    expectOk(R"({"cmd":"raw","xml":"<presence/>"})", "sendRaw|ala@localhost|<presence/>");
    expectOk(R"({"cmd":"console","on":true})", "setConsole|on");
    expectOk(R"({"cmd":"console","on":false})", "setConsole|off");
}

TEST_F(JsonModeTest, NamesEveryCommandThatTheProtocolHas) {
    for (const JsonCommandRow& row : jsonCommands()) {
        const JsonCommandShape& shape = row.shape;
        if (QLatin1String(shape.name) == QLatin1String("quit")) continue;
        QJsonObject object{{"cmd", shape.name}, {"id", 1}};
        const auto answers = say_(QJsonDocument(object).toJson(QJsonDocument::Compact));
        int answered = 0;
        for (const QJsonObject& event : answers) answered += event.value("id") == 1;
        const bool later = QStringList{"server", "own-card", "publish-picture", "fetch-picture"}.contains(shape.name);
        EXPECT_EQ(answered, later ? 0 : 1) << shape.name;
    }
}

TEST_F(JsonModeTest, AnswersWithTheIdAsItCame) {
    EXPECT_EQ(say_(R"({"cmd":"console","on":true,"id":{"a":[1,null,"ż"]}})").last().value("id"),
              (QJsonObject{{"a", QJsonArray{1, QJsonValue::Null, "ż"}}}));
    EXPECT_FALSE(say_(R"({"cmd":"console","on":true})").last().contains("id"));
    EXPECT_EQ(say_(R"({"cmd":"nothing","id":null})").last().value("id"), QJsonValue::Null);
    EXPECT_TRUE(say_(R"({"cmd":"nothing","id":null})").last().contains("id"));
    EXPECT_EQ(say_(R"({"cmd":"deny","id":"x"})").last().value("id"), "x");
}

TEST_F(JsonModeTest, TakesTheAccountOfTheCommand) {
    expectOk(R"({"cmd":"status","status":"dnd","account":"ola@localhost"})", "setStatus|ola@localhost|dnd|");
    expectOk(R"({"cmd":"status","status":"dnd","account":"Ola@Localhost/dom"})", "setStatus|ola@localhost|dnd|");
}

TEST_F(JsonModeTest, RefusesWhatIsNoCommand) {
    EXPECT_NE(expectError("{\"cmd\":").find("not JSON"), std::string::npos);
    EXPECT_EQ(expectError("[1]"), "a command must be an object");
    EXPECT_EQ(expectError("{}"), "the field \"cmd\" is missing or not a text");
    EXPECT_EQ(expectError(R"({"cmd":7})"), "the field \"cmd\" is missing or not a text");
    EXPECT_EQ(expectError(R"({"cmd":"fly"})"), "unknown command \"fly\"");
    EXPECT_EQ(expectError(R"({"cmd":"message","to":"a@b"})"), "the field \"body\" is missing");
    EXPECT_EQ(expectError(R"({"cmd":"message","to":null,"body":"x"})"), "the field \"to\" is missing");
    EXPECT_EQ(expectError(R"({"cmd":"message","to":5,"body":"x"})"), "the field \"to\" must be a text");
    EXPECT_EQ(expectError(R"({"cmd":"typing","to":"a@b","composing":1})"),
              "the field \"composing\" must be true or false");
    EXPECT_EQ(expectError(R"({"cmd":"answer","box":1.5,"button":"ok"})"), "the field \"box\" must be a whole number");
    EXPECT_EQ(expectError(R"({"cmd":"roster","account":1})"), "the field \"account\" must be a text");
    EXPECT_EQ(expectError(R"({"cmd":"account","jid":"a@b","settings":[]})"),
              "the field \"settings\" must be an object");
    EXPECT_NE(expectError("\xff\xfe").find("not JSON"), std::string::npos);
}

TEST_F(JsonModeTest, RefusesWrongValues) {
    EXPECT_EQ(expectError(R"({"cmd":"status","status":"sleeping"})").find("unknown status"), 0U);
    EXPECT_EQ(expectError(R"({"cmd":"status","status":"error"})").find("unknown status"), 0U);
    EXPECT_EQ(expectError(R"({"cmd":"message","to":"a@b","body":"x","kind":"loud"})").find("unknown kind"), 0U);
    EXPECT_EQ(expectError(R"({"cmd":"set","key":"k","value":1.5})"), "\"1.5\" is not a whole number");
    EXPECT_EQ(expectError(R"({"cmd":"set","key":"k","value":1e300})"), "\"1e+300\" is not a whole number");
    EXPECT_EQ(expectError(R"({"cmd":"account","jid":"a@b","password":"p","settings":{"k":0.25}})"),
              "\"0.25\" is not a whole number");
    EXPECT_EQ(expectError(R"({"cmd":"answer","box":1,"button":"maybe"})").find("unknown answer"), 0U);
    EXPECT_EQ(expectError(R"({"cmd":"resend","message":1.5})").find("the field \"message\" must be"), 0U);
    EXPECT_EQ(expectError(R"({"cmd":"history","with":"a@b","limit":0})"), "the number of messages must be above zero");
}

TEST_F(JsonModeTest, PassesTheReasonOfARefusalOn) {
    messenger.refusals["renameContact"] = "not logged in";
    const auto answers = say_(R"({"cmd":"rename","jid":"o@l","name":"N","id":4})");
    ASSERT_EQ(answers.size(), 1);
    EXPECT_EQ(answers[0], (QJsonObject{{"event", "error"}, {"cmd", "rename"}, {"id", 4}, {"reason", "not logged in"}}));
}

TEST_F(JsonModeTest, NeedsAnAccountForWhatIsDoneWithOne) {
    messenger.accountList.clear();
    EXPECT_EQ(expectError(R"({"cmd":"roster"})"), "there is no account yet");
    expectOk(R"({"cmd":"console","on":true})", "setConsole|on");
}

TEST_F(JsonModeTest, GivesTheListBeforeItsAnswer) {
    messenger.contactLists[QStringLiteral("ala@localhost")][0].mood = QStringLiteral("Nastrój: happy");
    const auto answers = say_(R"({"cmd":"roster","id":9})");
    ASSERT_EQ(answers.size(), 2);
    EXPECT_EQ(QJsonDocument(answers[0]).toJson(QJsonDocument::Compact).toStdString(),
              R"({"account":"ala@localhost","contacts":[{"description":"","group":"Znajomi","jid":"olek@localhost",)"
              R"("mood":"Nastrój: happy","name":"Olek","resources":[{"description":"Zaraz wracam ☕","priority":5,)"
              R"("resource":"dom","status":"away"}],"status":"away","subscription":"both","tune":"","waiting":false}],)"
              R"("event":"roster"})");
    EXPECT_EQ(answers[1].value("event"), "ok");
}

TEST_F(JsonModeTest, GivesTheHistoryBeforeItsAnswer) {
    messenger.messages = {incoming("ala@localhost", "olek@localhost", "hej"),
                          outgoing("ala@localhost", "olek@localhost", "no hej", 2)};
    messenger.messages[0].number = 1;
    messenger.messages[0].failed = true;
    messenger.messages[0].delayed = QDateTime(QDate(2026, 11, 20), QTime(8, 0), Qt::UTC);
    messenger.messages[0].time = QDateTime(QDate(2026, 11, 21), QTime(9, 5, 7, 250), Qt::UTC);
    messenger.messages[1].state = DeliveryState::unconfirmed;
    const auto answers = say_(R"({"cmd":"history","with":"olek@localhost","limit":5,"search":"hej"})");
    EXPECT_EQ(messenger.takeCalls().join(u'\n'), "history|ala@localhost|olek@localhost|5|hej");
    ASSERT_EQ(answers.size(), 2);
    const QJsonArray list = answers[0].value("messages").toArray();
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list[0].toObject(), (QJsonObject{{"message", 1},
                                               {"with", "olek@localhost"},
                                               {"direction", "in"},
                                               {"body", "hej"},
                                               {"subject", ""},
                                               {"time", "2026-11-21T09:05:07.250Z"},
                                               {"delayed", "2026-11-20T08:00:00.000Z"},
                                               {"state", "received"},
                                               {"failed", true}}));
    EXPECT_EQ(list[1].toObject().value("failed"), false);
    EXPECT_EQ(list[1].toObject().value("direction"), "out");
    EXPECT_EQ(list[1].toObject().value("state"), "unconfirmed");
    EXPECT_EQ(list[1].toObject().value("message"), 2);
    EXPECT_TRUE(list[1].toObject().value("delayed").isNull());
    say_(R"({"cmd":"history"})");
    EXPECT_EQ(messenger.takeCalls().join(u'\n'), "history|ala@localhost||20|");
}

TEST_F(JsonModeTest, GivesASettingBeforeItsAnswer) {
    messenger.settings["XMPP/Priority"] = 7;
    const auto answers = say_(R"({"cmd":"get","key":"XMPP/Priority"})");
    ASSERT_EQ(answers.size(), 2);
    EXPECT_EQ(
        answers[0],
        (QJsonObject{{"event", "setting"}, {"account", "ala@localhost"}, {"key", "XMPP/Priority"}, {"value", 7}}));
    EXPECT_TRUE(say_(R"({"cmd":"get","key":"none"})").value(0).value("value").isNull());
}

TEST_F(JsonModeTest, ShowsNoPassword) {
    for (const char* key : {"XMPP/Pass", "XMPP/Proxy/Pass"}) {
        const QByteArray get = QByteArrayLiteral("{\"cmd\":\"get\",\"key\":\"") + key + "\"}";
        messenger.settings.remove(key);
        EXPECT_TRUE(say_(get).value(0).value("value").isNull()) << "that there is none may be told";
        messenger.settings[key] = "tajne";
        EXPECT_EQ(say_(get).value(0).value("value"), "***");
    }
}

TEST_F(JsonModeTest, AnswersAQuestionAboutAContactWhenAllIsKnown) {
    EXPECT_TRUE(say_(R"({"cmd":"info","jid":"Olek@localhost/dom","id":1})").isEmpty());
    EXPECT_EQ(messenger.takeCalls().join(u'\n'), "requestInfo|ala@localhost|olek@localhost");
    ContactInfo info;
    info.jid = QStringLiteral("olek@localhost");
    info.resource = resource("dom", Status::away, 5, "opis");
    info.resource.changed = QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5), Qt::UTC);
    info.client = QStringLiteral("protoLink");
    info.version = QStringLiteral("1.0");
    info.os = QStringLiteral("Linux");
    info.features = QStringList{"urn:xmpp:ping"};
    emit messenger.roster().infoReceived("ala@localhost", info);
    emit messenger.roster().infoComplete("ola@localhost", "olek@localhost");
    emit messenger.roster().infoComplete("ala@localhost", "other@localhost");
    ASSERT_EQ(events.size(), 1);
    EXPECT_EQ(events[0], (QJsonObject{{"event", "info"},
                                      {"account", "ala@localhost"},
                                      {"jid", "olek@localhost"},
                                      {"resource", "dom"},
                                      {"status", "away"},
                                      {"priority", 5},
                                      {"description", "opis"},
                                      {"changed", "2026-01-02T03:04:05.000Z"},
                                      {"client", "protoLink"},
                                      {"version", "1.0"},
                                      {"os", "Linux"},
                                      {"features", QJsonArray{"urn:xmpp:ping"}}}));
    emit messenger.roster().infoComplete("ala@localhost", "olek@localhost");
    emit messenger.roster().infoComplete("ala@localhost", "olek@localhost");
    ASSERT_EQ(events.size(), 2);
    EXPECT_EQ(last(), (QJsonObject{{"event", "ok"}, {"cmd", "info"}, {"id", 1}}));
}

TEST_F(JsonModeTest, AnswersAQuestionAboutTheServerWhenItIsKnown) {
    EXPECT_TRUE(say_(R"({"cmd":"server","id":1})").isEmpty());
    ServerInfo info;
    info.domain = QStringLiteral("localhost");
    info.identities = QStringList{"server/im Prosody"};
    info.features = QStringList{"msgoffline"};
    emit messenger.roster().serverInfoReceived("ala@localhost", info);
    ASSERT_EQ(events.size(), 2);
    EXPECT_EQ(events[0], (QJsonObject{{"event", "server"},
                                      {"account", "ala@localhost"},
                                      {"domain", "localhost"},
                                      {"identities", QJsonArray{"server/im Prosody"}},
                                      {"features", QJsonArray{"msgoffline"}}}));
    EXPECT_EQ(last().value("event"), "ok");
}

TEST_F(JsonModeTest, RefusesAQuestionAtOnceWhenTheMessengerDoes) {
    messenger.refusals["requestInfo"] = "not logged in";
    messenger.refusals["requestServerInfo"] = "not logged in";
    EXPECT_EQ(say_(R"({"cmd":"info","jid":"o@l"})").value(0).value("reason"), "not logged in");
    EXPECT_EQ(say_(R"({"cmd":"server"})").value(0).value("reason"), "not logged in");
    emit messenger.roster().infoComplete("ala@localhost", "o@l");
    emit messenger.roster().serverInfoReceived("ala@localhost", {});
    ASSERT_EQ(events.size(), 1);
    EXPECT_EQ(last().value("event"), "server");
}

TEST_F(JsonModeTest, TellsEachEvent) {
    const QString me = QStringLiteral("ala@localhost");
    emit messenger.accounts().accountChanged(me);
    EXPECT_EQ(told(), R"({"account":"ala@localhost","event":"account","jid":"ala@localhost"})");
    emit messenger.accounts().connectionChanged(me, ConnectionState::online, {});
    EXPECT_EQ(told(),
              R"({"account":"ala@localhost","encrypted":true,"event":"connection","reason":"","state":"online"})");
    messenger.accountList[0].encrypted = false;
    emit messenger.accounts().connectionChanged(me, ConnectionState::online, {});
    EXPECT_EQ(told(),
              R"({"account":"ala@localhost","encrypted":false,"event":"connection","reason":"","state":"online"})");
    emit messenger.accounts().connectionChanged(me, ConnectionState::offline, "refused");
    EXPECT_EQ(told(), R"({"account":"ala@localhost","encrypted":false,"event":"connection","reason":"refused",)"
                      R"("state":"offline"})");
    emit messenger.accounts().ownStatusChanged(me, Status::away, "ż");
    EXPECT_EQ(told(), R"({"account":"ala@localhost","description":"ż","event":"status","status":"away"})");
    emit messenger.roster().rosterComplete(me);
    EXPECT_EQ(told().find(R"({"account":"ala@localhost","contacts":[{)"), 0U);
    emit messenger.roster().contactChanged(me, contact("o@l", "O", "G", Status::online));
    EXPECT_EQ(told(), R"({"account":"ala@localhost","description":"","event":"contact","group":"G","jid":"o@l",)"
                      R"("mood":"","name":"O","resources":[],"status":"online","subscription":"both","tune":"",)"
                      R"("waiting":false})");
    emit messenger.accounts().accountRemoved("x@l");
    EXPECT_EQ(told(), R"({"account":"x@l","event":"account-removed","jid":"x@l"})");
    emit messenger.roster().contactRemoved(me, "o@l");
    EXPECT_EQ(told(), R"({"account":"ala@localhost","event":"removed","jid":"o@l"})");
    emit messenger.roster().presenceReceived(me, "o@l", resource("r", Status::dnd, -3, "d"));
    EXPECT_EQ(told(), R"({"account":"ala@localhost","description":"d","event":"presence","jid":"o@l","priority":-3,)"
                      R"("resource":"r","status":"dnd"})");
    Message message = incoming("ala@localhost", "o@l", "raz\ndwa");
    message.time = QDateTime(QDate(2026, 11, 21), QTime(9, 5, 7), Qt::UTC);
    message.resource = QStringLiteral("r");
    emit messenger.talk().messageReceived(me, message);
    EXPECT_EQ(told(), R"({"account":"ala@localhost","body":"raz\ndwa","delayed":null,"event":"message",)"
                      R"("failed":false,"from":"o@l","kind":"chat","resource":"r","subject":"",)"
                      R"("time":"2026-11-21T09:05:07.000Z"})");
    emit messenger.talk().messageSent(me, outgoing("ala@localhost", "o@l", "b", 7));
    EXPECT_EQ(told(), R"({"account":"ala@localhost","body":"b","event":"sent","message":7,"to":"o@l"})");
    Message waiting = outgoing("ala@localhost", "o@l", "b", 8);
    waiting.state = DeliveryState::queued;
    emit messenger.talk().messageQueued(me, waiting);
    EXPECT_EQ(told(), R"({"account":"ala@localhost","body":"b","event":"queued","message":8,"to":"o@l"})");
    emit messenger.talk().typingReceived(me, "o@l", true);
    EXPECT_EQ(told(), R"({"account":"ala@localhost","composing":true,"event":"typing","from":"o@l"})");
    emit messenger.roster().authorizationRequested(me, "o@l");
    EXPECT_EQ(told(), R"({"account":"ala@localhost","event":"authorization","jid":"o@l"})");
    MessageBox box;
    box.number = 2;
    box.text = QStringLiteral("Na pewno?");
    box.title = QStringLiteral("XMPP");
    box.style = BoxStyle::question;
    emit messenger.windows().boxOpened(box);
    EXPECT_EQ(told(), R"({"box":2,"event":"question","holds":false,"seconds":0,"style":"question",)"
                      R"("text":"Na pewno?","title":"XMPP"})");
    box.holds = true;
    box.seconds = 60;
    emit messenger.windows().boxOpened(box);
    EXPECT_EQ(told(), R"({"box":2,"event":"question","holds":true,"seconds":60,"style":"question",)"
                      R"("text":"Na pewno?","title":"XMPP"})");
    emit messenger.windows().noticed({}, "tekst");
    EXPECT_EQ(told(), R"({"event":"notice","text":"tekst"})");
    emit messenger.wire().logged({1, "XMSC", "line"});
    EXPECT_EQ(told(), R"({"event":"log","level":1,"tag":"XMSC","text":"line"})");
    emit messenger.wire().xmlSeen(me, true, "<a/>");
    EXPECT_EQ(told(), R"({"account":"ala@localhost","data":"<a/>","direction":"in","event":"xml"})");
    emit messenger.wire().xmlSeen(me, false, "<b/>");
    EXPECT_EQ(told(), R"({"account":"ala@localhost","data":"<b/>","direction":"out","event":"xml"})");
    emit messenger.accounts().certificateRefused(me, {"srv", "self-signed", "AA:BB"});
    EXPECT_EQ(told(), R"({"account":"ala@localhost","event":"notice","text":"the certificate of srv was refused: )"
                      R"(self-signed; SHA-256 fingerprint: AA:BB"})");
    Message lost = outgoing("ala@localhost", "o@l", "b", 8);
    lost.state = DeliveryState::unconfirmed;
    emit messenger.talk().messageStateChanged(me, lost);
    EXPECT_EQ(
        events.value(0),
        (QJsonObject{
            {"account", "ala@localhost"}, {"body", "b"}, {"event", "unconfirmed"}, {"message", 8}, {"to", "o@l"}}));
    EXPECT_EQ(told(), R"({"account":"ala@localhost","event":"notice","text":"message 8 to o@l is not confirmed: )"
                      R"(the connection broke after it was sent"})");
    lost.state = DeliveryState::failed;
    emit messenger.talk().messageStateChanged(me, lost);
    EXPECT_EQ(events.value(0).value("event"), "failed");
    EXPECT_EQ(told(), R"({"account":"ala@localhost","event":"notice","text":"message 8 to o@l was not delivered"})");
}

TEST_F(JsonModeTest, TellsWhatPeoplePublish) {
    const QString me = QStringLiteral("ala@localhost");
    NewsFace& news = messenger.news();
    emit news.tuneReceived(me, "o@l", {"Artist", "Title", "Album", "3", "http://x/", "185"});
    EXPECT_EQ(told(), R"({"account":"ala@localhost","artist":"Artist","event":"tune","from":"o@l","length":"185",)"
                      R"("source":"Album","title":"Title","track":"3","uri":"http://x/"})");
    emit news.moodReceived(me, me, {"happy", "bo tak"});
    EXPECT_EQ(told(), R"({"account":"ala@localhost","event":"mood","from":"ala@localhost","mood":"happy",)"
                      R"("text":"bo tak"})");
    emit news.locationReceived(me, "o@l", {{"lat", "1"}, {"text", "dom"}});
    EXPECT_EQ(told(), R"({"account":"ala@localhost","event":"location","fields":{"lat":"1","text":"dom"},)"
                      R"("from":"o@l"})");
    emit news.locationReceived(me, "o@l", {});
    EXPECT_EQ(told(), R"({"account":"ala@localhost","event":"location","fields":{},"from":"o@l"})");
    emit news.popupShown({4, PopupKind::mail, "Poczta", "jeden\ndwa", "klucz", true, true});
    EXPECT_EQ(told(), R"({"event":"popup","kind":"mail","opens":true,"popup":4,"stays":true,"text":"jeden\ndwa",)"
                      R"("title":"Poczta"})");
    emit news.popupGone(4);
    EXPECT_EQ(told(), R"({"event":"popup-gone","popup":4})");
}

TEST_F(JsonModeTest, PublishesForThePerson) {
    expectOk(R"({"cmd":"tune","artist":"A","title":"T","source":"S","track":"3","uri":"u","length":"9"})",
             "publishTune|ala@localhost|A|T|S|3|u|9");
    expectOk(R"({"cmd":"tune","account":"ola@localhost"})", "publishTune|ola@localhost||||||");
    expectOk(R"({"cmd":"mood","mood":"happy","text":"bo"})", "publishMood|ala@localhost|happy|bo");
    expectOk(R"({"cmd":"mood"})", "publishMood|ala@localhost||");
    expectOk(R"({"cmd":"location","fields":{"lon":"2","lat":"1","area":""}})",
             "publishLocation|ala@localhost|lat=1|lon=2");
    expectOk(R"({"cmd":"location"})", "publishLocation|ala@localhost");
    EXPECT_EQ(expectError(R"({"cmd":"location","fields":{"lat":1}})"), "the field \"lat\" must be a text");
    EXPECT_EQ(expectError(R"({"cmd":"tune","length":9})"), "the field \"length\" must be a text");
    expectOk(R"({"cmd":"open-popup","popup":4})", "openPopup|4");
    expectOk(R"({"cmd":"close-popup","popup":4})", "closePopup|4");
}

TEST_F(JsonModeTest, KeepsTheLogToItselfUnlessVerbose) {
    FakeMessenger other;
    JsonMode quiet(
        other, [this](const QByteArray& line) { take(line); }, false);
    events.clear();
    emit other.wire().logged({0, "XMPP", "line"});
    EXPECT_TRUE(events.isEmpty());
}

TEST_F(JsonModeTest, ReadsLinesCutAnywhere) {
    const QByteArray text = R"({"cmd":"deny","jid":"a@b"})"
                            "\n\n  \n"
                            R"({"cmd":"deny","jid":"żó@b"})"
                            "\r\n";
    for (qsizetype at = 0; at < text.size(); ++at) mode.feed(text.mid(at, 1));
    EXPECT_EQ(messenger.takeCalls().join(u'\n'), "deny|ala@localhost|a@b\ndeny|ala@localhost|żó@b");
    EXPECT_EQ(events.size(), 2);
}

TEST_F(JsonModeTest, ThrowsAwayALineThatIsTooLongAndGoesOn) {
    const QByteArray piece(1 << 20, 'x');
    for (int count = 0; count < 40; ++count) mode.feed(piece);
    ASSERT_EQ(events.size(), 1);
    EXPECT_EQ(last().value("reason"), "the line is longer than 16 MiB");
    mode.feed("rest\n{\"cmd\":\"deny\",\"jid\":\"a@b\"}\n");
    ASSERT_EQ(events.size(), 2);
    EXPECT_EQ(last().value("event"), "ok");
}

TEST_F(JsonModeTest, KeepsTheOrderOfLinesWhileACommandHoldsIt) {
    messenger.within["fetchOwnPicture"] = [this] {
        mode.feed("ny\",\"jid\":\"2@b\"}\n{\"cmd\":\"deny\",\"jid\":\"3@b\"}\n{\"cmd\":\"de");
    };
    mode.feed("{\"cmd\":\"fetch-picture\"}\n{\"cmd\":\"deny\",\"jid\":\"1@b\"}\n{\"cmd\":\"de");
    mode.feed("ny\",\"jid\":\"4@b\"}\n");
    EXPECT_EQ(messenger.takeCalls().join(u'\n').toStdString(),
              "fetchOwnPicture|ala@localhost\ndeny|ala@localhost|1@b\ndeny|ala@localhost|2@b\n"
              "deny|ala@localhost|3@b\ndeny|ala@localhost|4@b");
    EXPECT_EQ(events.size(), 4);
    for (const QJsonObject& event : events) EXPECT_EQ(event.value("event"), "ok");
}

TEST_F(JsonModeTest, RunsTheLinesBeforeTheEndWhileACommandHoldsIt) {
    messenger.finishAtOnce = false;
    messenger.within["fetchOwnPicture"] = [this] { mode.end(); };
    mode.feed("{\"cmd\":\"fetch-picture\"}\n{\"cmd\":\"deny\",\"jid\":\"1@b\"}\n{\"cmd\":\"deny\",\"jid\":\"2@b\"}");
    EXPECT_EQ(messenger.takeCalls().join(u'\n').toStdString(),
              "fetchOwnPicture|ala@localhost\ndeny|ala@localhost|1@b\ndeny|ala@localhost|2@b\nshutdown");
    EXPECT_EQ(events.size(), 2);
    for (const QJsonObject& event : events) EXPECT_EQ(event.value("event"), "ok");
}

TEST_F(JsonModeTest, ThrowsAwayALineThatIsTooLongWhileACommandHoldsIt) {
    messenger.within["fetchOwnPicture"] = [this] {
        mode.feed(QByteArray(17 << 20, 'x'));
        mode.feed("the rest\n{\"cmd\":\"deny\",\"jid\":\"2@b\"}\n");
    };
    mode.feed("{\"cmd\":\"fetch-picture\"}\n{\"cmd\":\"deny\",\"jid\":\"1@b\"}\nx");
    ASSERT_EQ(events.size(), 3);
    EXPECT_EQ(events[0].value("event"), "ok");
    EXPECT_EQ(events[1].value("reason"), "the line is longer than 16 MiB");
    EXPECT_EQ(events[2].value("event"), "ok");
    EXPECT_EQ(messenger.takeCalls().join(u'\n').toStdString(),
              "fetchOwnPicture|ala@localhost\ndeny|ala@localhost|1@b\ndeny|ala@localhost|2@b");
}

TEST_F(JsonModeTest, QuitsWithByeAsTheLastLine) {
    const auto answers = say_(R"({"cmd":"quit","id":1})");
    ASSERT_EQ(answers.size(), 2);
    EXPECT_EQ(answers[0].value("event"), "ok");
    EXPECT_EQ(answers[1], (QJsonObject{{"event", "bye"}}));
    EXPECT_EQ(messenger.takeCalls().join(u'\n'), "shutdown");
    EXPECT_TRUE(ended);
}

TEST_F(JsonModeTest, QuitsAtTheEndOfTheInputAfterTheLastLine) {
    mode.feed(R"({"cmd":"deny","jid":"a@b"})");
    EXPECT_TRUE(events.isEmpty());
    mode.end();
    mode.end();
    EXPECT_EQ(messenger.takeCalls().join(u'\n'), "deny|ala@localhost|a@b\nshutdown");
    EXPECT_EQ(last().value("event"), "bye");
}

TEST_F(JsonModeTest, AnswersWhatStillWaitsWhenItEnds) {
    messenger.finishAtOnce = false;
    say_(R"({"cmd":"info","jid":"o@l","id":5})");
    say_(R"({"cmd":"quit","id":6})");
    EXPECT_EQ(say_(R"({"cmd":"roster","id":7})").value(0).value("reason"), "the program is ending");
    emit messenger.finished();
    ASSERT_EQ(events.size(), 2);
    EXPECT_EQ(events[0].value("id"), 5);
    EXPECT_EQ(events[0].value("event"), "error");
    EXPECT_EQ(events[1].value("event"), "bye");
}

}  // namespace
}  // namespace oku::terminal::test
