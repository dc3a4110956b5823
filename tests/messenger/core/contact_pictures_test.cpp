// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <unistd.h>
#include <cerrno>

#include "messenger/core/cards/picture_file.h"
#include "messenger/core/storage/private_file.h"
#include "tests/messenger/core/cards_stage.h"

namespace oku::test {
namespace {

const QByteArray kContent("a picture");
const QByteArray kOther("another picture");
/// One of 8 by 8 points.
const QByteArray kHead = QByteArray::fromHex("89504e470d0a1a0a0000000d494844520000000800000008");
const QByteArray kEnd = QByteArray::fromHex("0000000049454e44ae426082");
const QByteArray kPng = kHead + "its points" + kEnd;

QString named(const QByteArray& content) { return QStringLiteral("L") + pictureHash(content); }
QString changed(const char* jid, const QByteArray& content) {
    return QStringLiteral("picture|alice@example.org|") + jid + u'|' + pictureHash(content);
}

class ContactPicturesTest : public CardsStage {
protected:
    ContactPicturesTest() {
        begin();
        logIn({u"bob@example.org", u"eve@example.org"});
        take();
    }
    QString kept(const QByteArray& content) const {
        return core->profile.cacheDirectory() + QStringLiteral("pictures/") + pictureHash(content) + ".png";
    }
};

TEST_F(ContactPicturesTest, OneIsReadApartAndThenTold) {
    EXPECT_EQ(announce(u"bob@example.org", cached(named(kContent), kContent)), 1);
    EXPECT_EQ(take(), QStringList());
    ASSERT_EQ(reader->waiting.size(), 1U);
    EXPECT_EQ(reader->waiting.front().first, kContent);
    reader->answer(kPng);
    EXPECT_EQ(take(), QStringList(changed("bob@example.org", kContent)));
    EXPECT_EQ(cards->picture(me, QStringLiteral("bob@example.org")).path, kept(kContent));
    EXPECT_EQ(cards->picture(me, QStringLiteral("eve@example.org")).path, QString());
}

TEST_F(ContactPicturesTest, OfEarlierRunsThoseThatWereUsedLastAreKept) {
    const QString folder = core->profile.cacheDirectory() + QStringLiteral("pictures/");
    ASSERT_TRUE(QDir().mkpath(folder));
    QDateTime time = QDateTime::currentDateTime().addDays(-100);
    const auto put = [&](const QString& name, qint64 size, const QByteArray& content = {}) {
        QFile out(folder + name);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(content) == content.size() && out.flush());
        ASSERT_TRUE(out.resize(size));
        time = time.addSecs(60);
        ASSERT_TRUE(out.setFileTime(time, QFileDevice::FileModificationTime));
    };
    constexpr qint64 mebibyte = 1024 * 1024;
    put(QStringLiteral("first.png"), 1);
    put(pictureHash(kContent) + QStringLiteral(".png"), mebibyte,
        kHead + QByteArray(mebibyte - kHead.size() - kEnd.size(), '\0') + kEnd);
    put(QStringLiteral("large.png"), 200 * mebibyte);
    put(QStringLiteral("small.png"), 55 * mebibyte);
    announce(u"bob@example.org", cached(named(kContent), kContent));
    EXPECT_TRUE(reader->waiting.empty()) << "it is there";
    core->pictures.tidy();
    EXPECT_EQ(QDir(folder).entryList(QDir::Files, QDir::Name),
              (QStringList{pictureHash(kContent) + QStringLiteral(".png"), QStringLiteral("large.png"),
                           QStringLiteral("small.png")}));
    for (int number = 0; number < 5000; ++number) put(QString::number(number), 0);
    restart();
    EXPECT_EQ(QDir(folder).entryList(QDir::Files).size(), 5000);
    EXPECT_TRUE(QFile::exists(kept(kContent))) << "used a moment ago";
    EXPECT_FALSE(QFile::exists(folder + QStringLiteral("large.png")));
}

TEST_F(ContactPicturesTest, ADamagedOneOfAnEarlierRunIsReadAnew) {
    const auto put = [&](const QByteArray& content) {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(kept(kContent)).path()));
        QFile out(kept(kContent));
        ASSERT_TRUE(out.open(QIODevice::WriteOnly) && out.write(content) == content.size());
    };
    const QString path = cached(named(kContent), kContent);
    QByteArray large = kPng;
    large[18] = 1;  // 256 points more
    for (const QByteArray& damaged :
         {QByteArray(), QByteArray(4096, '\0'), kPng.first(20), large, kPng.chopped(kEnd.size()), kPng.chopped(1)}) {
        put(damaged);
        announce(u"bob@example.org", path);
        ASSERT_EQ(reader->waiting.size(), 1U);
        reader->answer(kPng);
        EXPECT_EQ(take(), QStringList(changed("bob@example.org", kContent)));
        EXPECT_EQ(readPictureFile(kept(kContent), SymbolicLinks::refused), kPng);
        // He has another one until the next round.
        announce(u"bob@example.org", cached(named(kOther), kOther));
        reader->answer(kPng);
        take();
    }
    put(kPng);
    announce(u"bob@example.org", path);
    EXPECT_TRUE(reader->waiting.empty()) << "a good one is used again";
}

