// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/storage/private_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "messenger/core/process/process_protection.h"
#include "messenger/core/storage/settings_file.h"
#include "tests/messenger/core/stage.h"

namespace oku::test {
namespace {

/// Puts the system's calls back.
struct Steps {
    FileSteps before = fileSteps();
    ~Steps() { fileSteps() = before; }
};

int fails(int error) {
    errno = error;
    return -1;
}

/// Each step of a replacement, and the reason that is told when it fails.
struct Failure {
    const char* step;
    void (*arrange)(FileSteps&);
    int error;
};
const Failure kFailures[] = {
    {"create", [](FileSteps& steps) { steps.create = [](char*) { return fails(EROFS); }; }, EROFS},
    {"protect", [](FileSteps& steps) { steps.protect = [](int) { return fails(EPERM); }; }, EPERM},
    {"write", [](FileSteps& steps) { steps.write = [](int, const void*, size_t) -> ssize_t { return fails(ENOSPC); }; },
     ENOSPC},
    {"write of nothing", [](FileSteps& steps) { steps.write = [](int, const void*, size_t) -> ssize_t { return 0; }; },
     ENOSPC},
    {"sync", [](FileSteps& steps) { steps.sync = [](int) { return fails(EIO); }; }, EIO},
    {"close",
     [](FileSteps& steps) {
         steps.close = [](int file) {
             ::close(file);
             return fails(EDQUOT);
         };
     },
     EDQUOT},
    {"rename", [](FileSteps& steps) { steps.rename = [](const char*, const char*) { return fails(ENOSPC); }; }, ENOSPC},
};

class PrivateFile : public testing::Test {
protected:
    QString path(const char* name = "file") const { return directory.filePath(QString::fromLatin1(name)); }
    static QByteArray contentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }
    static mode_t modeOf(const QString& path) {
        struct stat state {};
        stat(QFile::encodeName(path).constData(), &state);
        return state.st_mode & 07777;
    }
    QStringList files() const { return QDir(directory.path()).entryList(QDir::Files | QDir::Hidden | QDir::System); }

