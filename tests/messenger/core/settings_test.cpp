// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <csignal>

#include "tests/messenger/core/stage.h"

#include "host/oku/settings.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/storage/private_file.h"

namespace oku::test {
namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

class Settings : public testing::Test {
protected:
    QString path() const { return directory.filePath(QStringLiteral("a.config")); }
    QTemporaryDir directory;
};

TEST_F(Settings, ComeBackAsTheyWere) {
    const QString nasty = QStringLiteral("  \"cudzysłów\" \\ #=\r\n\t;[x] 😀 ") + QChar(u'\0') + u' ';
    {
        SettingsFile file(path());
        file.set(QStringLiteral("XMPP/Serv/SSL"), 1);
        file.set(QStringLiteral("XMPP/Serv/SSL/Legacy"), -5);
        file.set(QStringLiteral("desc/String"), nasty);
        file.set(QStringLiteral("number as text"), QStringLiteral("12"));
        file.set(QStringLiteral("empty"), QString());
        file.set(QStringLiteral("gone"), 1);
        file.set(QStringLiteral("gone"), QVariant());
    }
    SettingsFile file(path());
    file.read();
    EXPECT_EQ(file.value(QStringLiteral("XMPP/Serv/SSL")), QVariant(1LL));
    EXPECT_EQ(file.number(QStringLiteral("XMPP/Serv/SSL/Legacy"), 0), -5);
    EXPECT_EQ(file.text(QStringLiteral("desc/String")), nasty);
    EXPECT_EQ(file.value(QStringLiteral("number as text")), QVariant(QStringLiteral("12")));
    EXPECT_TRUE(file.has(QStringLiteral("empty")));
    EXPECT_FALSE(file.has(QStringLiteral("gone")));
    EXPECT_EQ(file.number(QStringLiteral("desc/String"), 77), 77);
}

TEST_F(Settings, ReachTheDiskByThemselvesAndOnlyForTheirOwner) {
    SettingsFile file(path());
    file.set(QStringLiteral("XMPP/Pass"), QStringLiteral("hunter22"));
    EXPECT_FALSE(QFile::exists(path()));
    EXPECT_TRUE(waitFor([&] { return contentOf(path()).contains("hunter22"); }));
    const auto rights = QFile::permissions(path());
    EXPECT_FALSE(rights & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther));
    file.set(QStringLiteral("XMPP/Pass"), QStringLiteral("correct horse"));
    EXPECT_TRUE(waitFor([&] { return contentOf(path()).contains("correct horse"); }));
    EXPECT_FALSE(QFile::permissions(path()) & QFile::ReadOther);
}

TEST_F(Settings, AreNotPutOffByFurtherChanges) {
    SettingsFile file(path());
    QTimer changes;
    int serial = 0;
    QObject::connect(&changes, &QTimer::timeout, &file, [&] { file.set(QStringLiteral("serial"), ++serial); });
    changes.start(10);
    EXPECT_TRUE(waitFor([&] { return contentOf(path()).contains("serial"); }));
}