TEST_F(ContactPicturesTest, WithoutRoomThereIsNone) {
    announce(u"bob@example.org", cached(named(kContent), kContent));
    ASSERT_EQ(reader->waiting.size(), 1U);
    const FileSteps before = fileSteps();
    fileSteps().write = [](int, const void*, size_t) -> ssize_t {
        errno = ENOSPC;
        return -1;
    };
    reader->answer(kPng);
    fileSteps() = before;
    EXPECT_EQ(take(), QStringList());
    EXPECT_EQ(cards->picture(me, QStringLiteral("bob@example.org")).path, QString());
    EXPECT_FALSE(QFile::exists(kept(kContent)));
}

TEST_F(ContactPicturesTest, EachPresenceNamesItAndItIsReadOnce) {
    const QString path = cached(named(kContent), kContent);
    for (int i = 0; i < 3; ++i) announce(u"bob@example.org", path);
    ASSERT_EQ(reader->waiting.size(), 1U);
    reader->answer(kPng);
    announce(u"bob@example.org", path);
    EXPECT_TRUE(reader->waiting.empty());
    EXPECT_EQ(take(), QStringList(changed("bob@example.org", kContent)));
}

TEST_F(ContactPicturesTest, WhatIsNoPictureIsNotReadWithEachPresence) {
    const QString path = cached(named(kContent), kContent);
    announce(u"bob@example.org", path);
    reader->answer({});
    announce(u"bob@example.org", path);
    EXPECT_TRUE(reader->waiting.empty());
}

TEST_F(ContactPicturesTest, TwoWithOnePictureHaveItReadOnce) {
    const QString path = cached(named(kContent), kContent);
    announce(u"bob@example.org", path);
    announce(u"eve@example.org", path);
    ASSERT_EQ(reader->waiting.size(), 1U);
    reader->answer(kPng);
    EXPECT_TRUE(reader->waiting.empty());
    EXPECT_EQ(take(), (QStringList{changed("bob@example.org", kContent), changed("eve@example.org", kContent)}));
    // The one that gets another leaves it to the other.
    announce(u"bob@example.org", cached(named(kOther), kOther));
    reader->answer(kPng);
    EXPECT_TRUE(QFile::exists(kept(kContent)));
    announce(u"eve@example.org", cached(named(kOther), kOther));
    EXPECT_FALSE(QFile::exists(kept(kContent)));
    EXPECT_TRUE(QFile::exists(kept(kOther)));
}

TEST_F(ContactPicturesTest, OneIsReadAtATime) {
    announce(u"bob@example.org", cached(named(kContent), kContent));
    announce(u"eve@example.org", cached(named(kOther), kOther));
    ASSERT_EQ(reader->waiting.size(), 1U);
    reader->answer(kPng);
    ASSERT_EQ(reader->waiting.size(), 1U);
    EXPECT_EQ(reader->waiting.front().first, kOther);
}

