// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <sys/stat.h>
#include <cerrno>

#include "messenger/core/cards/picture_file.h"
#include "messenger/core/storage/private_file.h"
#include "tests/messenger/core/cards_stage.h"

namespace oku::test {
namespace {

const QByteArray kPng("its points");
const QByteArray kOther("other points");

class OwnPictureTest : public CardsStage {
protected:
    OwnPictureTest() { begin(); }

    QString file(const QByteArray& content = "a picture") {
        QFile out(directory.filePath(QStringLiteral("mine")));
        EXPECT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(content);
        return out.fileName();
    }
    void set(const QByteArray& png = kPng) {
        EXPECT_EQ(cards->setOwnPicture(file()), QString());
        reader->answer(png);
    }
    QString path() const { return core->profile.directory() + QStringLiteral("_avatar"); }
    QByteArray kept() const {
        QFile in(path());
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
    }
    static std::string told(const QByteArray& png) { return "avatar 1 " + pictureHash(png).toStdString() + " 2"; }
};

TEST_F(OwnPictureTest, IsReadApartKeptAndTold) {
    set();
    EXPECT_EQ(kept(), kPng);
    EXPECT_EQ(take(), QStringList("own picture|" + pictureHash(kPng)));
    EXPECT_EQ(asked(), told(kPng));
    EXPECT_EQ(cards->ownPicture().path, path());
    EXPECT_EQ(cards->ownPicture().hash, pictureHash(kPng));
    struct stat state {};
    ASSERT_EQ(stat(path().toUtf8().constData(), &state), 0);
    EXPECT_EQ(state.st_mode & 0777, 0600U);
}

TEST_F(OwnPictureTest, WhatIsNoPictureLeavesTheOneBefore) {
    set();
    take();
    asked();
    set({});
    ASSERT_EQ(this->CardsStage::told.size(), 1);
    EXPECT_TRUE(take()[0].startsWith(QStringLiteral("failed|")));
    EXPECT_EQ(asked(), "");
    EXPECT_EQ(kept(), kPng);
}

TEST_F(OwnPictureTest, AFullDiskLeavesTheOneBefore) {
    set();
    take();
    asked();
    const FileSteps before = fileSteps();
    fileSteps().write = [](int, const void*, size_t) -> ssize_t {
        errno = ENOSPC;
        return -1;
    };
    set(kOther);
    fileSteps() = before;
    EXPECT_EQ(
        take(),
        QStringList(QStringLiteral("failed|Nie można zapisać obrazka: brak miejsca na dysku. Poprzedni zostaje.")));
    EXPECT_EQ(kept(), kPng);
    EXPECT_EQ(cards->ownPicture().hash, pictureHash(kPng));
    EXPECT_EQ(asked(), "");
}

TEST_F(OwnPictureTest, AFolderThatCannotBeSyncedHasTheNewOneInPlace) {
    const FileSteps before = fileSteps();
    fileSteps().syncFolder = [](const char*) {
        errno = EIO;
        return -1;
    };
    set();
    fileSteps() = before;
    EXPECT_EQ(take(), QStringList("own picture|" + pictureHash(kPng)));
}

TEST_F(OwnPictureTest, FilesThatAreNoneAreRefusedAtOnce) {
    EXPECT_FALSE(cards->setOwnPicture(directory.filePath(QStringLiteral("nowhere"))).isEmpty());
    EXPECT_FALSE(cards->setOwnPicture(directory.path()).isEmpty());
    EXPECT_FALSE(cards->setOwnPicture(QStringLiteral("/dev/zero")).isEmpty());
    EXPECT_FALSE(cards->setOwnPicture(file({})).isEmpty());
    EXPECT_FALSE(cards->setOwnPicture(file(QByteArray(kLargestPictureFile + 1, 'x'))).isEmpty());
    const QByteArray pipe = directory.filePath(QStringLiteral("pipe")).toUtf8();
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);
    EXPECT_FALSE(cards->setOwnPicture(QString::fromUtf8(pipe)).isEmpty()) << "and nobody waits for a writer";
    EXPECT_TRUE(reader->waiting.empty());
}

TEST_F(OwnPictureTest, TheNewestWishCounts) {
    cards->setOwnPicture(file());
    cards->setOwnPicture(file());
    reader->answer(kPng);
    EXPECT_EQ(kept(), QByteArray());
    reader->answer(kOther);
    EXPECT_EQ(kept(), kOther);
    cards->setOwnPicture(file());
    EXPECT_EQ(cards->removeOwnPicture(), QString());
    reader->answer(kPng);
    EXPECT_EQ(kept(), QByteArray());
}

TEST_F(OwnPictureTest, RemovedWhileAnotherIsReadItSaysWhatBecameOfThat) {
    set();
    take();
    cards->setOwnPicture(file());
    EXPECT_EQ(cards->removeOwnPicture(), QString());
    const QStringList heard = take();
    ASSERT_EQ(heard.size(), 2);
    EXPECT_TRUE(heard[0].startsWith(QStringLiteral("failed|"))) << heard[0].toStdString();
    EXPECT_EQ(heard[1], QStringLiteral("own picture|"));
    reader->answer(kOther);
    EXPECT_EQ(kept(), QByteArray());
    EXPECT_EQ(cards->removeOwnPicture(), QString());
    EXPECT_EQ(take(), QStringList("own picture|")) << "nothing is being read";
}

TEST_F(OwnPictureTest, WhereItCannotBeRemovedTheOtherIsReadOn) {
    ASSERT_TRUE(QDir().mkpath(path()));
    cards->setOwnPicture(file());
    EXPECT_FALSE(cards->removeOwnPicture().isEmpty());
    ASSERT_TRUE(QDir().rmdir(path()));
    reader->answer(kPng);
    EXPECT_EQ(take(), QStringList("own picture|" + pictureHash(kPng)));
}

TEST_F(OwnPictureTest, IsRemoved) {
    set();
    take();
    asked();
    EXPECT_EQ(cards->removeOwnPicture(), QString());
    EXPECT_EQ(take(), took("own picture|"));
    EXPECT_EQ(asked(), "avatar 1  0");
    EXPECT_FALSE(QFile::exists(path()));
    EXPECT_EQ(cards->ownPicture().path, QString());
    EXPECT_EQ(cards->removeOwnPicture(), QString()) << "twice";
}

// The plugin would take the end of a connection that was lost for a wished one.
TEST_F(OwnPictureTest, IsToldBetweenLoginsOnly) {
    inPlugin([&] { account().flags = OKU_FLAG_CONNECTING; });
    set();
    EXPECT_EQ(asked(), "");
    logIn();
    EXPECT_EQ(asked(), told(kPng));
    // The connection is lost; the plugin has closed it and does not know the end yet.
    inPlugin([&] { account().flags = 0; });
    set(kOther);
    EXPECT_EQ(asked(), "");
    loseConnection();
    EXPECT_EQ(asked(), told(kOther));
}

TEST_F(OwnPictureTest, IsNotPublishedBeforeItIsTold) {
    writeAccount(QStringLiteral("b"), QStringLiteral("other@example.org"));
    begin();
    logIn();
    core->queue.post(entry(1).key, [&] { account(1).flags = OKU_FLAG_CONNECTING; });
    set();
    EXPECT_FALSE(cards->publishOwnPicture(me).isEmpty());
    core->queue.post(entry(1).key, [&] { account(1).flags = 0; });
    emit core->sockets.ended(&entry(1), net::End(), true);
    EXPECT_EQ(cards->publishOwnPicture(me), QString());
}

TEST_F(OwnPictureTest, AtTheStartAccountsWithAnotherHashAreTold) {
    set();
    core->settings.store(entry().key)->set(QStringLiteral("AV/Hash"), pictureHash(kPng));
    begin();
    EXPECT_EQ(cards->ownPicture().hash, pictureHash(kPng));
    pass(0);
    EXPECT_EQ(asked(), "");
    core->settings.store(entry().key)->set(QStringLiteral("AV/Hash"), QStringLiteral("old"));
    begin();
    pass(0);
    EXPECT_EQ(asked(), told(kPng));
}

TEST_F(OwnPictureTest, WithoutAReaderNothingIsSet) {
    reader.reset();
    begin();
    EXPECT_FALSE(cards->setOwnPicture(file()).isEmpty());
}

}  // namespace
}  // namespace oku::test