TEST_F(Settings, TakeAwayTheRightsOfOthersFromAFileMadeByHand) {
    writeFile(path(), "XMPP/User = alice@example.org\n");
    QFile::setPermissions(path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    SettingsFile file(path());
    file.read();
    EXPECT_EQ(file.text(QStringLiteral("XMPP/User")), QStringLiteral("alice@example.org"));
    file.set(QStringLiteral("XMPP/Pass"), QStringLiteral("x"));
    EXPECT_TRUE(file.write());
    EXPECT_FALSE(QFile::permissions(path()) & (QFile::ReadGroup | QFile::ReadOther));
}

TEST_F(Settings, KeepADamagedFileAsideAndSaySoOnce) {
    for (const QByteArray& damage :
         {QByteArray("\xff\xfe garbage"), QByteArray("no equals sign\n"), QByteArray("a = \"cut"),
          QByteArray("a = \"x\\q\"\n"), QByteArray("a = 1\0b", 7)}) {
        writeFile(path(), damage);
        SettingsFile file(path());
        QStringList notices;
        QObject::connect(&file, &SettingsFile::noticed, &file, [&](const QString& text) { notices.append(text); });
        file.read();
        EXPECT_EQ(notices.size(), 1);
        EXPECT_FALSE(QFile::exists(path()));
        const auto aside = QDir(directory.path()).entryList({QStringLiteral("a.config.damaged-*")});
        ASSERT_EQ(aside.size(), 1);
        EXPECT_EQ(contentOf(directory.filePath(aside.first())), damage);
        EXPECT_TRUE(QFile::remove(directory.filePath(aside.first())));
    }
}

TEST_F(Settings, KeepWhatCanBeReadOfADamagedFile) {
    writeFile(path(),
              "XMPP/User = \"alice@example.org\"\nXMPP/Pass = \"cut\nXMPP/Bad\xff = 1\nno sign\nXMPP/Priority = 5");
    SettingsFile file(path());
    QStringList notices;
    QObject::connect(&file, &SettingsFile::noticed, &file, [&](const QString& text) { notices.append(text); });
    file.read();
    EXPECT_EQ(notices.size(), 1);
    EXPECT_EQ(file.text(QStringLiteral("XMPP/User")), QStringLiteral("alice@example.org"));
    EXPECT_EQ(file.number(QStringLiteral("XMPP/Priority"), 0), 5);
    EXPECT_EQ(QDir(directory.path()).entryList({QStringLiteral("a.config.damaged-*")}).size(), 1);
    EXPECT_EQ(contentOf(path()), "XMPP/Priority = 5\nXMPP/User = \"alice@example.org\"\n");
    file.read();
    EXPECT_EQ(notices.size(), 1) << "the new file is whole";
}

/// Reads a damaged file through a link, and sees to it that neither the link nor what could not be read is lost.
void expectKeptBehindALink(const QString& link, const QString& target, const QByteArray& good = "XMPP/Priority = 5\n") {
    const QByteArray damaged = good + "XMPP/Pass = \"cut\n";
    writeFile(target, damaged);
    ASSERT_TRUE(QFile::link(target, link));
    SettingsFile file(link);
    QStringList notices;
    QObject::connect(&file, &SettingsFile::noticed, &file, [&](const QString& text) { notices.append(text); });
    file.read();
    const QDir folder = QFileInfo(link).dir();
    const auto aside = folder.entryList({QStringLiteral("a.config.damaged-*")});
    ASSERT_EQ(aside.size(), 1);
    EXPECT_EQ(contentOf(folder.filePath(aside.first())), damaged);
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices[0].contains(folder.filePath(aside.first()))) << notices[0].toStdString();
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(contentOf(target), good);
}

TEST_F(Settings, KeepADamagedFileBehindALink) {
    QTemporaryDir elsewhere;
    expectKeptBehindALink(path(), elsewhere.filePath(QStringLiteral("target")));
}

TEST_F(Settings, KeepALinkToAFileOfWhichNothingCanBeRead) {
    QTemporaryDir elsewhere;
    expectKeptBehindALink(path(), elsewhere.filePath(QStringLiteral("target")), "");
}

TEST_F(Settings, KeepADamagedFileBehindALinkToAnotherFileSystem) {
    QTemporaryDir elsewhere(QStringLiteral("/dev/shm/oku-XXXXXX"));
    struct stat here {};
    struct stat there {};
    if (stat(qPrintable(directory.path()), &here) != 0 || stat(qPrintable(elsewhere.path()), &there) != 0 ||
        here.st_dev == there.st_dev)
        GTEST_SKIP() << "there is no other file system";
    expectKeptBehindALink(path(), elsewhere.filePath(QStringLiteral("target")));
}

TEST_F(Settings, AreGoneBehindALinkToo) {
    const QTemporaryDir elsewhere;
    const QString target = elsewhere.filePath(QStringLiteral("target"));
    writeFile(target, "XMPP/Pass = \"hunter22\"\n");
    ASSERT_TRUE(QFile::link(target, path()));
    SettingsFile file(path());
    file.read();
    const FileSteps before = fileSteps();
    fileSteps().sync = [](int) {
        errno = EROFS;
        return -1;
    };
    EXPECT_FALSE(file.remove());
    fileSteps() = before;
    EXPECT_TRUE(QFileInfo(path()).isSymLink()) << "it tells where the password still stands";
    EXPECT_TRUE(file.remove());
    EXPECT_FALSE(QFileInfo(path()).isSymLink());
    EXPECT_TRUE(QFile::exists(target));
    EXPECT_EQ(contentOf(target), "");
}