TEST_F(ContactPicturesTest, WhoChangesItAllTheTimeKeepsNobodyFromTheirs) {
    const QByteArray last("the last picture");
    for (int i = 0; i < 100; ++i) {
        announce(u"bob@example.org", cached(named(kContent), kContent));
        announce(u"bob@example.org", cached(named(kOther), kOther));
    }
    announce(u"eve@example.org", cached(named(kPng), kPng));
    announce(u"bob@example.org", cached(named(last), last));
    ASSERT_EQ(reader->waiting.size(), 1U);
    reader->answer(kPng);
    ASSERT_EQ(reader->waiting.size(), 1U);
    EXPECT_EQ(reader->waiting.front().first, kPng) << "her turn";
    reader->answer(kPng);
    ASSERT_EQ(reader->waiting.size(), 1U);
    EXPECT_EQ(reader->waiting.front().first, last) << "those in between are not looked at";
    reader->answer(kPng);
    EXPECT_TRUE(reader->waiting.empty());
    EXPECT_EQ(take(), (QStringList{changed("eve@example.org", kPng), changed("bob@example.org", last)}));
    EXPECT_FALSE(QFile::exists(kept(kContent)));
}

TEST_F(ContactPicturesTest, WhatIsNoPictureLeavesTheOneBefore) {
    announce(u"bob@example.org", cached(named(kContent), kContent));
    reader->answer(kPng);
    take();
    announce(u"bob@example.org", cached(named(kOther), kOther));
    reader->answer({});
    EXPECT_EQ(take(), QStringList());
    EXPECT_EQ(cards->picture(me, QStringLiteral("bob@example.org")).hash, pictureHash(kContent));
}

TEST_F(ContactPicturesTest, ThoseOfStrangersAreNotLookedAt) {
    EXPECT_EQ(announce(u"mallory@example.org", cached(named(kContent), kContent)), 0);
    EXPECT_TRUE(reader->waiting.empty());
}

TEST_F(ContactPicturesTest, OneUnderTheHashOfAnotherIsNone) {
    announce(u"bob@example.org", cached(named(kOther), kContent));
    EXPECT_TRUE(reader->waiting.empty());
    announce(u"eve@example.org", cached(QStringLiteral("Lno-hash"), kContent));
    EXPECT_EQ(reader->waiting.size(), 1U) << "a name that is no hash says nothing";
}

TEST_F(ContactPicturesTest, FilesElsewhereAreNotRead) {
    const QString good = cached(QStringLiteral("Lgood"), kContent);
    const QString folder = good.section(u'/', 0, -2) + u'/';
    ASSERT_TRUE(QFile::copy(good, directory.filePath(QStringLiteral("Loutside"))));
    ASSERT_TRUE(QFile::copy(good, folder + QStringLiteral("other")));
    ASSERT_EQ(symlink(good.toUtf8().constData(), (folder + QStringLiteral("Llink")).toUtf8().constData()), 0);
    ASSERT_TRUE(QDir().mkpath(folder + QStringLiteral("Lfolder")));
    const QString large = cached(QStringLiteral("Llarge"), QByteArray(kLargestPictureFile + 1, 'x'));
    const QString empty = cached(QStringLiteral("Lempty"), {});
    for (const QString& path :
         {directory.filePath(QStringLiteral("Loutside")), folder + QStringLiteral("other"),
          folder + QStringLiteral("Llink"), folder + QStringLiteral("Lfolder"),
          folder + QStringLiteral("../.xmppAvatar/Lgood"), folder + QStringLiteral("Lgone"), large, empty, QString()}) {
        announce(u"bob@example.org", path);
        EXPECT_TRUE(reader->waiting.empty()) << path.toStdString();
    }
    announce(u"bob@example.org", good);
    EXPECT_EQ(reader->waiting.size(), 1U);
}

TEST_F(ContactPicturesTest, OneOfAContactThatIsGoneGoesToo) {
    announce(u"bob@example.org", cached(named(kContent), kContent));
    reader->answer(kPng);
    ASSERT_TRUE(QFile::exists(kept(kContent)));
    take();
    emit core->contacts.removed(me, QStringLiteral("bob@example.org"));
    EXPECT_FALSE(QFile::exists(kept(kContent)));
    announce(u"eve@example.org", cached(named(kOther), kOther));
    emit core->contacts.removed(me, QStringLiteral("eve@example.org"));
    reader->answer(kPng);
    EXPECT_EQ(take(), QStringList());
    EXPECT_FALSE(QFile::exists(kept(kOther)));
}

}  // namespace
}  // namespace oku::test
