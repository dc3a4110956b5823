// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/core/stage.h"

#include <sys/file.h>
#include <unistd.h>
#include <cerrno>
#include <QDateTime>
#include <QFile>

#include "host/oku/windows.h"
#include "messenger/core/boundary/plugin_loader.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/storage/private_file.h"
#include "tests/messenger/core/full_disk.h"

namespace oku::test {
namespace {

class Loader : public Stage {
protected:
    /// A lock that names nobody, an hour old.
    void makeEmptyLock(QFile& file) {
        file.setFileName(directory.filePath(QStringLiteral("oku.lock")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(-3600), QFile::FileModificationTime));
    }
    QString cannotWrite() const {
        return QStringLiteral("Nie można zapisać w katalogu %1: %2")
            .arg(QDir(directory.path()).path() + u'/', systemReason(EFBIG));
    }
    QString reasonFor(const QString& module) {
        auto given = options();
        given.modulePath = module;
        core = std::make_unique<HostCore>(given);
        const QString reason = core->start();
        EXPECT_FALSE(core->running());
        EXPECT_FALSE(reason.contains(u'\n'));
        return reason;
    }
};

TEST_F(Loader, TellsAMissingFile) {
    EXPECT_EQ(reasonFor(QStringLiteral("/nowhere/protoLink.module")),
              QStringLiteral("Nie ma pliku wtyczki: /nowhere/protoLink.module"));
}

TEST_F(Loader, LooksForTheModuleBesideTheProgramThenInItsInstallationThenInTheConfiguredFolder) {
    const QString programs = directory.filePath(QStringLiteral("bin"));
    const QStringList places = modulePlaces(programs);
    ASSERT_EQ(places.size(), 3);
    EXPECT_EQ(places[0], programs + QStringLiteral("/protoLink.module"));
    EXPECT_TRUE(places[1].startsWith(QDir(directory.path()).path() + u'/')) << places[1].toStdString();
    EXPECT_TRUE(places[1].endsWith(QStringLiteral("/oku/plugins/protoLink.module"))) << places[1].toStdString();
    EXPECT_TRUE(places[2].endsWith(QStringLiteral("/oku/plugins/protoLink.module"))) << places[2].toStdString();
    EXPECT_FALSE(places[2].startsWith(directory.path()));

    EXPECT_EQ(findModule(programs), QFile::exists(places[2]) ? places[2] : places[0]);
    for (const QString& path : {places[1], places[0]}) {
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.close();
        EXPECT_EQ(findModule(programs), path);
    }
}

TEST_F(Loader, TellsAFileThatIsNoLibrary) {
    QFile file(directory.filePath(QStringLiteral("x.module")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not a library");
    file.close();
    EXPECT_TRUE(reasonFor(file.fileName()).startsWith(QStringLiteral("Nie można wczytać wtyczki ")));
    EXPECT_TRUE(reasonFor(directory.path()).startsWith(QStringLiteral("To nie jest plik wtyczki: ")));
}

TEST_F(Loader, TellsAForeignLibrary) {
    const QString reason = reasonFor(QStringLiteral(FOREIGN_MODULE));
    EXPECT_TRUE(reason.contains(QStringLiteral("nie jest wtyczką"))) << reason.toStdString();
    EXPECT_TRUE(reason.contains(QStringLiteral("plugin"))) << reason.toStdString();
}

TEST_F(Loader, TellsAProfileThatCannotBeUsed) {
    QFile file(directory.filePath(QStringLiteral("file")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    auto given = options();
    given.profileDir = file.fileName() + QStringLiteral("/inside");
    core = std::make_unique<HostCore>(given);
    EXPECT_TRUE(core->start().startsWith(QStringLiteral("Nie można utworzyć katalogu ")));
    given.profileDir = directory.filePath(QString(300, u'x'));
    core = std::make_unique<HostCore>(given);
    EXPECT_TRUE(core->start().startsWith(QStringLiteral("Ścieżka katalogu profilu jest za długa")));
}

TEST_F(Loader, LetsOneMessengerUseAProfile) {
    start();
    HostCore second(options());
    EXPECT_TRUE(second.start().contains(QStringLiteral("jest już używany")));
}

TEST_F(Loader, TakesAProfileWhoseLockNamesNobody) {
    {
        QFile lock;
        makeEmptyLock(lock);
    }
    start();
    HostCore second(options());
    EXPECT_TRUE(second.start().contains(QStringLiteral("jest już używany"))) << "it is a lock like any other";
}

TEST_F(Loader, LeavesALockThatSomebodyStillHolds) {
    QFile lock;
    makeEmptyLock(lock);
    ASSERT_EQ(flock(lock.handle(), LOCK_EX), 0);
    const QString reason = HostCore(options()).start();
    EXPECT_TRUE(reason.contains(QStringLiteral("jest właśnie otwierany"))) << reason.toStdString();
    EXPECT_TRUE(reason.contains(lock.fileName())) << reason.toStdString();
    EXPECT_TRUE(lock.exists());
    lock.close();
    start();
}

TEST_F(Loader, LeavesTheLockOfAnotherMachine) {
    QFile lock(directory.filePath(QStringLiteral("oku.lock")));
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    lock.write("2147483646\nanother\nelsewhere.example\n\n\n");
    lock.close();
    const QString reason = HostCore(options()).start();
    EXPECT_TRUE(reason.contains(QStringLiteral("jest już używany"))) << reason.toStdString();
    EXPECT_TRUE(reason.contains(QStringLiteral("2147483646"))) << reason.toStdString();
    EXPECT_TRUE(lock.exists());
}

TEST_F(Loader, TellsOfAProfileThatTakesNoLock) {
    HostCore host(options());
    FullDisk full;
    const QString reason = host.start();
    full.end();
    EXPECT_EQ(reason, cannotWrite());
}

TEST_F(Loader, TellsOfAFullDiskWhereALockWasLeft) {
    QFile lock;
    makeEmptyLock(lock);
    {
        HostCore host(options());
        const FullDisk full;
        EXPECT_EQ(host.start(), cannotWrite());
    }
    // There are no processes of the first number, and ours is no such program.
    for (const QByteArray& owner : {QByteArray("2147483646"), QByteArray::number(getpid())}) {
        ASSERT_TRUE(lock.resize(0) && lock.seek(0));
        lock.write(owner + "\nanother\n\n\n\n");
        ASSERT_TRUE(lock.flush());
        HostCore host(options());
        const FullDisk full;
        EXPECT_EQ(host.start(), cannotWrite()) << owner.toStdString();
    }
    lock.close();
    start();
}

TEST_F(Loader, GivesDirectoriesThatEndInTheSeparatorAndStandsInTheProfile) {
    start();
    const QString profile = QDir(directory.path()).path() + u'/';
    EXPECT_EQ(QString::fromStdU16String(plugin().profileDir), profile);
    EXPECT_EQ(QString::fromStdU16String(plugin().cacheDir), profile + QStringLiteral("cache/"));
    EXPECT_EQ(QDir(QString::fromStdString(plugin().currentDirectory)).canonicalPath(),
              QDir(directory.path()).canonicalPath());
    EXPECT_NE(plugin().module, 0);
}

TEST_F(Loader, WritesNoDirectoryThatDoesNotFit) {
    start();
    char16_t buffer[4] = u"zzz";
    auto record = makeRecord<OKU_DIRECTORY>();
    record.buffer = buffer;
    record.capacity = 4;
    EXPECT_EQ(call(u"OKU/Info/GetProfileDir", wordOf(&record)), 0);
    EXPECT_EQ(std::u16string(buffer), u"zzz");
}

TEST_F(Loader, LoadsAgainWithFreshStateAfterTheEnd) {
    for (int round = 0; round < 2; ++round) {
        writeAccount({}, QStringLiteral("alice@example.org"));
        start();
        EXPECT_EQ(plugin().loads, 1);
        bool finished = false;
        QObject::connect(core.get(), &HostCore::finished, core.get(), [&] { finished = true; });
        core->shutdown();
        EXPECT_TRUE(waitFor([&] { return finished; }));
        EXPECT_EQ(core->services.pluginServices(), 0U);
        EXPECT_EQ(core->events.hooks(), 0U);
        core.reset();
    }
}

TEST_F(Loader, OpensNoHistoryBeforeItIsNeeded) {
    writeAccount({}, QStringLiteral("alice@example.org"));
    start();
    EXPECT_FALSE(QFile::exists(directory.filePath(QStringLiteral("history.sqlite"))));
}

}  // namespace
}  // namespace oku::test
