// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <QFileInfo>

#include "tests/messenger/core/transfer_stage.h"

#include "messenger/core/values/setting_keys.h"

namespace oku::test {
namespace {

constexpr OKU_WORD kAccept = 1;
constexpr OKU_WORD kIgnore = OKU_FT_ANSWER_IGNORE;
constexpr OKU_WORD kRefuse = OKU_FT_ANSWER_REFUSE;

class FileOfferTest : public TransferStage {
protected:
    OKU_WORD answered(const QString& name, OfferReply reply = OfferReply::accept) {
        OKU_WORD result = 0;
        answerNext(reply);
        inPlugin([&] { result = ask(name); });
        return result;
    }
    void put(const QString& file) {
        QDir().mkpath(QFileInfo(file).path());
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    }
    void allowStrangers() { entry().settings->set(QString::fromUtf16(setting::filesOfStrangers), 1); }
};

TEST_F(FileOfferTest, GivesWhatTheUserAnswers) {
    EXPECT_EQ(answered(QStringLiteral("a.txt"), OfferReply::accept), kAccept);
    EXPECT_EQ(answered(QStringLiteral("b.txt"), OfferReply::refuse), kRefuse);
    EXPECT_EQ(answered(QStringLiteral("c.txt"), OfferReply::ignore), kIgnore);
    ASSERT_EQ(offers.size(), 3);
    EXPECT_EQ(offers[0].account, QStringLiteral("alice@example.org"));
    EXPECT_EQ(offers[0].contact, QStringLiteral("bob@example.org"));
    EXPECT_EQ(offers[0].name, QStringLiteral("a.txt"));
    EXPECT_EQ(offers[0].size, 5);
    EXPECT_EQ(offers[0].seconds, 60);
    EXPECT_EQ(closed.size(), 3);
    EXPECT_NE(face->answerOffer(offers[0].number, OfferReply::accept), QString());
    EXPECT_TRUE(notices.isEmpty());
}

TEST_F(FileOfferTest, AreAnsweredFromWithinTheSignalToo) {
    QObject::connect(face.get(), &TransfersFace::offerReceived, face.get(),
                     [this](const FileOffer& offer) { face->answerOffer(offer.number, OfferReply::refuse); });
    OKU_WORD result = 0;
    inPlugin([&] { result = ask(QStringLiteral("a.txt")); });
    EXPECT_EQ(result, kRefuse);
}

TEST_F(FileOfferTest, HoldThePluginAsABoxDoes) {
    plugin().log.clear();
    std::string trace;
    QTimer::singleShot(0, face.get(), [&] {
        core->choices.set(entry(), Status::away, QStringLiteral("obiad"));
        core->queue.post({}, [&] { trace += '1'; });
        pass(20);
        EXPECT_EQ(trace, "") << "everything else waits";
        EXPECT_TRUE(plugin().log.empty());
        face->answerOffer(face->openOffers().first().number, OfferReply::ignore);
    });
    inPlugin([&] { EXPECT_EQ(ask(QStringLiteral("a.txt")), kIgnore); });
    EXPECT_EQ(trace, "1");
    EXPECT_TRUE(logged("status 4 obiad"));
    EXPECT_EQ(plugin().deepest, 1);
}

TEST_F(FileOfferTest, IsIgnoredWhenNobodyAnswersInTime) {
    QTimer::singleShot(0, face.get(), [this] { ringAlarms(); });
    inPlugin([&] { EXPECT_EQ(ask(QStringLiteral("a.txt")), kIgnore); });
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices[0].contains(QStringLiteral("a.txt"))) << notices[0].toStdString();
    EXPECT_TRUE(notices[0].contains(QStringLiteral("bob@example.org")));
    EXPECT_EQ(closed.last().second, OfferReply::ignore);
}

TEST_F(FileOfferTest, WaitsAMinuteAndIgnoresForTen) {
    QTimer::singleShot(0, face.get(), [this] {
        EXPECT_EQ(alarmTimes(), QList<int>{60'000});
        ringAlarms();
    });
    inPlugin([&] { EXPECT_EQ(ask(QStringLiteral("a.txt")), kIgnore); });
    EXPECT_EQ(alarmTimes(), QList<int>{600'000});
}

TEST_F(FileOfferTest, OfOneWhomNobodyAnsweredIsIgnoredForAWhile) {
    QTimer::singleShot(0, face.get(), [this] { ringAlarms(); });
    inPlugin([&] {
        EXPECT_EQ(ask(QStringLiteral("a.txt")), kIgnore);
        EXPECT_EQ(ask(QStringLiteral("b.txt")), kIgnore);
    });
    EXPECT_EQ(offers.size(), 1) << "the second one holds nothing";
    EXPECT_EQ(notices.size(), 1);
    inPlugin([&] { answerRoster({u"bob@example.org", u"carol@example.org"}); });
    answerNext(OfferReply::accept);
    inPlugin([&] {
        EXPECT_EQ(ask(QStringLiteral("c.txt"), QStringLiteral("5"), QStringLiteral("carol@example.org")), kAccept)
            << "others are asked about";
    });
    ringAlarms();
    EXPECT_EQ(answered(QStringLiteral("d.txt")), kAccept);
}

TEST_F(FileOfferTest, WhomTheUserWritesToIsAskedAboutAgain) {
    const auto ignored = [&](const char* sender) {
        OKU_WORD result = 0;
        inPlugin([&] { result = ask(QStringLiteral("a"), QStringLiteral("5"), QString::fromLatin1(sender)); });
        return result == kIgnore;
    };
    inPlugin([&] { answerRoster({u"bob@example.org", u"carol@example.org"}); });
    for (const char* sender : {"bob@example.org", "carol@example.org"}) {
        QTimer::singleShot(0, face.get(), [this] { ringNewestAlarm(); });
        EXPECT_TRUE(ignored(sender));
    }
    ASSERT_EQ(offers.size(), 2);
    Message message;
    message.account = QStringLiteral("alice@example.org");
    message.contact = QStringLiteral("bob@example.org");
    message.direction = Direction::out;
    message.body = QStringLiteral("jestem");
    message.time = QDateTime::currentDateTimeUtc();
    EXPECT_NE(core->delivery.send(entry(), message), 0);
    core->history.flush();
    EXPECT_TRUE(ignored("carol@example.org")) << "that was to somebody else";
    EXPECT_EQ(offers.size(), 2);
    EXPECT_EQ(answered(QStringLiteral("b.txt")), kAccept);
}

TEST_F(FileOfferTest, StrangersWhomNobodyAnswersAreOne) {
    allowStrangers();
    const auto from = [&](const char* sender) {
        OKU_WORD result = 0;
        inPlugin([&] { result = ask(QStringLiteral("a"), QStringLiteral("5"), QString::fromLatin1(sender)); });
        return result;
    };
    QTimer::singleShot(0, face.get(), [this] { ringAlarms(); });
    EXPECT_EQ(from("eve@example.org"), kIgnore);
    EXPECT_EQ(from("mallory@example.org"), kIgnore);
    EXPECT_EQ(offers.size(), 1);
    EXPECT_EQ(answered(QStringLiteral("b.txt")), kAccept) << "contacts are asked about";
}

TEST_F(FileOfferTest, IsTimedNoMoreOnceItIsAnswered) {
    answered(QStringLiteral("a.txt"));
    EXPECT_EQ(alarmsSet(), 0U);
    EXPECT_TRUE(notices.isEmpty());
}

TEST_F(FileOfferTest, OnesThatComeWhileAnotherIsOpenComeAfterIt) {
    QStringList order;
    QObject::connect(face.get(), &TransfersFace::offerReceived, face.get(), [&](const FileOffer& offer) {
        order.append(offer.name);
        EXPECT_EQ(face->openOffers().size(), 1);
        if (order.size() == 1) inPlugin([&] { EXPECT_EQ(ask(QStringLiteral("drugi")), kRefuse); });
        answerNext(order.size() == 1 ? OfferReply::accept : OfferReply::refuse);
    });
    inPlugin([&] { EXPECT_EQ(ask(QStringLiteral("pierwszy")), kAccept); });
    ASSERT_TRUE(waitFor([&] { return closed.size() == 2; }));
    EXPECT_EQ(order, (QStringList{QStringLiteral("pierwszy"), QStringLiteral("drugi")}));
}

TEST_F(FileOfferTest, StandsBesideAQuestionOfTheMessengers) {
    BoxButton button = BoxButton::ok;
    core->boxes.ask(QStringLiteral("T"), QStringLiteral("?"), [&](BoxButton given) { button = given; });
    EXPECT_EQ(answered(QStringLiteral("a.txt")), kAccept);
    EXPECT_TRUE(core->boxes.answer(core->boxes.open().first().number, BoxButton::yes));
    EXPECT_EQ(button, BoxButton::yes);
}

TEST_F(FileOfferTest, IsIgnoredWhenTheProgramEnds) {
    bool finished = false;
    QObject::connect(core.get(), &HostCore::finished, core.get(), [&] { finished = true; });
    QTimer::singleShot(0, face.get(), [&] { core->shutdown(); });
    inPlugin([&] { EXPECT_EQ(ask(QStringLiteral("a.txt")), kIgnore); });
    ASSERT_TRUE(waitFor([&] { return finished; }));
    EXPECT_FALSE(core->loader.loaded());
}

TEST_F(FileOfferTest, OfAStrangerIsIgnoredUnasked) {
    for (int times = 0; times < 2; ++times) {
        inPlugin([&] {
            EXPECT_EQ(ask(QStringLiteral("a.txt"), QStringLiteral("5"), QStringLiteral("eve@example.org")), kIgnore);
        });
    }
    EXPECT_TRUE(offers.isEmpty());
    ASSERT_EQ(notices.size(), 1) << "told once of each";
    EXPECT_TRUE(notices[0].contains(QStringLiteral("eve@example.org")));
    EXPECT_TRUE(notices[0].contains(QStringLiteral("OKU/FilesOfStrangers")));
}

TEST_F(FileOfferTest, OfAStrangerIsAskedAboutWhereTheUserWants) {
    allowStrangers();
    answerNext(OfferReply::accept);
    inPlugin([&] {
        EXPECT_EQ(ask(QStringLiteral("a.txt"), QStringLiteral("5"), QStringLiteral("eve@example.org")), kAccept);
    });
}

TEST_F(FileOfferTest, AnAddressThatLooksLikeAContactsIsAStrangers) {
    inPlugin([&] { answerRoster({u"kim@example.org"}); });
    inPlugin([&] {
        EXPECT_EQ(ask(QStringLiteral("a.txt"), QStringLiteral("5"), QStringLiteral("\u212Aim@example.org")), kIgnore);
    });
    EXPECT_TRUE(offers.isEmpty());
    answerNext(OfferReply::accept);
    inPlugin([&] {
        EXPECT_EQ(ask(QStringLiteral("a.txt"), QStringLiteral("5"), QStringLiteral("Kim@example.org")), kAccept);
    });
}

TEST_F(FileOfferTest, StrangersAreToldOfUpToANumber) {
    for (int number = 0; number < 60; ++number) {
        inPlugin(
            [&] { ask(QStringLiteral("a"), QStringLiteral("5"), QStringLiteral("eve%1@example.org").arg(number)); });
    }
    EXPECT_EQ(notices.size(), 51);
    EXPECT_FALSE(notices.last().contains(QStringLiteral("eve")));
}

TEST_F(FileOfferTest, GivesAFolderThatIsMadeForItsUserAlone) {
    EXPECT_EQ(answered(QStringLiteral("a.txt")), kAccept);
    EXPECT_EQ(path, folder("bob@example.org/"));
    EXPECT_TRUE(QFileInfo(path).isDir());
    const auto owner = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;
    const auto others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup |
                        QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
    EXPECT_EQ(QFileInfo(path).permissions() & owner, owner);
    EXPECT_EQ(QFileInfo(path).permissions() & others, QFileDevice::Permissions());
    EXPECT_EQ(QFileInfo(folder()).permissions() & others, QFileDevice::Permissions());
}

TEST_F(FileOfferTest, LaysNoFileOverAnother) {
    put(folder("bob@example.org/a.txt"));
    EXPECT_EQ(answered(QStringLiteral("a.txt")), kAccept);
    EXPECT_EQ(path, folder("bob@example.org/2/"));
    EXPECT_EQ(answered(QStringLiteral("a.txt")), kAccept);
    EXPECT_EQ(path, folder("bob@example.org/3/")) << "the second one is on its way";
    EXPECT_EQ(answered(QStringLiteral("b.txt")), kAccept);
    EXPECT_EQ(path, folder("bob@example.org/"));
}

TEST_F(FileOfferTest, LaysNoFileOverOneThatIsOnItsWay) {
    answerNext(OfferReply::accept);
    OKU_WORD window = 0;
    inPlugin([&] {
        ask(QStringLiteral("a.txt"));
        window = openWindow();
    });
    EXPECT_EQ(answered(QStringLiteral("a.txt")), kAccept);
    EXPECT_EQ(path, folder("bob@example.org/2/"));
    drop(window);
    EXPECT_EQ(answered(QStringLiteral("a.txt")), kAccept);
    EXPECT_EQ(path, folder("bob@example.org/"));
}

TEST_F(FileOfferTest, LaysNoFileOverOneThatMayBeOnItsWay) {
    answerNext(OfferReply::accept);
    inPlugin([&] {
        EXPECT_EQ(ask(QStringLiteral("a.txt"), QStringLiteral("3 (9")), kAccept) << "it may be called a.txt (3, too";
        openWindow();
    });
    EXPECT_EQ(path, folder("bob@example.org/"));
    EXPECT_EQ(answered(QStringLiteral("a.txt")), kAccept);
    EXPECT_EQ(path, folder("bob@example.org/2/"));
}

TEST_F(FileOfferTest, WritesThroughNoLink) {
    QDir().mkpath(folder("bob@example.org"));
    ASSERT_TRUE(QFile::link(folder("elsewhere"), folder("bob@example.org/a.txt")));
    EXPECT_EQ(answered(QStringLiteral("a.txt")), kAccept);
    EXPECT_EQ(path, folder("bob@example.org/2/"));
}

TEST_F(FileOfferTest, AskingInWordsOfAnotherKindHasAFolderOfItsOwn) {
    answerNext(OfferReply::accept);
    put(folder("bob@example.org/a"));
    inPlugin([&] {
        EXPECT_EQ(ask(QStringLiteral("a"), QStringLiteral("1 (2")), kAccept) << "the name may end at either bracket";
    });
    EXPECT_EQ(path, folder("bob@example.org/2/"));
}

TEST_F(FileOfferTest, IsRefusedWhereNoFolderCanBeMade) {
    put(folder("bob@example.org"));
    EXPECT_EQ(answered(QStringLiteral("a.txt")), kRefuse);
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices[0].contains(folder("bob@example.org"))) << notices[0].toStdString();
}

TEST_F(FileOfferTest, IsRefusedWhereTheFoldersPathIsTooLong) {
    answerNext(OfferReply::accept);
    allowStrangers();
    const QString sender = QString(230, u'x') + QStringLiteral("@example.org");
    inPlugin([&] { EXPECT_EQ(ask(QStringLiteral("a"), QStringLiteral("5"), sender), kRefuse); });
    ASSERT_EQ(notices.size(), 1);
}

TEST_F(FileOfferTest, ShowsNamesCleaned) {
    answered(QStringLiteral("../.gnp\u202Eexe/\u0007a.txt"), OfferReply::refuse);
    EXPECT_EQ(offers.last().name, QStringLiteral("gnpexea.txt"));
}

TEST_F(FileOfferTest, BearsNoRecordAndNoAccount) {
    EXPECT_EQ(call(u"OKU/FTAskForConfirmation", 0), kIgnore);
    core->queue.post({}, [&] { EXPECT_EQ(ask(QStringLiteral("a")), kIgnore); });
    EXPECT_TRUE(offers.isEmpty());
}

}  // namespace
}  // namespace oku::test
