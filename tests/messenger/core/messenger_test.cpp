// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/core/stage.h"

#include <dlfcn.h>
#include <cerrno>
#include <cstring>
#include <QJsonArray>
#include <QJsonDocument>

#include "messenger/core/accounts/account_setup.h"
#include "messenger/core/messenger.h"
#include "messenger/core/options.h"
#include "messenger/core/storage/private_file.h"

namespace oku::test {
namespace {

const QString kAlice = QStringLiteral("alice@example.org");

/// The facade, as a user interface sees it.
class Facade : public testing::Test {
protected:
    Facade() {
        MessengerOptions given;
        given.profileDir = directory.path();
        given.modulePath = QStringLiteral(TINY_MODULE);
        messenger = std::make_unique<Messenger>(given);
        QObject::connect(&messenger->accounts(), &AccountsFace::accountChanged, messenger.get(),
                         [this](const QString& jid) { changed.append(jid); });
    }
    void TearDown() override { messenger.reset(); }
    ~Facade() override { QDir::setCurrent(before); }

    QVariant setting(const QString& jid, const char* key) {
        return messenger->accounts().settingValue(jid, QString::fromLatin1(key));
    }

    QString before = QDir::currentPath();
    QTemporaryDir directory;
    std::unique_ptr<Messenger> messenger;
    QStringList changed;
};

TEST_F(Facade, MakesTheFirstAccountFromTheDefaultOne) {
    ASSERT_EQ(messenger->start(), QString());
    EXPECT_TRUE(messenger->accounts().accounts().isEmpty());
    EXPECT_EQ(messenger->accounts().addAccount(QStringLiteral("Alice@Example.org"), QStringLiteral("tajne")),
              QString());
    ASSERT_EQ(messenger->accounts().accounts().size(), 1);
    EXPECT_EQ(messenger->accounts().accounts()[0].jid, kAlice);
    EXPECT_EQ(messenger->accounts().accounts()[0].settingsPath,
              messenger->profileDir() + QStringLiteral("tiny.config"));
    EXPECT_TRUE(setting(kAlice, "XMPP/User").toString().startsWith(QStringLiteral("alice@example.org/OKU-")));
    EXPECT_EQ(setting(kAlice, "XMPP/Serv/SSL").toInt(), 1);
    EXPECT_EQ(setting(kAlice, "XMPP/Serv/Compress").toInt(), 0);
    EXPECT_EQ(changed, QStringList(kAlice));
    const QString path = messenger->accounts().accounts()[0].settingsPath;
    EXPECT_TRUE(QFile::exists(path)) << "written at once";
    EXPECT_FALSE(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther));
}

TEST_F(Facade, ChangesAnAccountThatIsThere) {
    ASSERT_EQ(messenger->start(), QString());
    messenger->accounts().addAccount(QStringLiteral("alice@example.org/dom"), QStringLiteral("a"));
    messenger->accounts().addAccount(kAlice, QStringLiteral("b"),
                                     {{QStringLiteral("XMPP/Priority"), 5}, {QStringLiteral("x"), true}});
    EXPECT_EQ(messenger->accounts().accounts().size(), 1);
    EXPECT_EQ(setting(kAlice, "XMPP/User").toString(), QStringLiteral("alice@example.org/dom"));
    EXPECT_EQ(setting(kAlice, "XMPP/Pass").toString(), QStringLiteral("b"));
    EXPECT_EQ(setting(kAlice, "XMPP/Priority"), QVariant(5LL));
    EXPECT_EQ(setting(kAlice, "x"), QVariant(1LL));
    messenger->accounts().addAccount(kAlice, {});
    EXPECT_EQ(setting(kAlice, "XMPP/Pass").toString(), QStringLiteral("b"));
}

TEST_F(Facade, RefusesASettingWhoseKeyTheFileCannotHold) {
    ASSERT_EQ(messenger->start(), QString());
    const QString bad = QStringLiteral("a=b");
    EXPECT_TRUE(messenger->accounts().addAccount(kAlice, QStringLiteral("a"), {{bad, 1}}).contains(bad));
    EXPECT_TRUE(messenger->accounts().accounts().isEmpty()) << "nothing of it was done";
    messenger->accounts().addAccount(kAlice, QStringLiteral("a"));
    EXPECT_FALSE(messenger->accounts().addAccount(kAlice, QStringLiteral("b"), {{QString(), 1}}).isEmpty());
    EXPECT_EQ(setting(kAlice, "XMPP/Pass").toString(), QStringLiteral("a"));
    EXPECT_TRUE(messenger->accounts().setSetting(kAlice, bad, 1).contains(bad));
    EXPECT_FALSE(setting(kAlice, "a=b").isValid());
    EXPECT_EQ(messenger->accounts().setSetting(kAlice, QStringLiteral("XMPP/Priority"), 1), QString());
}

TEST_F(Facade, ChecksTheKindAndRangeOfSettings) {
    ASSERT_EQ(messenger->start(), QString());
    messenger->accounts().addAccount(kAlice, QStringLiteral("a"));
    const auto fault = [&](const char* key, const QVariant& value) {
        const QString name = QString::fromLatin1(key);
        const QVariant old = messenger->accounts().settingValue(kAlice, name);
        const QString reason = messenger->accounts().setSetting(kAlice, name, value);
        EXPECT_EQ(messenger->accounts().settingValue(kAlice, name) == old, !reason.isEmpty() || old == value) << key;
        EXPECT_TRUE(reason.isEmpty() || reason.contains(name)) << reason.toStdString();
        return !reason.isEmpty();
    };
    for (const int priority : {-129, 128, 500}) EXPECT_TRUE(fault("XMPP/Priority", priority)) << priority;
    for (const int priority : {-128, 0, 127}) EXPECT_FALSE(fault("XMPP/Priority", priority)) << priority;
    EXPECT_TRUE(fault("XMPP/Priority", QStringLiteral("high")));
    EXPECT_TRUE(fault("XMPP/Serv/SSL", 2));
    EXPECT_TRUE(fault("XMPP/AuthType", 4));
    for (const char* view : {"OKU/ContactList", "OKU/ReachableOnly"}) EXPECT_TRUE(fault(view, 2)) << view;
    for (const char* port : {"0", "65536", "x", "-1"}) EXPECT_TRUE(fault("XMPP/Proxy/Port", QString(port))) << port;
    for (const char* port : {"1", "65535", ""}) EXPECT_FALSE(fault("XMPP/Proxy/Port", QString(port))) << port;
    for (const char* server : {"host:", "host:0", "host:x", "[::1]:65536"})
        EXPECT_TRUE(fault("XMPP/Serv/Host", QString(server))) << server;
    for (const char* server : {"host", "host:5222", "[::1]:5222", "[::1]", "fe80::1:2", ""})
        EXPECT_FALSE(fault("XMPP/Serv/Host", QString(server))) << server;
    EXPECT_TRUE(fault("XMPP/User", QStringLiteral("nobody")));
    EXPECT_FALSE(fault("XMPP/Unknown", QStringLiteral("anything")));
    EXPECT_FALSE(messenger->accounts().addAccount(kAlice, {}, {{QStringLiteral("XMPP/Priority"), 500}}).isEmpty());
    EXPECT_FALSE(messenger->accounts()
                     .addAccount(QStringLiteral("b@example.org"), {}, {{QStringLiteral("XMPP/Priority"), 500}})
                     .isEmpty());
    EXPECT_EQ(messenger->accounts().accounts().size(), 1) << "nothing of it was done";
}

TEST_F(Facade, ReplacesNoExportWithWhatItCannotRead) {
    ASSERT_EQ(messenger->start(), QString());
    messenger->accounts().addAccount(kAlice, QStringLiteral("a"));
    ASSERT_TRUE(QDir().mkpath(messenger->profileDir() + QStringLiteral("history.sqlite")));  // cannot be opened
    const QString path = messenger->profileDir() + QStringLiteral("export.txt");
    QFile exported(path);
    ASSERT_TRUE(exported.open(QIODevice::WriteOnly));
    exported.write("kept");
    exported.close();
    EXPECT_FALSE(messenger->talk().exportHistory(kAlice, {}, path, true).isEmpty());
    ASSERT_TRUE(exported.open(QIODevice::ReadOnly));
    EXPECT_EQ(exported.readAll(), "kept");
}

TEST_F(Facade, TakesBackAMessageThatWaits) {
    ASSERT_EQ(messenger->start(), QString());
    messenger->accounts().addAccount(kAlice, QStringLiteral("a"));
    QStringList told;
    QObject::connect(&messenger->talk(), &TalkFace::messageStateChanged, messenger.get(),
                     [&](const QString&, const Message& message) {
                         told.append(message.body + u' ' + deliveryStateWord(message.state));
                     });
    qint64 number = 0;
    const QString bob = QStringLiteral("bob@example.org");
    EXPECT_EQ(messenger->talk().sendMessage(kAlice, bob, QStringLiteral("oops"), MessageKind::chat, {}, &number),
              QString());
    EXPECT_EQ(messenger->talk().cancelMessage(number), QString());
    EXPECT_EQ(told, QStringList(QStringLiteral("oops cancelled")));
    EXPECT_TRUE(messenger->talk().history(kAlice, bob).isEmpty());
    EXPECT_NE(messenger->talk().cancelMessage(number), QString()) << "once is enough";
    EXPECT_NE(messenger->talk().cancelMessage(4711), QString());
    messenger.reset();
    QFile file(directory.filePath(QStringLiteral("history.sqlite")));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_FALSE(file.readAll().contains("oops")) << "nothing of it is left";
}

TEST_F(Facade, RemovesAnAccountWithItsFiles) {
    ASSERT_EQ(messenger->start(), QString());
    const QString bob = QStringLiteral("bob@example.org");
    QStringList removed;
    QObject::connect(&messenger->accounts(), &AccountsFace::accountRemoved, messenger.get(),
                     [&](const QString& jid) { removed.append(jid); });
    for (const bool withHistory : {false, true}) {
        messenger->accounts().addAccount(kAlice, QStringLiteral("a"));
        messenger->accounts().addAccount(bob, QStringLiteral("b"));
        ASSERT_EQ(messenger->accounts().accounts().size(), 2);
        const QString path = messenger->accounts().account(bob)->settingsPath;
        const QString base = path.chopped(static_cast<int>(std::strlen(".config")));
        const char* damaged = ".damaged-20261122-101112-345";
        for (const QString& ending :
             {QStringLiteral(".contacts"), QStringLiteral(".roster"), QStringLiteral(".config") + damaged,
              QStringLiteral(".config") + damaged + QStringLiteral("-2"), QStringLiteral(".contacts") + damaged,
              QStringLiteral("-2.config") + damaged, QStringLiteral(".config.damaged-mine")}) {
            QFile file(base + ending);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        }
        EXPECT_EQ(messenger->talk().sendMessage(bob, kAlice, QStringLiteral("x")), QString());
        EXPECT_EQ(messenger->accounts().removeAccount(bob, withHistory), QString());
        ASSERT_EQ(messenger->accounts().accounts().size(), 1);
        EXPECT_EQ(messenger->accounts().accounts()[0].jid, kAlice);
        for (const char* ending : {".config", ".contacts", ".roster"})
            EXPECT_FALSE(QFile::exists(base + QLatin1String(ending))) << ending;
        QStringList others = QDir(directory.path()).entryList({QFileInfo(base).fileName() + u'*'});
        EXPECT_EQ(others, (QStringList{QFileInfo(base).fileName() + QStringLiteral("-2.config") + damaged,
                                       QFileInfo(base).fileName() + QStringLiteral(".config.damaged-mine")}))
            << "an account with a similar name, and a copy that the user made";
        for (const QString& other : others) EXPECT_TRUE(QFile::remove(directory.filePath(other)));
        const auto kept = messenger->talk().history(bob, {});
        ASSERT_EQ(kept.size(), withHistory ? 0 : 1);
        if (!withHistory) {
            EXPECT_EQ(kept[0].state, DeliveryState::failed) << "it goes out at no later login";
        }
        EXPECT_NE(messenger->accounts().removeAccount(bob), QString()) << "it is gone";
    }
    EXPECT_EQ(removed, (QStringList{bob, bob}));
    EXPECT_EQ(messenger->accounts().removeAccount(kAlice), QString()) << "the first one as well";
    EXPECT_TRUE(messenger->accounts().accounts().isEmpty());
    messenger->accounts().addAccount(bob, QStringLiteral("new"));
    EXPECT_EQ(setting(bob, "XMPP/Pass").toString(), QStringLiteral("new"));
}

TEST_F(Facade, LoadsThePluginAnewForAFurtherAccount) {
    ASSERT_EQ(messenger->start(), QString());
    messenger->accounts().addAccount(kAlice, QStringLiteral("a"));
    EXPECT_EQ(messenger->accounts().addAccount(QStringLiteral("bob_x@example.org"), QStringLiteral("b")), QString());
    ASSERT_EQ(messenger->accounts().accounts().size(), 2);
    EXPECT_EQ(messenger->accounts().accounts()[0].jid, kAlice) << "the first one stays the first";
    EXPECT_EQ(messenger->accounts().accounts()[1].settingsPath,
              messenger->profileDir() + QStringLiteral("tiny_bob-x@example.org.config"));
    EXPECT_EQ(setting(QStringLiteral("bob_x@example.org"), "XMPP/Pass").toString(), QStringLiteral("b"));
    EXPECT_EQ(changed, (QStringList{kAlice, QStringLiteral("bob_x@example.org")}));
}

TEST_F(Facade, CarriesOutWhatWaitedBehindTheNewLoad) {
    ASSERT_EQ(messenger->start(), QString());
    messenger->accounts().addAccount(kAlice, QStringLiteral("a"));
    const QString bob = QStringLiteral("bob@example.org");
    QObject::connect(&messenger->accounts(), &AccountsFace::accountChanged, messenger.get(), [&](const QString& jid) {
        if (jid == bob) {
            EXPECT_EQ(messenger->accounts().setStatus(kAlice, Status::away, QStringLiteral("x")), QString());
        }
    });
    messenger->accounts().addAccount(bob, QStringLiteral("b"));
    void* library = dlopen(TINY_MODULE, RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(library, nullptr);
    const auto& state = *reinterpret_cast<tiny::StateExport>(dlsym(library, "tinyState"))();
    dlclose(library);
    EXPECT_EQ(state.loads, 2);
    EXPECT_EQ(state.log, (std::vector<std::string>{"unload", "status 4 x"}));
}

TEST_F(Facade, TellsWhyACommandCannotBeCarriedOut) {
    EXPECT_FALSE(messenger->accounts().addAccount(kAlice, QStringLiteral("a")).isEmpty()) << "nothing is loaded yet";
    ASSERT_EQ(messenger->start(), QString());
    for (const char* jid : {"", "alice", "@example.org", "alice@", "a b@example.org", "a@b@c", "a\"@example.org"}) {
        EXPECT_FALSE(messenger->accounts().addAccount(QString::fromLatin1(jid), QStringLiteral("a")).isEmpty()) << jid;
    }
    const QString nobody = QStringLiteral("nobody@example.org");
    EXPECT_EQ(messenger->accounts().setStatus(nobody, Status::online),
              QStringLiteral("Nie ma takiego konta: nobody@example.org"));
    EXPECT_FALSE(messenger->talk().sendMessage(nobody, kAlice, QStringLiteral("x")).isEmpty());
    EXPECT_FALSE(messenger->windows().answerBox(1, BoxButton::ok).isEmpty());
    EXPECT_FALSE(messenger->talk().resendMessage(17).isEmpty());
    EXPECT_FALSE(messenger->windows().activateMenu(QStringLiteral("none")).isEmpty());
    messenger->accounts().addAccount(kAlice, QStringLiteral("a"));
    EXPECT_FALSE(messenger->talk().sendMessage(kAlice, nobody, QString()).isEmpty());
    EXPECT_FALSE(messenger->roster().addContact(kAlice, nobody).isEmpty()) << "not connected";
    EXPECT_FALSE(messenger->wire().sendRaw(kAlice, QStringLiteral("<a/>")).isEmpty());
    EXPECT_FALSE(messenger->windows().confirmStatusWindow(kAlice, Status::online, {}, false).isEmpty());
}

TEST_F(Facade, TakesNoMessageThatCouldNotArriveAsItIs) {
    ASSERT_EQ(messenger->start(), QString());
    messenger->accounts().addAccount(kAlice, QStringLiteral("a"));
    const QString bob = QStringLiteral("bob@example.org");
    const QString unsendable = QStringLiteral("Wiadomość zawiera znaki, których nie można wysłać.");
    for (const QString& part : {QString(QChar(0)), QString(QChar(1)), QString(QChar(0x1b)), QString(QChar(0xd83d)),
                                QString(QChar(0xdc00)), QString(QChar(0xfffe)), QString(QChar(0xffff))}) {
        const QString body = QStringLiteral("a") + part + QStringLiteral("b");
        EXPECT_EQ(messenger->talk().sendMessage(kAlice, bob, body), unsendable)
            << static_cast<int>(part.at(0).unicode());
        EXPECT_EQ(messenger->talk().sendMessage(kAlice, bob, QStringLiteral("x"), MessageKind::normal, body),
                  unsendable);
    }
    for (const char* nobody : {"nie adres", "@", "bob@", "@example.org", "/dom", "a@b@c", "bob@exa mple.org"}) {
        EXPECT_EQ(messenger->talk().sendMessage(kAlice, QString::fromLatin1(nobody), QStringLiteral("x")),
                  QStringLiteral("To nie jest adres: %1").arg(QLatin1String(nobody)));
    }
    EXPECT_EQ(messenger->talk().sendMessage(kAlice, {}, QStringLiteral("x")), QStringLiteral("Nie podano adresu."));
    EXPECT_EQ(messenger->talk().sendMessage(kAlice, bob, {}), QStringLiteral("Wiadomość jest pusta."));
    EXPECT_TRUE(messenger->talk().history(kAlice, {}).isEmpty());

    const QString lively = QStringLiteral("🦆\tżółw\r\n\x7f");
    EXPECT_EQ(messenger->talk().sendMessage(kAlice, bob, lively), QString());
    EXPECT_EQ(messenger->talk().sendMessage(kAlice, QStringLiteral("icq.example.org"), QStringLiteral("x")), QString());
    EXPECT_EQ(messenger->talk().history(kAlice, bob).value(0).body, lively);
}

TEST_F(Facade, AddsCertificatesToThoseAcceptedEarlier) {
    ASSERT_EQ(messenger->start(), QString());
    messenger->accounts().addAccount(kAlice, QStringLiteral("a"));
    const auto pins = [&] { return setting(kAlice, "OKU/PinnedCertificate").toString(); };
    const QString first = QStringLiteral("5A:").repeated(32).chopped(1);
    const QString second = QStringLiteral("17:").repeated(32).chopped(1);
    EXPECT_EQ(messenger->accounts().pinCertificate(kAlice, first), QString());
    EXPECT_EQ(pins(), first);
    EXPECT_EQ(messenger->accounts().pinCertificate(kAlice, QStringLiteral("17").repeated(32)), QString());
    EXPECT_EQ(pins(), first + u' ' + second);
    EXPECT_EQ(messenger->accounts().pinCertificate(kAlice, first.toLower()), QString()) << "it is there already";
    EXPECT_EQ(pins(), first + u' ' + second);
    for (const QString& wrong : {QStringLiteral("tak"), first.chopped(3), first + QStringLiteral(":00"),
                                 QString(first).replace(u'A', u'G'), first + u' ' + second, first + u'\n'}) {
        EXPECT_EQ(messenger->accounts().pinCertificate(kAlice, wrong),
                  QStringLiteral("To nie jest odcisk SHA-256: ") + wrong);
    }
    EXPECT_EQ(pins(), first + u' ' + second);
    EXPECT_EQ(messenger->accounts().pinCertificate(kAlice, {}), QString());
    EXPECT_EQ(pins(), QString());
}

TEST_F(Facade, KeepsHistoryThatCanBeSearchedAndExported) {
    ASSERT_EQ(messenger->start(), QString());
    messenger->accounts().addAccount(kAlice, QStringLiteral("a"));
    const QString bob = QStringLiteral("bob@example.org");
    qint64 number = 0;
    for (const char* body :
         {"Pierwsza wiadomość", "druga \"z cudzysłowem\" (i)", "trzecia\nw dwóch wierszach", "ostatnia"}) {
        EXPECT_EQ(messenger->talk().sendMessage(kAlice, bob, QString::fromUtf8(body), MessageKind::chat, {}, &number),
                  QString());
    }
    messenger->talk().sendMessage(kAlice, QStringLiteral("eve@example.org"), QStringLiteral("inna wiadomosc"));
    const auto bodies = [&](const QString& with, int limit, const char* search) {
        QStringList list;
        for (const Message& message : messenger->talk().history(kAlice, with, limit, QString::fromUtf8(search)))
            list.append(message.body);
        return list;
    };
    EXPECT_EQ(number, 4);
    EXPECT_EQ(bodies(bob, 2, ""),
              (QStringList{QStringLiteral("trzecia\nw dwóch wierszach"), QStringLiteral("ostatnia")}));
    EXPECT_EQ(bodies(bob, 20, "WIADOMOSC").size(), 1);
    EXPECT_EQ(bodies({}, 20, "wiadomość").size(), 2);
    EXPECT_EQ(bodies(bob, 20, "ierszach trze").size(), 1) << "parts of words, in any order";
    EXPECT_EQ(bodies(bob, 20, "\"z (i)").size(), 1) << "signs as well";
    EXPECT_EQ(bodies(bob, 1, "a"), QStringList(QStringLiteral("ostatnia"))) << "the newest that fit";
    for (const char* hostile : {"\"", "(i)", "AND OR NOT", "a* ^b", "x'; DROP TABLE messages; --", "NEAR("})
        bodies(bob, 5, hostile);
    EXPECT_EQ(bodies(bob, 20, "").size(), 4);

    const QString json = directory.filePath(QStringLiteral("out.json"));
    EXPECT_EQ(messenger->talk().exportHistory(kAlice, bob, json), QString());
    QFile file(json);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QJsonArray list = QJsonDocument::fromJson(file.readAll()).array();
    ASSERT_EQ(list.size(), 4);
    EXPECT_EQ(list[0][QStringLiteral("direction")].toString(), QStringLiteral("out"));
    EXPECT_EQ(list[0][QStringLiteral("state")].toString(), QStringLiteral("queued"));
    const QString text = directory.filePath(QStringLiteral("out.txt"));
    EXPECT_EQ(messenger->talk().exportHistory(kAlice, {}, text), QString());
    QFile plain(text);
    ASSERT_TRUE(plain.open(QIODevice::ReadOnly));
    EXPECT_TRUE(plain.readAll().contains("    w dwóch wierszach\n"));
    EXPECT_FALSE(messenger->talk().exportHistory(kAlice, bob, QStringLiteral("/nowhere/x")).isEmpty());
}

TEST_F(Facade, ExportsForItsOwnerOnly) {
    ASSERT_EQ(messenger->start(), QString());
    messenger->accounts().addAccount(kAlice, QStringLiteral("a"));
    const QString path = directory.filePath(QStringLiteral("out.txt"));
    const auto permissions = [&] { return QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther); };
    EXPECT_EQ(messenger->talk().exportHistory(kAlice, {}, path), QString());
    EXPECT_FALSE(permissions());
    ASSERT_TRUE(QFile::setPermissions(path, QFile::permissions(path) | QFile::ReadGroup | QFile::ReadOther));
    EXPECT_EQ(messenger->talk().exportHistory(kAlice, {}, path, true), QString());
    EXPECT_FALSE(permissions()) << "also in place of another file";
}

TEST_F(Facade, ExportsOverNoFileUnlessItIsToldToAndThroughNoLink) {
    ASSERT_EQ(messenger->start(), QString());
    messenger->accounts().addAccount(kAlice, QStringLiteral("a"));
    const QString path = directory.filePath(QStringLiteral("out.txt"));
    const QString link = directory.filePath(QStringLiteral("link.txt"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("precious");
    file.close();
    ASSERT_TRUE(QFile::link(path, link));
    const auto exportTo = [&](const QString& to, bool replace) {
        return messenger->talk().exportHistory(kAlice, {}, to, replace);
    };
    EXPECT_TRUE(exportTo(path, false).contains(fileExistsReason()));
    EXPECT_NE(exportTo(link, false), QString());
    EXPECT_NE(exportTo(link, true), QString());
    const auto steps = fileSteps();
    fileSteps().sync = [](int) {
        errno = ENOSPC;
        return -1;
    };
    EXPECT_TRUE(exportTo(path, true).contains(systemReason(ENOSPC)));
    fileSteps() = steps;
    EXPECT_EQ(QFileInfo(path).size(), 8) << "on a full disk as well";
    EXPECT_EQ(exportTo(path, true), QString());
    EXPECT_EQ(QFileInfo(path).size(), 0) << "there is no history";
}

TEST_F(Facade, TellsOfASettingThatIsNotWritten) {
    ASSERT_EQ(messenger->start(), QString());
    ASSERT_EQ(messenger->accounts().addAccount(kAlice, QStringLiteral("a")), QString());
    const auto steps = fileSteps();
    fileSteps().sync = [](int) {
        errno = ENOSPC;
        return -1;
    };
    const QString priority = QStringLiteral("XMPP/Priority");
    EXPECT_NE(messenger->accounts().setSetting(kAlice, priority, 7), QString());
    EXPECT_EQ(messenger->accounts().settingValue(kAlice, priority), QVariant(7LL)) << "it counts all the same";
    EXPECT_NE(messenger->accounts().pinCertificate(kAlice, QStringLiteral("5A").repeated(32)), QString());
    EXPECT_NE(messenger->accounts().addAccount(kAlice, QStringLiteral("b")), QString());
    fileSteps() = steps;
    EXPECT_EQ(messenger->accounts().setSetting(kAlice, priority, 7), QString()) << "written now";
}

TEST_F(Facade, RemovesWhatAKillLeftWhileFilesWereReplaced) {
    const QStringList left = {QStringLiteral(".oku-a1B2c3"), QStringLiteral(".protolink-Zz9900")};
    const QString other = QStringLiteral(".oku-settings");
    for (const QString& name : left + QStringList(other))
        ASSERT_TRUE(QFile(directory.filePath(name)).open(QIODevice::WriteOnly));
    ASSERT_EQ(messenger->start(), QString());
    for (const QString& name : left) EXPECT_FALSE(QFile::exists(directory.filePath(name))) << name.toStdString();
    EXPECT_TRUE(QFile::exists(directory.filePath(other)));
}

TEST_F(Facade, TakesNoProfileThatOthersCouldWrite) {
    const QString profile = directory.filePath(QStringLiteral("p"));
    ASSERT_TRUE(QDir().mkpath(profile));
    ASSERT_TRUE(QFile::setPermissions(profile, QFile::permissions(profile) | QFile::WriteGroup));
    MessengerOptions given;
    given.profileDir = profile;
    given.modulePath = QStringLiteral(TINY_MODULE);
    Messenger other(given);
    EXPECT_TRUE(other.start().contains(QStringLiteral("chmod go-w"))) << "says what helps";
}

TEST_F(Facade, TellsOfAHistoryThatCannotBeOpenedAndSendsNothingUnwritten) {
    ASSERT_TRUE(QDir(directory.path()).mkdir(QStringLiteral("history.sqlite")));  // no file, not even for root
    QStringList notices;
    QObject::connect(&messenger->windows(), &WindowsFace::noticed, messenger.get(),
                     [&](const QString&, const QString& text) { notices.append(text); });
    ASSERT_EQ(messenger->start(), QString());
    messenger->accounts().addAccount(kAlice, QStringLiteral("a"));
    EXPECT_FALSE(
        messenger->talk().sendMessage(kAlice, QStringLiteral("bob@example.org"), QStringLiteral("x")).isEmpty());
    EXPECT_FALSE(
        messenger->talk().sendMessage(kAlice, QStringLiteral("bob@example.org"), QStringLiteral("y")).isEmpty());
    EXPECT_EQ(notices.size(), 1) << "once is enough";
    EXPECT_TRUE(messenger->talk().history(kAlice, {}).isEmpty());
}

TEST_F(Facade, TellsThatItHasFinished) {
    ASSERT_EQ(messenger->start(), QString());
    int finished = 0;
    QObject::connect(messenger.get(), &Messenger::finished, messenger.get(), [&] { ++finished; });
    messenger->shutdown();
    messenger->shutdown();
    EXPECT_TRUE(waitFor([&] { return finished > 0; }));
    pass(20);
    EXPECT_EQ(finished, 1);
    EXPECT_FALSE(messenger->running());
    EXPECT_FALSE(messenger->accounts().addAccount(kAlice, QStringLiteral("a")).isEmpty());
}

TEST(AccountPath, IsOnePlainFileName) {
    const QTemporaryDir directory;
    const QString profile = directory.path() + u'/';
    const QString path =
        newAccountPath(profile, QStringLiteral("protoLink"), QStringLiteral("../e_v/il@ex\\ample.org"));
    EXPECT_EQ(QFileInfo(path).dir().path(), directory.path());
    EXPECT_EQ(newAccountPath(profile, QStringLiteral("p"), QStringLiteral("ą@b.pl")),
              profile + QStringLiteral("p_ą@b.pl.config"));
    QFile taken(profile + QStringLiteral("p_a@b.config"));
    ASSERT_TRUE(taken.open(QIODevice::WriteOnly));
    EXPECT_EQ(newAccountPath(profile, QStringLiteral("p"), QStringLiteral("a@b")),
              profile + QStringLiteral("p_a@b-2.config"));
    // Letters of three bytes each; behind the name there has to be room for what a damaged file is called.
    const QString longJid = QString(90, QChar(0x6f22)) + QStringLiteral("@example.org");
    const QString longPath = newAccountPath(profile, QStringLiteral("protoLink"), longJid);
    for (const char* ending : {".damaged-20261122-101112-345-2", ""}) {
        QFile file(longPath + QLatin1String(ending));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << file.errorString().toStdString();
    }
    EXPECT_TRUE(QFileInfo(longPath).fileName().startsWith(QStringLiteral("protoLink_") + QString(33, QChar(0x6f22))));
    EXPECT_NE(newAccountPath(profile, QStringLiteral("protoLink"), longJid + u'x'), longPath) << "that name is taken";
}

}  // namespace
}  // namespace oku::test
