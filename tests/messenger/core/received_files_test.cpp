// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <sys/stat.h>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include "tests/messenger/core/transfer_stage.h"

namespace oku::test {
namespace {

class ReceivedFilesTest : public TransferStage {
protected:
    void SetUp() override {
        TransferStage::SetUp();
        QObject::connect(&core->received, &ReceivedFiles::noticed, face.get(),
                         [this](const QString&, const QString& text) { told_.append(text); });
    }
    /// Takes a file of this content through its transfer; gives the transfer's number.
    int receive(const QString& name, const QByteArray& content = "tekst") {
        OKU_WORD window = 0;
        answerNext(OfferReply::accept);
        inPlugin([&] {
            ask(name);
            window = openWindow();
            run(window, 5);
            writePosition(window, 5);
        });
        put(transfer(window).path, content);
        drop(window);
        return static_cast<int>(window);
    }
    static void put(const QString& path, const QByteArray& content) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QString pathOf(int number) { return transfer(number).path; }
    void answerBox(BoxButton button) {
        ASSERT_EQ(core->boxes.open().size(), 1);
        EXPECT_TRUE(core->boxes.answer(core->boxes.open().first().number, button));
    }
    /// Whether the user is asked first; the answer is no.
    bool asks(const QString& name, const QByteArray& content = "tekst") {
        EXPECT_EQ(face->openFile(receive(name, content)), QString());
        const bool asked = !core->boxes.open().isEmpty();
        EXPECT_EQ(opened.size(), asked ? 0 : 1) << name.toStdString();
        if (asked) answerBox(BoxButton::no);
        EXPECT_EQ(opened.size(), asked ? 0 : 1) << name.toStdString();
        opened.clear();
        return asked;
    }

