// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/cards/picture_process.h"

#include <QFile>
#include <QTemporaryDir>

#include "tests/messenger/core/stage.h"

namespace oku::test {
namespace {

/// A PNG of one point, as far as anybody looks at it here.
QByteArray png(int width = 1, int height = 1) {
    QByteArray content("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
    for (const int side : {width, height})
        for (int shift = 24; shift >= 0; shift -= 8) content += static_cast<char>(side >> shift);
    return content + "the rest";
}

class PictureProcessTest : public testing::Test {
protected:
    /// A program in the place of the true one.
    QString program(const QByteArray& script) {
        QFile file(directory.filePath(QStringLiteral("program")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script + '\n');
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::ExeOwner | QFileDevice::WriteOwner);
        return file.fileName();
    }
    /// A program that reads its input and gives this.
    QString giving(const QByteArray& content, const QByteArray& then = "exit 0") {
        QFile file(directory.filePath(QStringLiteral("given")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return program("cat >/dev/null; cat '" + file.fileName().toUtf8() + "'; " + then);
    }
    /// What comes of a picture.
    QByteArray read(const QString& path, const QByteArray& content = "a picture", int patience = 60'000) {
        PictureProcess process(path, patience);
        QByteArray result("nothing yet");
        int answers = 0;
        process.read(content, [&](const QByteArray& given) {
            result = given;
            ++answers;
        });
        EXPECT_EQ(answers, 0) << "it does not wait";
        EXPECT_TRUE(waitFor([&] { return answers > 0; }));
        pass(0);
        EXPECT_EQ(answers, 1);
        return result;
    }

    QTemporaryDir directory;
};

TEST_F(PictureProcessTest, GivesWhatTheProgramGives) {
    EXPECT_EQ(read(giving(png())), png());
    EXPECT_EQ(read(giving(png(192, 192))), png(192, 192));
}

TEST_F(PictureProcessTest, HandsThePictureOver) {
    const QString copy = directory.filePath(QStringLiteral("copy"));
    const QByteArray content(3 << 20, 'x');
    read(program("cat > '" + copy.toUtf8() + "'"), content);
    QFile file(copy);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), content);
}

TEST_F(PictureProcessTest, OneThatFailsHasReadNothing) {
    EXPECT_EQ(read(giving(png(), "exit 1")), QByteArray());
    EXPECT_EQ(read(giving(png(), "kill -SEGV $$")), QByteArray());
    EXPECT_EQ(read(program("exit 0")), QByteArray());
    EXPECT_EQ(read(directory.filePath(QStringLiteral("nowhere"))), QByteArray());
    EXPECT_EQ(read(QString()), QByteArray());
}

TEST_F(PictureProcessTest, OneThatDoesNotReadHasReadNothing) {
    EXPECT_EQ(read(program("exec <&-; exit 1"), QByteArray(4 << 20, 'x')), QByteArray());
}

TEST_F(PictureProcessTest, WhatIsNoSmallPngIsNotBelieved) {
    EXPECT_EQ(read(giving("text")), QByteArray());
    EXPECT_EQ(read(giving(png().left(20))), QByteArray());
    EXPECT_EQ(read(giving(png(193, 1))), QByteArray());
    EXPECT_EQ(read(giving(png(1, 30000))), QByteArray());
    EXPECT_EQ(read(giving(png(0, 1))), QByteArray());
}

TEST_F(PictureProcessTest, OneThatHangsIsKilled) {
    EXPECT_EQ(read(program("cat >/dev/null; exec sleep 1000"), "a picture", 50), QByteArray());
}

TEST_F(PictureProcessTest, OneThatNeverEndsItsOutputIsKilled) {
    EXPECT_EQ(read(program("exec cat /dev/zero")), QByteArray());
}

TEST_F(PictureProcessTest, LargeOnesAreNotHandedOver) {
    EXPECT_EQ(read(giving(png()), QByteArray(kLargestPictureFile + 1, 'x')), QByteArray());
    EXPECT_EQ(read(giving(png()), {}), QByteArray());
}

TEST_F(PictureProcessTest, NobodyIsToldWhenItIsGone) {
    bool told = false;
    {
        PictureProcess process(program("exec sleep 1000"));
        process.read("a picture", [&](const QByteArray&) { told = true; });
        pass(1);
    }
    pass(1);
    EXPECT_FALSE(told);
}

TEST_F(PictureProcessTest, ManyAreReadAtOnce) {
    PictureProcess process(giving(png()), 600'000);
    int read = 0;
    for (int i = 0; i < 10; ++i) process.read("a picture", [&](const QByteArray& given) { read += given == png(); });
    EXPECT_TRUE(waitFor([&] { return read == 10; }));
}

TEST_F(PictureProcessTest, TheProgramIsLookedForBesideAndInTheInstallation) {
    EXPECT_EQ(findPictureProgram(directory.path()), QString());
    QFile file(directory.filePath(QStringLiteral("oku-picture")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(findPictureProgram(directory.path()), QString()) << "nobody may run it";
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    EXPECT_EQ(findPictureProgram(directory.path()), file.fileName());
}

}  // namespace
}  // namespace oku::test
