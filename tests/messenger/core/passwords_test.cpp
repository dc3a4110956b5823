// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <QCoreApplication>
#include <QElapsedTimer>

#include "host/oku/settings.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/messenger.h"
#include "messenger/core/passwords/key_ring.h"
#include "tests/messenger/core/stage.h"

namespace oku::test {
namespace {

const QString kAlice = QStringLiteral("alice@example.org");
const QString kSecret = QStringLiteral("hasło-żółwia");

/// A key ring in memory, which may be slow, or refuse.
class FakeRing : public KeyRing {
public:
    void read(const QString& account, std::function<void(const QString&, const QString&)> done) override {
        when([this, account, done] {
            const bool there = kept.contains(account) && refusal.isEmpty();
            done(there ? kept.value(account) : QString(), there ? QString() : QStringLiteral("locked"));
        });
    }
    void write(const QString& account, const QString& password, std::function<void(const QString&)> done) override {
        when([this, account, password, done] {
            if (refusal.isEmpty()) kept.insert(account, password);
            done(refusal);
        });
    }
    void remove(const QString& account, std::function<void(const QString&)> done) override {
        when([this, account, done] {
            if (refusal.isEmpty()) kept.remove(account);
            done(refusal);
        });
    }
    void answer() {
        slow = false;
        for (const auto& request : std::exchange(waiting, {})) request();
    }

    QMap<QString, QString> kept;
    QString refusal;
    bool slow = false;
    std::vector<std::function<void()>> waiting;

private:
    void when(const std::function<void()>& request) {
        if (slow) {
            waiting.push_back(request);
        } else {
            request();
        }
    }
};

class KeptPasswords : public Stage {
protected:
    void TearDown() override {
        messenger.reset();
        Stage::TearDown();
    }

    void begin(const std::shared_ptr<KeyRing>& keyRing) {
        messenger.reset();
        auto given = options();
        given.keyRing = keyRing;
        messenger = std::make_unique<Messenger>(given);
        QObject::connect(&messenger->windows(), &WindowsFace::noticed, messenger.get(),
                         [this](const QString&, const QString& text) { notices.append(text); });
        QObject::connect(&messenger->windows(), &WindowsFace::boxOpened, messenger.get(),
                         [this](const MessageBox& box) { questions.append(box.text); });
        ASSERT_EQ(messenger->start(), QString());
        findPlugin();
    }
    void add(const QVariantMap& settings = {}) {
        ASSERT_EQ(messenger->accounts().addAccount(kAlice, kSecret, settings), QString());
    }
    /// What the plugin would get for the login.
    QString password(const QString& jid = kAlice) const {
        return messenger->accounts().settingValue(jid, QStringLiteral("XMPP/Pass")).toString();
    }
    QByteArray file() const {
        QFile kept(directory.filePath(QStringLiteral("tiny.config")));
        EXPECT_TRUE(kept.open(QIODevice::ReadOnly));
        return kept.readAll();
    }
    bool inFile() const { return file().contains(kSecret.toUtf8()); }