    QStringList told_;
};

TEST_F(ReceivedFilesTest, AreOpenedByTheirAddress) {
    const int number = receive(QStringLiteral("-a b%20#?żółw.txt"));
    EXPECT_EQ(face->openFile(number), QString());
    ASSERT_EQ(opened.size(), 1);
    EXPECT_TRUE(opened[0].startsWith(QStringLiteral("file:///"))) << opened[0].toStdString();
    EXPECT_EQ(QUrl(opened[0], QUrl::StrictMode).toLocalFile(), pathOf(number));
    EXPECT_TRUE(core->boxes.open().isEmpty());
}

TEST_F(ReceivedFilesTest, TellThatThereIsNoProgram) {
    canOpen = false;
    EXPECT_NE(face->openFile(receive(QStringLiteral("a.txt"))), QString());
    EXPECT_EQ(face->openFile(receive(QStringLiteral("a.sh"))), QString());
    answerBox(BoxButton::yes);
    EXPECT_EQ(told_.size(), 1);
}

TEST_F(ReceivedFilesTest, NothingElseIsOpened) {
    EXPECT_NE(face->openFile(99), QString());
    OKU_WORD window = 0;
    answerNext(OfferReply::accept);
    inPlugin([&] {
        ask(QStringLiteral("a.txt"));
        window = openWindow();
    });
    put(transfer(window).path, "tekst");
    EXPECT_NE(face->openFile(static_cast<int>(window)), QString()) << "it is still on its way";
    drop(window);
    EXPECT_NE(face->openFile(static_cast<int>(window)), QString()) << "it has failed";
    inPlugin([&] {
        core->transfers.expect(
            {QStringLiteral("bob@example.org"), Direction::out, QStringLiteral("b"), folder("b.txt"), 5});
        window = openWindow();
        run(window, 5);
        writePosition(window, 5);
    });
    put(folder("b.txt"), "tekst");
    drop(window);
    ASSERT_EQ(transfer(window).state, TransferState::done);
    EXPECT_NE(face->openFile(static_cast<int>(window)), QString()) << "it was sent";
    inPlugin([&] {
        window = openWindow();
        run(window, 5);
        writePosition(window, 5);
    });
    drop(window);
    EXPECT_NE(face->openFile(static_cast<int>(window)), QString()) << "nobody knows where it lies";
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(ReceivedFilesTest, AskBeforeTheyOpenAProgramByItsName) {
    for (const char* name :
         {"a.sh", "a.EXE", "a.bat", "a.jar", "a.AppImage", "a.desktop", "a.txt.js", "a.exe. ", "a.py"})
        EXPECT_TRUE(asks(QString::fromUtf8(name))) << name;
    for (const char* name : {"a.txt", "sh", "exe.png", "a.pdf", "żółw", "a.sh.txt"})
        EXPECT_EQ(asks(QString::fromUtf8(name)), qstrcmp(name, "sh") == 0) << name;
}

TEST_F(ReceivedFilesTest, AskBeforeTheyOpenAProgramByItsContent) {
    EXPECT_TRUE(asks(QStringLiteral("1.txt"), "#!/bin/sh\n"));
    EXPECT_TRUE(asks(QStringLiteral("2.txt"),
                     "\x7f"
                     "ELF\2"));
    EXPECT_TRUE(asks(QStringLiteral("3.png"), "MZ\x90"));
    EXPECT_TRUE(asks(QStringLiteral("4.txt"), "# obraz\n[Desktop Entry]\nExec=true\n"));
    EXPECT_TRUE(asks(QStringLiteral("5.txt"), "\xca\xfe\xba\xbe"));
    EXPECT_FALSE(asks(QStringLiteral("6.txt"), " #!/bin/sh"));
    EXPECT_FALSE(asks(QStringLiteral("7.txt"), {}));
}

TEST_F(ReceivedFilesTest, AskBeforeTheyOpenWhatMayBeRun) {
    const int number = receive(QStringLiteral("a.txt"));
    EXPECT_FALSE(QFileInfo(pathOf(number)).isExecutable());
    QFile::setPermissions(pathOf(number), QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    EXPECT_EQ(face->openFile(number), QString());
    EXPECT_TRUE(opened.isEmpty());
    answerBox(BoxButton::yes);
    EXPECT_EQ(opened.size(), 1);
}

TEST_F(ReceivedFilesTest, TheQuestionIsTheMessengersOwn) {
    const int number = receive(QStringLiteral("a.sh"));
    EXPECT_EQ(face->openFile(number), QString());
    const MessageBox box = core->boxes.open().first();
    EXPECT_EQ(box.style, BoxStyle::question);
    EXPECT_FALSE(box.holds);
    EXPECT_TRUE(box.text.contains(QStringLiteral("a.sh"))) << box.text.toStdString();
    EXPECT_TRUE(box.text.contains(QStringLiteral("bob@example.org")));
    EXPECT_NE(face->openFile(number), QString()) << "one question is enough";
    EXPECT_EQ(core->boxes.open().size(), 1);
    answerBox(BoxButton::no);
    EXPECT_TRUE(opened.isEmpty());
    EXPECT_EQ(face->openFile(number), QString()) << "the user may think better of it";
    answerBox(BoxButton::yes);
    EXPECT_EQ(opened.size(), 1);
    EXPECT_TRUE(told_.isEmpty());
}

TEST_F(ReceivedFilesTest, WhatHasChangedIsNotOpened) {
    const int number = receive(QStringLiteral("a.txt"));
    const QString place = pathOf(number);
    ASSERT_TRUE(QFile::remove(place));
    const QString gone = face->openFile(number);
    EXPECT_TRUE(gone.contains(place)) << gone.toStdString();
    ASSERT_TRUE(QFile::link(QStringLiteral("/etc/passwd"), place));
    const QString link = face->openFile(number);
    EXPECT_TRUE(link.contains(QStringLiteral("dowiązanie"))) << link.toStdString();
    QFile::remove(place);
    ASSERT_TRUE(QDir().mkdir(place));
    EXPECT_NE(face->openFile(number), QString());
    QDir().rmdir(place);
    ASSERT_EQ(::mkfifo(QFile::encodeName(place).constData(), 0600), 0);
    EXPECT_NE(face->openFile(number), QString()) << "nobody waits for a writer";
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(ReceivedFilesTest, WhatChangedWhileTheUserWasAskedIsNotOpened) {
    const int number = receive(QStringLiteral("a.sh"));
    EXPECT_EQ(face->openFile(number), QString());
    QFile::remove(pathOf(number));
    ASSERT_TRUE(QFile::link(QStringLiteral("/bin/sh"), pathOf(number)));
    answerBox(BoxButton::yes);
    EXPECT_TRUE(opened.isEmpty());
    ASSERT_EQ(told_.size(), 1);
    EXPECT_TRUE(told_[0].contains(pathOf(number)));
}

}  // namespace
}  // namespace oku::test
