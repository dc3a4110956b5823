// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Files that are offered, sent and received.
#include <QTemporaryDir>

#include "messenger/terminal/talk/transfer_wording.h"
#include "tests/messenger/terminal/session_fixture.h"

namespace oku::terminal::test {
namespace {

FileOffer offer(int number) {
    return {number, kMe, QStringLiteral("olek@localhost"), QStringLiteral("zdjęcie.png"), 1536, 60};
}

Transfer transfer(TransferState state, qint64 position = 0, Direction direction = Direction::in) {
    Transfer one;
    one.number = 4;
    one.account = kMe;
    one.contact = QStringLiteral("olek@localhost");
    one.direction = direction;
    one.name = QStringLiteral("zdjęcie.png");
    one.path = QStringLiteral("/home/ala/zdjęcie.png");
    one.text = QStringLiteral("Błąd");
    one.state = state;
    one.size = 2048;
    one.position = position;
    return one;
}

class SessionFilesTest : public SessionTest {
protected:
    void move(const Transfer& one) { emit messenger.transfers().transferChanged(one); }
};

TEST_F(SessionFilesTest, TellsOfAnOfferAndThatAllElseWaits) {
    emit messenger.transfers().offerReceived(offer(3));
    EXPECT_EQ(
        heard(),
        "? Olek offers the file zdjęcie.png (1.5 KiB)\n/accept 3, /refuse 3 or /ignore 3; everything else waits for "
        "the answer, 60 s at most");
    emit messenger.transfers().offerClosed(3, OfferReply::accept);
    EXPECT_EQ(heard(), "");
    emit messenger.transfers().offerClosed(3, OfferReply::refuse);
    emit messenger.transfers().offerClosed(3, OfferReply::ignore);
    EXPECT_EQ(heard(), "- refused file 3\n- left file 3 unanswered");
}

TEST_F(SessionFilesTest, AnswersOffers) {
    EXPECT_EQ(type("/accept"), "");
    EXPECT_EQ(heard(), "! nobody offers a file");
    messenger.offers = {offer(3), offer(5)};
    EXPECT_EQ(type("/accept"), "answerOffer|3|accept");
    EXPECT_EQ(type("/refuse 5"), "answerOffer|5|refuse");
    EXPECT_EQ(type("/ignore 5"), "answerOffer|5|ignore");
    EXPECT_EQ(type("/ignore x"), "");
    EXPECT_EQ(heard(), "! \"x\" is not a whole number");
}

TEST_F(SessionFilesTest, SendsFiles) {
    EXPECT_EQ(type("/file olek dane.bin"), "sendFile|ala@localhost|olek@localhost|/start/dane.bin");
    EXPECT_EQ(type("/file \"Ewa Żółć\" \"/tmp/a b.bin\""), "sendFile|ala@localhost|ewa@localhost|/tmp/a b.bin");
    EXPECT_EQ(type("/file olek ~/x").substr(0, 38), "sendFile|ala@localhost|olek@localhost|");
    EXPECT_EQ(type("/file"), "");
    EXPECT_EQ(type("/file dane.bin"), "");
    EXPECT_EQ(type("/file obcy dane.bin"), "");
    EXPECT_NE(heard(), "");
    type("/chat-with olek");
    EXPECT_EQ(type("/file dane.bin"), "sendFile|ala@localhost|olek@localhost|/start/dane.bin");
    messenger.refusals[QStringLiteral("sendFile")] = QStringLiteral("no such file");
    heard();
    type("/file dane.bin");
    EXPECT_EQ(heard(), "! no such file");
}

TEST_F(SessionFilesTest, TellsOfTheBeginningAndTheEnd) {
    move(transfer(TransferState::negotiating));
    move(transfer(TransferState::running, 1024));
    EXPECT_EQ(heard(), "- file 4: receiving zdjęcie.png from Olek");
    move(transfer(TransferState::done, 2048));
    EXPECT_EQ(heard(), "- ↓ 4 zdjęcie.png (Olek): done, 2.0 KiB\n/home/ala/zdjęcie.png");
    move(transfer(TransferState::negotiating, 0, Direction::out));
    move(transfer(TransferState::failed, 0, Direction::out));
    EXPECT_EQ(heard(), "- file 4: sending zdjęcie.png to Olek\n! ↑ 4 zdjęcie.png (Olek): failed: Błąd");
    move(transfer(TransferState::incomplete, 1024));
    EXPECT_EQ(heard(), "! ↓ 4 zdjęcie.png (Olek): incomplete: 1.0 KiB of 2.0 KiB\n/home/ala/zdjęcie.png");
}

TEST_F(SessionFilesTest, TellsQuartersWhereNothingElseShowsThem) {
    SessionOptions options;
    options.oneWindow = true;
    start(options);
    move(transfer(TransferState::negotiating));
    heard();
    for (const qint64 position : {1, 511, 600, 700, 1100, 2000}) move(transfer(TransferState::running, position));
    EXPECT_EQ(heard(),
              "- zdjęcie.png: [#####···············] 29%\n- zdjęcie.png: [##########··········] 53%\n"
              "- zdjęcie.png: [###################·] 97%");
}

TEST_F(SessionFilesTest, ShowsTheProgressInTheStatusLine) {
    Transfer one = transfer(TransferState::running, 1024, Direction::out);
    one.speed = 512;
    one.secondsLeft = 62;
    display.width = 200;
    move(one);
    EXPECT_NE(status().find("│ ↑zdjęcie.png [####····] 50% 512 B/s 1:02 left │"), std::string::npos) << status();
    move(transfer(TransferState::done, 2048, Direction::out));
    EXPECT_EQ(status().find("zdjęcie"), std::string::npos);
}

TEST_F(SessionFilesTest, ListsFiles) {
    type("/files");
    EXPECT_EQ(heard(), "- no file is on its way");
    messenger.offers = {offer(3)};
    messenger.transferList = {transfer(TransferState::running, 512), transfer(TransferState::cancelled)};
    type("/files");
    EXPECT_EQ(heard(),
              "Olek offers the file zdjęcie.png (1.5 KiB) /accept 3\n↓ 4 zdjęcie.png (Olek): [#####···············] "
              "25%\n↓ 4 zdjęcie.png (Olek): cancelled: Błąd");
}

TEST_F(SessionFilesTest, ListsFilesThatThePluginAsksFor) {
    messenger.fileQuestions = {{7, kMe, QStringLiteral("Wybierz\nplik"), {}}, {8, kMe, {}, {}}};
    type("/files");
    EXPECT_EQ(heard(), "Wybierz⏎plik (ala@localhost) /choose 7\nthe plugin asks for a file (ala@localhost) /choose 8");
}

TEST_F(SessionFilesTest, StopsTransfers) {
    messenger.transferList = {transfer(TransferState::running)};
    EXPECT_EQ(type("/stop"), "");
    messenger.transferList[0].cancellable = true;
    EXPECT_EQ(type("/stop"), "cancelTransfer|4");
    EXPECT_EQ(type("/stop 7"), "cancelTransfer|7");
}

TEST_F(SessionFilesTest, OpensWhatWasReceived) {
    messenger.transferList = {transfer(TransferState::running), transfer(TransferState::done, 2048, Direction::out)};
    EXPECT_EQ(type("/open"), "");
    EXPECT_EQ(heard(), "! no file has been received yet");
    Transfer older = transfer(TransferState::done);
    older.number = 2;
    messenger.transferList = {older, transfer(TransferState::done), transfer(TransferState::failed)};
    messenger.transferList[2].number = 12;
    EXPECT_EQ(type("/open"), "openFile|4");
    EXPECT_EQ(type("/open 2"), "openFile|2");
    const QString line = QStringLiteral("/open ");
    EXPECT_EQ(session->complete(line, line.size()).candidates.join(u'|').toStdString(), "2 |4 ");
    messenger.refusals[QStringLiteral("openFile")] = QStringLiteral("it has gone");
    heard();
    type("/open 2");
    EXPECT_EQ(heard(), "! it has gone");
}

TEST_F(SessionFilesTest, NamesAFileThatThePluginAsksFor) {
    const FileQuestion question{2, kMe, {}, {}};
    emit messenger.transfers().fileAsked(question);
    EXPECT_EQ(heard(), "? the plugin asks for a file\n/choose 2 FILE names a file, /choose 2 alone none");
    messenger.fileQuestions = {question};
    EXPECT_EQ(type("/choose 2 a b.bin"), "chooseFile|2|/start/a b.bin");
    EXPECT_EQ(type("/choose 2"), "chooseFile|2|");
    EXPECT_EQ(type("/choose"), "chooseFile|2|");
}

TEST_F(SessionFilesTest, OffersContactsAndPaths) {
    QTemporaryDir folder;
    QDir(folder.path()).mkpath(QStringLiteral("dwa słowa/w środku"));
    for (const char* name : {"olek.txt", "dwa słowa/plik", ".ukryty"}) {
        QFile file(folder.filePath(QString::fromUtf8(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    SessionOptions options;
    options.startDirectory = folder.path();
    session.reset();
    session = std::make_unique<Session>(messenger, display, options);
    session->start();
    const auto offered = [&](const char* text) {
        const QString line = QString::fromUtf8(text);
        return session->complete(line, line.size()).candidates.join(u'|').toStdString();
    };
    EXPECT_EQ(offered("/file ole"), "Olek ");
    EXPECT_EQ(offered("/file Olek "), "\"dwa słowa/|olek.txt ");
    EXPECT_EQ(offered("/file Olek o"), "olek.txt ");
    EXPECT_EQ(offered("/file Olek \"dwa słowa/"), "\"dwa słowa/plik\" |\"dwa słowa/w środku/");
    EXPECT_EQ(offered("/file Olek .u"), ".ukryty ");
    EXPECT_EQ(offered(("/file Olek " + folder.path() + "/o").toUtf8().constData()),
              (folder.path() + "/olek.txt ").toStdString());
    EXPECT_EQ(offered("/choose 2 o"), "olek.txt ");
    type("/chat-with olek");
    EXPECT_EQ(offered("/file ole"), "olek.txt |Olek ");
}

TEST_F(SessionFilesTest, WhatOthersChoseCannotDriveTheTerminal) {
    Transfer one = transfer(TransferState::failed);
    one.name = QStringLiteral("a\x1B[2J\nb");
    one.text = QStringLiteral("x\x1B[2J\ny");
    move(one);
    EXPECT_EQ(heard().find('\x1B'), std::string::npos);
}

TEST(TransferWordingTest, CountsBytesAndSeconds) {
    setLanguage(Language::English);
    EXPECT_EQ(bytesText(0).toStdString(), "0 B");
    EXPECT_EQ(bytesText(1023).toStdString(), "1023 B");
    EXPECT_EQ(bytesText(1024).toStdString(), "1.0 KiB");
    EXPECT_EQ(bytesText(3 << 20).toStdString(), "3.0 MiB");
    EXPECT_EQ(bytesText(-1).toStdString(), "size unknown");
    setLanguage(Language::Polish);
    EXPECT_EQ(bytesText(1536).toStdString(), "1,5 KiB");
    EXPECT_EQ(durationText(0).toStdString(), "0:00");
    EXPECT_EQ(durationText(61).toStdString(), "1:01");
    EXPECT_EQ(durationText(3723).toStdString(), "1:02:03");
}

TEST(TransferWordingTest, DrawsABarWhateverTheBytes) {
    const auto bar = [](qint64 position, qint64 size) {
        Transfer one = transfer(TransferState::running, position);
        one.size = size;
        return progressBar(one, 4).toStdString();
    };
    EXPECT_EQ(bar(0, 100), "[····] 0%");
    EXPECT_EQ(bar(50, 100), "[##··] 50%");
    EXPECT_EQ(bar(200, 100), "[####] 100%");
    EXPECT_EQ(bar(0, 0), "[####] 100%");
    EXPECT_EQ(bar(5, -1), "");
}

}  // namespace
}  // namespace oku::terminal::test