    QTemporaryDir directory;
};

TEST_F(PrivateFile, IsReplacedWholeAndForItsOwnerOnly) {
    const mode_t before = umask(0);
    EXPECT_EQ(replaceFile(path(), "one"), QString());
    EXPECT_EQ(modeOf(path()), 0600u);
    ASSERT_EQ(chmod(QFile::encodeName(path()).constData(), 0666), 0);
    EXPECT_EQ(replaceFile(path(), QByteArray(1 << 20, 'x')), QString());
    umask(before);
    EXPECT_EQ(contentOf(path()), QByteArray(1 << 20, 'x'));
    EXPECT_EQ(modeOf(path()), 0600u);
    EXPECT_EQ(files(), QStringList(QStringLiteral("file")));
}

TEST_F(PrivateFile, StaysAsItWasWhateverStepFails) {
    ASSERT_EQ(replaceFile(path(), "old"), QString());
    for (const Failure& failure : kFailures) {
        const Steps steps;
        failure.arrange(fileSteps());
        EXPECT_EQ(replaceFile(path(), "new"), systemReason(failure.error)) << failure.step;
        EXPECT_EQ(contentOf(path()), "old") << failure.step;
        EXPECT_EQ(files(), QStringList(QStringLiteral("file"))) << failure.step << " left something behind";
    }
}

TEST_F(PrivateFile, IsInPlaceButToldOfWhenItsFolderCannotBeSynced) {
    const Steps steps;
    fileSteps().syncFolder = [](const char*) { return fails(EIO); };
    EXPECT_EQ(replaceFile(path(), "new"), systemReason(EIO));
    EXPECT_EQ(contentOf(path()), "new");
}

TEST_F(PrivateFile, IsWrittenThoughTheSystemTakesALittleAtATime) {
    const Steps steps;
    fileSteps().write = [](int file, const void* bytes, size_t count) -> ssize_t {
        static bool interrupted = false;
        interrupted = !interrupted;
        return interrupted ? fails(EINTR) : ::write(file, bytes, std::min<size_t>(count, 3));
    };
    EXPECT_EQ(replaceFile(path(), "0123456789"), QString());
    EXPECT_EQ(contentOf(path()), "0123456789");
}

TEST_F(PrivateFile, StaysWholeOnADiskThatIsReallyFull) {
    ASSERT_EQ(replaceFile(path(), "old"), QString());
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const QString reason = replaceFile(path(), QByteArray(8192, 'x'));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(reason, systemReason(EFBIG)) << "the system took 4096 bytes and no more";
    EXPECT_EQ(contentOf(path()), "old");
    EXPECT_EQ(files(), QStringList(QStringLiteral("file")));
}

TEST_F(PrivateFile, BehindALinkIsReplacedAndTheLinkStays) {
    ASSERT_EQ(replaceFile(path("target"), "old"), QString());
    ASSERT_TRUE(QFile::link(path("target"), path("link")));
    EXPECT_EQ(replaceFile(path("link"), "new"), QString());
    EXPECT_EQ(contentOf(path("target")), "new");
    EXPECT_TRUE(QFileInfo(path("link")).isSymLink());
}

TEST_F(PrivateFile, IsNotWrittenThroughALinkWhereThePlaceIsMeant) {
    ASSERT_EQ(replaceFile(path("target"), "old"), QString());
    ASSERT_TRUE(QFile::link(path("target"), path("link")));
    ASSERT_TRUE(QFile::link(path("nowhere"), path("dangling")));
    for (const char* name : {"link", "dangling"}) {
        EXPECT_EQ(replaceFile(path(name), "new", Target::inPlace), systemReason(ELOOP)) << name;
        EXPECT_EQ(replaceFile(path(name), "new", Target::nothing), fileExistsReason()) << name;
        EXPECT_TRUE(QFileInfo(path(name)).isSymLink()) << name;
    }
    EXPECT_EQ(contentOf(path("target")), "old");
    EXPECT_FALSE(QFile::exists(path("nowhere")));
}

TEST_F(PrivateFile, ReplacesNothingThatItWasNotToldTo) {
    EXPECT_EQ(replaceFile(path(), "one", Target::nothing), QString());
    EXPECT_EQ(replaceFile(path(), "two", Target::nothing), fileExistsReason());
    EXPECT_EQ(contentOf(path()), "one");
    EXPECT_EQ(replaceFile(path(), "two", Target::inPlace), QString());
    EXPECT_EQ(contentOf(path()), "two");
}

TEST_F(PrivateFile, ThatComesUpInTheLastMomentStays) {
    const Steps steps;
    static QByteArray other;
    other = QFile::encodeName(path());
    fileSteps().sync = [](int) {
        std::FILE* file = std::fopen(other.constData(), "w");
        std::fputs("theirs", file);
        return std::fclose(file);
    };
    EXPECT_EQ(replaceFile(path(), "ours", Target::nothing), fileExistsReason());
    EXPECT_EQ(contentOf(path()), "theirs");
}

TEST_F(PrivateFile, TakesNoFolderAndNoPipeForAFile) {
    ASSERT_TRUE(QDir().mkdir(path("folder")));
    ASSERT_EQ(mkfifo(QFile::encodeName(path("pipe")).constData(), 0600), 0);
    for (const Target target : {Target::behindLinks, Target::inPlace, Target::nothing}) {
        EXPECT_NE(replaceFile(path("folder"), "x", target), QString());
        EXPECT_NE(replaceFile(path("pipe"), "x", target), QString());
        EXPECT_NE(replaceFile(path("no/folder"), "x", target), QString());
    }
}

TEST_F(PrivateFile, ThatOthersOwnOrCouldWriteIsForeign) {
    EXPECT_EQ(foreignReason(path()), QString()) << "nothing is nobody's";
    EXPECT_EQ(foreignReason(directory.path()), QString());
    ASSERT_EQ(replaceFile(path(), "x"), QString());
    const QByteArray name = QFile::encodeName(path());
    for (const mode_t mode : {0600u, 0644u, 0444u, 0755u}) {
        ASSERT_EQ(chmod(name.constData(), mode), 0);
        EXPECT_EQ(foreignReason(path()), QString()) << std::oct << mode;
    }
    for (const mode_t mode : {0620u, 0602u, 0666u}) {
        ASSERT_EQ(chmod(name.constData(), mode), 0);
        EXPECT_TRUE(foreignReason(path()).contains(path())) << std::oct << mode;
    }
    ASSERT_EQ(chmod(name.constData(), 0600), 0);
    // What belongs to root is somebody else's for a plain user, and the other way round.
    const bool superuser = geteuid() == 0;
    ASSERT_TRUE(!superuser || chown(name.constData(), 12345, 12345) == 0);
    EXPECT_NE(foreignReason(superuser ? path() : QStringLiteral("/etc/passwd")), QString());
}

TEST_F(PrivateFile, OfSettingsThatOthersCouldWriteIsNeitherReadNorWrittenOver) {
    ASSERT_EQ(replaceFile(path(), "XMPP/User = \"mallory@example.org\"\n"), QString());
    ASSERT_EQ(chmod(QFile::encodeName(path()).constData(), 0620), 0);
    const QByteArray before = contentOf(path());
    SettingsFile file(path());
    QStringList told;
    QObject::connect(&file, &SettingsFile::noticed, &file, [&](const QString& text) { told.append(text); });
    file.read();
    EXPECT_FALSE(file.has(QStringLiteral("XMPP/User")));
    ASSERT_EQ(told.size(), 1);
    EXPECT_TRUE(told[0].contains(foreignReason(path()))) << told[0].toStdString();
    file.set(QStringLiteral("a"), 1);
    EXPECT_FALSE(file.write());
    EXPECT_EQ(contentOf(path()), before);
}

TEST_F(PrivateFile, IsKeptToItsUserByTheProcessAsWell) {
    const mode_t before = umask(0);
    rlimit cores{};
    ASSERT_EQ(getrlimit(RLIMIT_CORE, &cores), 0);
    protectProcess();
    rlimit left{};
    getrlimit(RLIMIT_CORE, &left);
    // Only a limit of one byte keeps the image from a program that the system hands it to as well.
    const bool canRaise = cores.rlim_max > 0 || geteuid() == 0;
    EXPECT_EQ(left.rlim_cur, canRaise ? 1u : 0u);
    EXPECT_EQ(left.rlim_max, left.rlim_cur);
    QFile file(path());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(modeOf(path()), 0600u);
    umask(before);
}

class FullDisk : public PrivateFile {
protected:
    static void fill() {
        fileSteps().write = [](int, const void*, size_t) -> ssize_t { return fails(ENOSPC); };
    }
    Steps steps;
};

TEST_F(FullDisk, LosesNoSettingAndIsWrittenWhenThereIsRoom) {
    SettingsFile file(path());
    QStringList told;
    QObject::connect(&file, &SettingsFile::noticed, &file, [&](const QString& text) { told.append(text); });
    file.set(QStringLiteral("XMPP/User"), QStringLiteral("alice@example.org"));
    ASSERT_TRUE(file.write());
    const QByteArray good = contentOf(path());
    fill();
    file.set(QStringLiteral("XMPP/Priority"), 7);
    EXPECT_FALSE(file.write());
    EXPECT_FALSE(file.write());
    EXPECT_EQ(contentOf(path()), good);
    ASSERT_EQ(told.size(), 1) << "once, however often it is tried";
    EXPECT_TRUE(told[0].contains(path()) && told[0].contains(systemReason(ENOSPC))) << told[0].toStdString();
    file.read();
    EXPECT_EQ(file.number(QStringLiteral("XMPP/Priority"), 0), 7) << "what could not be written is newer";
    fileSteps() = steps.before;
    EXPECT_TRUE(waitFor([&] { return contentOf(path()).contains("XMPP/Priority = 7"); })) << "by itself";
    fill();
    file.set(QStringLiteral("XMPP/Priority"), 8);
    EXPECT_FALSE(file.write());
    EXPECT_EQ(told.size(), 2) << "a new failure is told anew";
    fileSteps() = steps.before;
}

TEST_F(FullDisk, LosesNothingOfASettingsFileThatIsDamagedAsWell) {
    {
        QFile damaged(path());
        ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
        damaged.write("XMPP/User = \"alice@example.org\"\nXMPP/Pass = \"cut\n");
    }
    fill();
    for (int start = 0; start < 2; ++start) {
        SettingsFile file(path());
        file.read();
        EXPECT_EQ(file.text(QStringLiteral("XMPP/User")), QStringLiteral("alice@example.org")) << start;
    }
    fileSteps() = steps.before;
    SettingsFile file(path());
    file.read();
    EXPECT_EQ(contentOf(path()), "XMPP/User = \"alice@example.org\"\n");
}

TEST_F(FullDisk, LosesNoContactListAndIsWrittenWhenThereIsRoom) {
    ContactList list(path());
    QStringList told;
    QObject::connect(&list, &ContactList::noticed, &list, [&](const QString& text) { told.append(text); });
    list.add({QStringLiteral("bob@example.org"), QStringLiteral("Bob"), {}, {}});
    list.save();
    const QByteArray good = contentOf(path());
    fill();
    list.add({QStringLiteral("carol@example.org"), QStringLiteral("Carol"), {}, {}});
    list.save();
    list.save();
    EXPECT_EQ(contentOf(path()), good);
    EXPECT_EQ(told.size(), 1);
    fileSteps() = steps.before;
    EXPECT_TRUE(waitFor([&] { return contentOf(path()).contains("carol@example.org"); })) << "by itself";
}

}  // namespace
}  // namespace oku::test