TEST_F(Settings, LeaveNoLinkToNothing) {
    ASSERT_TRUE(QFile::link(directory.filePath(QStringLiteral("nothing")), path()));
    SettingsFile file(path());
    EXPECT_TRUE(file.remove());
    EXPECT_FALSE(QFileInfo(path()).isSymLink());
}

TEST_F(Settings, RefuseAKeyThatWouldNotBeReadBack) {
    SettingsFile file(path());
    for (const char* key : {"", " ", " a", "a ", "\ta", "a=b", "#a", "a\nb", "a = 1\nb", "a\rb"}) {
        EXPECT_FALSE(file.set(QString::fromUtf8(key), 1)) << key;
        EXPECT_FALSE(file.has(QString::fromUtf8(key))) << key;
    }
    EXPECT_FALSE(file.set(QStringLiteral("a") + QChar(u'\0'), 1));
    EXPECT_FALSE(file.set(QChar(QChar::ByteOrderMark) + QStringLiteral("a"), 1));
    EXPECT_FALSE(file.set(QString(QChar(0xd800)), 1)) << "half of a character";
    EXPECT_TRUE(file.set(QStringLiteral("zażółć a#b \"c\""), 1));
    EXPECT_TRUE(file.write());
    bool ok = false;
    EXPECT_EQ(settingsFromBytes(contentOf(path()), ok).keys(), QStringList(QStringLiteral("zażółć a#b \"c\"")));
    EXPECT_TRUE(ok);
}

TEST_F(Settings, HaveNoKeyThatCouldNotBeWritten) {
    bool ok = true;
    EXPECT_EQ(settingsFromBytes("a = 1\nb\rc = 2\nd = 3\n", ok).keys(), (QStringList{"a", "d"}));
    EXPECT_FALSE(ok);
    EXPECT_EQ(settingsFromBytes("\uFEFF\uFEFFa = 1\n\uFEFFb = 2\n", ok).keys(), QStringList("b"))
        << "the first mark of a line is none of its characters";
    EXPECT_FALSE(ok);
}

TEST_F(Settings, AreNotWrittenOverAFileThatCannotBeRead) {
    ASSERT_TRUE(QDir().mkdir(path()));  // a folder in its place cannot be opened, not even by root
    SettingsFile file(path());
    QStringList notices;
    QObject::connect(&file, &SettingsFile::noticed, &file, [&](const QString& text) { notices.append(text); });
    file.read();
    EXPECT_EQ(notices.size(), 1);
    file.set(QStringLiteral("a"), 1);
    EXPECT_FALSE(file.write());
    EXPECT_TRUE(QFileInfo(path()).isDir());
}

TEST_F(Settings, AreNotBelievedWhenTheFileCannotBeReadToItsEnd) {
    SettingsFile file(QStringLiteral("/proc/self/mem"));  // opens, and cannot be read from its beginning
    QStringList notices;
    QObject::connect(&file, &SettingsFile::noticed, &file, [&](const QString& text) { notices.append(text); });
    file.read();
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices[0].contains(file.path())) << notices[0].toStdString();
    file.set(QStringLiteral("a"), 1);
    EXPECT_FALSE(file.write());
    EXPECT_EQ(notices.size(), 2) << "it is not even tried";
}