    std::shared_ptr<FakeRing> ring = std::make_shared<FakeRing>();
    std::unique_ptr<Messenger> messenger;
    QStringList questions;
};

TEST_F(KeptPasswords, LieInTheKeyRingWhereThereIsOne) {
    begin(ring);
    add();
    EXPECT_EQ(ring->kept.value(kAlice), kSecret);
    EXPECT_EQ(password(), kSecret);
    messenger->accounts().setSetting(kAlice, QStringLiteral("XMPP/Priority"), 5);
    begin(ring);
    EXPECT_FALSE(inFile());
    EXPECT_TRUE(file().contains("XMPP/Priority"));
    EXPECT_EQ(password(), kSecret) << "at the next start";
    EXPECT_TRUE(questions.isEmpty() && notices.isEmpty());
}

TEST_F(KeptPasswords, ForAProxyLieInTheKeyRingToo) {
    const QString key = QStringLiteral("XMPP/Proxy/Pass");
    begin(ring);
    add();
    messenger->accounts().setSetting(kAlice, key, QStringLiteral("hasło-bramy"));
    EXPECT_EQ(ring->kept.value(kAlice), kSecret);
    EXPECT_EQ(ring->kept.value(kAlice + QStringLiteral("#proxy")), QStringLiteral("hasło-bramy"));
    begin(ring);
    EXPECT_FALSE(file().contains("bramy"));
    EXPECT_EQ(messenger->accounts().settingValue(kAlice, key).toString(), QStringLiteral("hasło-bramy"))
        << "at the next start";
    EXPECT_EQ(password(), kSecret);
}

TEST_F(KeptPasswords, GoFromTheKeyRingWithTheirAccount) {
    begin(ring);
    add();
    messenger->accounts().setSetting(kAlice, QStringLiteral("XMPP/Proxy/Pass"), QStringLiteral("hasło-bramy"));
    EXPECT_EQ(ring->kept.size(), 2);
    EXPECT_EQ(messenger->accounts().removeAccount(kAlice), QString());
    EXPECT_TRUE(ring->kept.isEmpty());
    EXPECT_TRUE(notices.isEmpty());
    add();
    EXPECT_EQ(ring->kept.value(kAlice), kSecret) << "the same password is kept anew";
    ring->refusal = QStringLiteral("locked");
    EXPECT_EQ(messenger->accounts().removeAccount(kAlice), QString());
    EXPECT_EQ(notices.size(), 1) << "it is still there";
}

TEST_F(KeptPasswords, ForAProxyNeedTheSameConsentInAFile) {
    const QString key = QStringLiteral("XMPP/Proxy/Pass");
    begin(nullptr);
    add();
    messenger->accounts().setSetting(kAlice, key, QStringLiteral("hasło-bramy"));
    pass(600);
    EXPECT_EQ(questions.size(), 1) << "one question for both";
    EXPECT_FALSE(file().contains("bramy"));
    messenger->windows().answerBox(messenger->windows().openBoxes()[0].number, BoxButton::yes);
    EXPECT_TRUE(file().contains("bramy"));
    EXPECT_TRUE(inFile());
    begin(nullptr);
    EXPECT_EQ(messenger->accounts().settingValue(kAlice, key).toString(), QStringLiteral("hasło-bramy"));
}

TEST_F(KeptPasswords, LieInTheFileOnceTheUserHasAgreed) {
    begin(nullptr);
    add();
    ASSERT_EQ(questions.size(), 1);
    EXPECT_TRUE(questions[0].contains(kAlice));
    EXPECT_FALSE(questions[0].contains(kSecret));
    pass(600);
    EXPECT_FALSE(inFile()) << "while nobody has answered";
    EXPECT_EQ(password(), kSecret) << "a login need not wait for the answer";
    EXPECT_EQ(messenger->windows().answerBox(messenger->windows().openBoxes()[0].number, BoxButton::yes), QString());
    EXPECT_TRUE(inFile());
    EXPECT_FALSE(QFile::permissions(directory.filePath(QStringLiteral("tiny.config"))) &
                 (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther));
    begin(nullptr);
    EXPECT_EQ(password(), kSecret);
}

TEST_F(KeptPasswords, AreForgottenAtTheEndWhereTheUserRefused) {
    begin(nullptr);
    add();
    messenger->windows().answerBox(messenger->windows().openBoxes()[0].number, BoxButton::no);
    EXPECT_EQ(password(), kSecret);
    begin(nullptr);
    EXPECT_FALSE(inFile());
    EXPECT_EQ(password(), QString());
    add();
    EXPECT_EQ(questions.size(), 1) << "the answer is remembered";
    EXPECT_EQ(password(), kSecret);
}

TEST_F(KeptPasswords, AreAskedAboutAgainWhenTheProgramEndedBeforeTheAnswer) {
    begin(nullptr);
    add();
    messenger->shutdown();
    EXPECT_TRUE(waitFor([&] { return !messenger->running(); }));
    begin(nullptr);
    EXPECT_FALSE(inFile());
    add();
    EXPECT_EQ(questions.size(), 2);
}

TEST_F(KeptPasswords, NeedNoQuestionWhereTheSettingsSayWhere) {
    begin(nullptr);
    add({{QStringLiteral("OKU/PasswordInFile"), 1}});
    EXPECT_TRUE(inFile());
    EXPECT_TRUE(questions.isEmpty());
}

TEST_F(KeptPasswords, AreAskedAboutWhenTheKeyRingRefuses) {
    ring->refusal = QStringLiteral("no session");
    begin(ring);
    add();
    EXPECT_EQ(questions.size(), 1);
    EXPECT_FALSE(inFile());
    messenger->windows().answerBox(messenger->windows().openBoxes()[0].number, BoxButton::yes);
    EXPECT_TRUE(inFile());
    ring->refusal.clear();
    messenger->accounts().setSetting(kAlice, QStringLiteral("XMPP/Pass"), QStringLiteral("nowe"));
    EXPECT_EQ(ring->kept.value(kAlice), QStringLiteral("nowe"));
    messenger.reset();
    EXPECT_FALSE(file().contains("nowe") || inFile()) << "it has moved to the key ring";
}

TEST_F(KeptPasswords, AreWaitedForBeforeALogin) {
    begin(ring);
    add();
    ring->slow = true;
    begin(ring);
    messenger->accounts().setStatus(kAlice, Status::away);
    EXPECT_TRUE(plugin().log.empty());
    ring->answer();
    EXPECT_EQ(plugin().log, std::vector<std::string>{"status 4 "});
    EXPECT_EQ(password(), kSecret);
}

TEST_F(KeptPasswords, AreToldToBeMissingWhenTheKeyRingDoesNotGiveThem) {
    begin(ring);
    add();
    ring->refusal = QStringLiteral("locked");
    begin(ring);
    ASSERT_EQ(notices.size(), 1);
    EXPECT_TRUE(notices[0].contains(QStringLiteral("locked")));
    messenger->accounts().setStatus(kAlice, Status::away);
    EXPECT_EQ(plugin().log.size(), 1U) << "the plugin tells what it thinks of that";
}

TEST_F(KeptPasswords, GivenWhileTheKeyRingThinksCountMore) {
    begin(ring);
    add();
    ring->slow = true;
    begin(ring);
    messenger->accounts().setSetting(kAlice, QStringLiteral("XMPP/Pass"), QStringLiteral("nowe"));
    ring->answer();
    EXPECT_EQ(password(), QStringLiteral("nowe"));
    EXPECT_EQ(ring->kept.value(kAlice), QStringLiteral("nowe"));
}

TEST_F(KeptPasswords, OutlastANewLoadOfThePlugin) {
    const QString bob = QStringLiteral("bob@example.org");
    for (const auto& keyRing : {std::shared_ptr<KeyRing>(), std::shared_ptr<KeyRing>(ring)}) {
        begin(keyRing);
        add();
        EXPECT_EQ(messenger->accounts().addAccount(bob, QStringLiteral("sekret")), QString());
        EXPECT_EQ(password(), kSecret);
        EXPECT_EQ(password(bob), QStringLiteral("sekret"));
        EXPECT_FALSE(inFile());
    }
}

TEST_F(KeptPasswords, ThatThePluginSetsAreKeptTheSameWay) {
    begin(ring);
    add();
    auto record = makeRecord<OKU_SETTINGS_RECORD>();
    const QString changed = QStringLiteral("zmienione");
    record.key = u"XMPP/Pass";
    record.type = OKU_SETTING_STRING;
    record.store = account().store;
    record.value = wordOf(widePointer(changed));
    record.length = 100;
    call(u"OKU/Settings/Set", wordOf(&record));
    call(u"OKU/Settings/Write", account().store);
    EXPECT_FALSE(file().contains(changed.toUtf8()));
    EXPECT_EQ(ring->kept.value(kAlice), changed);
}

TEST_F(KeptPasswords, AreWaitedForAtTheEnd) {
    begin(ring);
    ring->slow = true;
    add();
    QElapsedTimer since;
    since.start();
    messenger->shutdown();
    pass(100);
    EXPECT_TRUE(messenger->running() || since.elapsed() > 2800) << "three seconds are what it waits at most";
    ring->answer();
    EXPECT_TRUE(waitFor([&] { return !messenger->running(); }));
    EXPECT_EQ(ring->kept.value(kAlice), kSecret);
    begin(ring);
    EXPECT_EQ(password(), kSecret);
}

}  // namespace
}  // namespace oku::test
