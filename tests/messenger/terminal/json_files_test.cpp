// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Files in the JSON mode.
#include "tests/messenger/terminal/json_fixture.h"

namespace oku::terminal::test {
namespace {

const QString kMe = QStringLiteral("ala@localhost");

class JsonFilesTest : public JsonModeTest {
protected:
    std::string told() {
        const QByteArray text = QJsonDocument(last()).toJson(QJsonDocument::Compact);
        events.clear();
        return text.toStdString();
    }
    static Transfer transfer() {
        Transfer one;
        one.number = 4;
        one.account = kMe;
        one.contact = QStringLiteral("o@l");
        one.name = QStringLiteral("ż.bin");
        one.path = QStringLiteral("/tmp/ż.bin");
        one.text = QStringLiteral("Przesyłanie...");
        one.state = TransferState::running;
        return one;
    }
};

TEST_F(JsonFilesTest, CarriesOutEachCommand) {
    expectOk(R"({"cmd":"send-file","to":"o@l","path":"/tmp/a"})", "sendFile|ala@localhost|o@l|/tmp/a");
    expectOk(R"({"cmd":"answer-file","offer":3,"answer":"accept"})", "answerOffer|3|accept");
    expectOk(R"({"cmd":"answer-file","offer":3,"answer":"refuse"})", "answerOffer|3|refuse");
    expectOk(R"({"cmd":"answer-file","offer":3,"answer":"ignore"})", "answerOffer|3|ignore");
    expectOk(R"({"cmd":"cancel-file","transfer":4})", "cancelTransfer|4");
    expectOk(R"({"cmd":"open-file","transfer":4})", "openFile|4");
    expectOk(R"({"cmd":"choose-file","file":5,"path":"/tmp/a"})", "chooseFile|5|/tmp/a");
    expectOk(R"({"cmd":"choose-file","file":5})", "chooseFile|5|");
    EXPECT_EQ(expectError(R"({"cmd":"answer-file","offer":3,"answer":"maybe"})").find("unknown answer"), 0U);
}

TEST_F(JsonFilesTest, TellsOfOffersAndQuestions) {
    emit messenger.transfers().offerReceived({3, kMe, QStringLiteral("o@l"), QStringLiteral("ż.bin"), 5, 60});
    EXPECT_EQ(told(), R"({"account":"ala@localhost","event":"file-offer","from":"o@l","name":"ż.bin","offer":3,)"
                      R"("seconds":60,"size":5})");
    emit messenger.transfers().offerReceived({3, kMe, QStringLiteral("o@l"), QStringLiteral("ż.bin"), -1, 60});
    EXPECT_NE(told().find(R"("size":null)"), std::string::npos);
    emit messenger.transfers().offerClosed(3, OfferReply::ignore);
    EXPECT_EQ(told(), R"({"answer":"ignore","event":"file-offer-closed","offer":3})");
    emit messenger.transfers().fileAsked({2, kMe, QStringLiteral("T"), QStringLiteral("A|*.*||")});
    EXPECT_EQ(told(), R"({"account":"ala@localhost","event":"file-wanted","file":2,"filter":"A|*.*||","title":"T"})");
    emit messenger.transfers().fileQuestionClosed(2);
    EXPECT_EQ(told(), R"({"event":"file-wanted-closed","file":2})");
}

TEST_F(JsonFilesTest, TellsOfTransfers) {
    Transfer one = transfer();
    emit messenger.transfers().transferChanged(one);
    EXPECT_EQ(told(), R"({"account":"ala@localhost","cancel":false,"direction":"in","event":"transfer","left":null,)"
                      R"("name":"ż.bin","path":"/tmp/ż.bin","position":0,"size":null,"speed":0,"state":"running",)"
                      R"("text":"Przesyłanie...","transfer":4,"with":"o@l"})");
    one.direction = Direction::out;
    one.size = 5'000'000'000;
    one.position = 4'000'000'000;
    one.speed = 10;
    one.secondsLeft = 7;
    one.cancellable = true;
    one.state = TransferState::incomplete;
    emit messenger.transfers().transferChanged(one);
    EXPECT_EQ(told(), R"({"account":"ala@localhost","cancel":true,"direction":"out","event":"transfer","left":7,)"
                      R"("name":"ż.bin","path":"/tmp/ż.bin","position":4000000000,"size":5000000000,"speed":10,)"
                      R"("state":"incomplete","text":"Przesyłanie...","transfer":4,"with":"o@l"})");
}

TEST_F(JsonFilesTest, GivesTheListBeforeItsAnswer) {
    messenger.transferList = {transfer()};
    messenger.offers = {{3, kMe, QStringLiteral("o@l"), QStringLiteral("b"), 5, 60}};
    messenger.fileQuestions = {{7, kMe, QStringLiteral("Plik"), QStringLiteral("Wszystkie|*.*||")}};
    const auto answers = say_(R"({"cmd":"files"})");
    ASSERT_EQ(answers.size(), 2);
    EXPECT_EQ(answers[0].value("event"), "files");
    EXPECT_EQ(answers[0].value("offers").toArray().at(0).toObject().value("offer"), 3);
    const QJsonObject wanted = answers[0].value("wanted").toArray().at(0).toObject();
    EXPECT_EQ(wanted, (QJsonObject{{"account", kMe}, {"file", 7}, {"title", "Plik"}, {"filter", "Wszystkie|*.*||"}}));
    const QJsonObject listed = answers[0].value("transfers").toArray().at(0).toObject();
    EXPECT_EQ(listed.value("transfer"), 4);
    EXPECT_EQ(listed.value("account"), kMe);
    EXPECT_EQ(answers[1].value("event"), "ok");
}

}  // namespace
}  // namespace oku::terminal::test