TEST_F(Settings, SurviveAKillAtAnyMoment) {
    SettingsFile first(path());
    first.set(QStringLiteral("serial"), 0);
    first.set(QStringLiteral("filler"), QString(20000, u'x'));
    ASSERT_TRUE(first.write());
    qlonglong last = 0;
    constexpr int rounds = 60;
    for (int round = 0; round < rounds; ++round) {
        int ready[2];
        ASSERT_EQ(pipe(ready), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            SettingsFile file(path());
            file.read();
            for (qlonglong serial = last + 1;; ++serial) {
                file.set(QStringLiteral("serial"), serial);
                file.set(QStringLiteral("filler"), QString(20000, QChar(u'a' + static_cast<char16_t>(serial % 26))));
                if (!file.write()) _exit(1);
                if (serial == last + 1 && write(ready[1], "", 1) != 1) _exit(1);
            }
        }
        char byte = 0;
        ASSERT_EQ(read(ready[0], &byte, 1), 1);
        close(ready[0]);
        close(ready[1]);
        usleep(static_cast<useconds_t>(67 * round));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the writer failed by itself";
        bool ok = false;
        const auto values = settingsFromBytes(contentOf(path()), ok);
        ASSERT_TRUE(ok);
        const QString filler = values[QStringLiteral("filler")].toString();
        ASSERT_EQ(filler.size(), 20000);
        ASSERT_EQ(filler.count(filler[0]), 20000);
        const qlonglong serial = values[QStringLiteral("serial")].toLongLong();
        EXPECT_GT(serial, last);
        last = serial;
    }
}

class SettingsServices : public Stage {
protected:
    OKU_SETTINGS_RECORD record(const char16_t* key, std::uint32_t type) const {
        auto result = makeRecord<OKU_SETTINGS_RECORD>();
        result.key = key;
        result.type = type;
        result.store = account().store;
        return result;
    }
};

TEST_F(SettingsServices, GiveAndTakeBothTypes) {
    writeAccount({}, QStringLiteral("alice@example.org"), QStringLiteral("XMPP/Priority = 5\n"));
    start();
    auto number = record(u"XMPP/Priority", OKU_SETTING_INTEGER);
    EXPECT_NE(call(u"OKU/Settings/Get", wordOf(&number)), 0);
    EXPECT_EQ(number.value, 5);
    auto missing = record(u"XMPP/Nothing", OKU_SETTING_INTEGER);
    missing.value = 99;
    EXPECT_EQ(call(u"OKU/Settings/Get", wordOf(&missing)), 0);
    EXPECT_EQ(missing.value, 99);
    char16_t buffer[8] = u"zzzzzzz";
    auto text = record(u"XMPP/User", OKU_SETTING_STRING);
    text.value = wordOf(&buffer[0]);
    text.length = 8;
    EXPECT_NE(call(u"OKU/Settings/Get", wordOf(&text)), 0);
    EXPECT_EQ(std::u16string(buffer), u"alice@e") << "cut to the capacity with its NUL";
    auto change = record(u"desc/String", OKU_SETTING_STRING);
    change.value = wordOf(u"abcdef");
    change.length = 3;
    call(u"OKU/Settings/Set", wordOf(&change));
    EXPECT_EQ(entry().settings->text(QStringLiteral("desc/String")), QStringLiteral("abc"));
}

TEST_F(SettingsServices, RefuseAKeyThatTheFileCannotHold) {
    writeAccount({}, QStringLiteral("alice@example.org"));
    start();
    auto number = record(u"XMPP/a=b", OKU_SETTING_INTEGER);
    EXPECT_EQ(call(u"OKU/Settings/Set", wordOf(&number)), 0);
    auto text = record(u"", OKU_SETTING_STRING);
    text.value = wordOf(u"x");
    text.length = 1;
    EXPECT_EQ(call(u"OKU/Settings/Set", wordOf(&text)), 0);
}

TEST_F(SettingsServices, NeverGiveHalfOfACharacter) {
    writeAccount({}, QStringLiteral("alice@example.org"), QStringLiteral("desc/String = \"ab😀\"\n"));
    start();
    char16_t buffer[4] = {};
    auto text = record(u"desc/String", OKU_SETTING_STRING);
    text.value = wordOf(&buffer[0]);
    text.length = 4;
    call(u"OKU/Settings/Get", wordOf(&text));
    EXPECT_EQ(std::u16string(buffer), u"ab");
}

TEST_F(SettingsServices, IgnoreAHandleThatIsNoStore) {
    start();
    auto number = record(u"XMPP/Priority", OKU_SETTING_INTEGER);
    number.store = 4711;
    EXPECT_EQ(call(u"OKU/Settings/Get", wordOf(&number)), 0);
    EXPECT_EQ(call(u"OKU/Settings/Set", wordOf(&number)), 0);
    EXPECT_EQ(call(u"OKU/Settings/Get", 0), 0);
}

}  // namespace
}  // namespace oku::test
