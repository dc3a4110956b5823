// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the player plays is published where the user switched that on, in proportion, and taken back.
#include "tests/messenger/core/stage.h"

#include "host/oku/pep.h"
#include "messenger/core/boundary/wide.h"
#include "messenger/core/news/players.h"
#include "messenger/core/values/setting_keys.h"

namespace oku::test {
namespace {

class ScriptedPlayers : public Players {
public:
    bool watch(bool on) override {
        watched = on;
        return there;
    }
    Tune playing() const override { return tune; }
    void play(const char* title) {
        tune = {};
        tune.title = QString::fromUtf8(title);
        emit changed();
    }

    bool watched = false;
    bool there = true;
    Tune tune;
};

class TuneCompanionTest : public Stage {
protected:
    TuneCompanionTest() {
        writeAccount({}, QStringLiteral("alice@example.org"));
        startAgain();
    }
    void startAgain() {
        rings.clear();
        MessengerOptions given = options();
        given.players = players;
        given.alarms = [this](int milliseconds, std::function<void()> ring) {
            EXPECT_EQ(milliseconds, 5000);
            rings.push_back(std::move(ring));
            return std::make_unique<QObject>();
        };
        start(given);
        serve();
    }

    /// Serves the account's "PFEPublishData".
    void serve() {
        const std::u16string name = entry().service(u"PFEPublishData");
        HostTable::table()->fnCreate(
            name.c_str(),
            [](OKU_WORD param, OKU_WORD extra, OKU_WORD context) -> OKU_WORD {
                auto& test = *reinterpret_cast<TuneCompanionTest*>(context);
                EXPECT_EQ(reinterpret_cast<const OKU_PEP_PUBLISH*>(param)->kind, std::uint32_t{OKU_PEP_TUNE});
                test.published.append(wideText(reinterpret_cast<const OKU_PEP_TUNE_DATA*>(extra)->title));
                test.plugin().log.emplace_back("tune");
                return test.answer;
            },
            wordOf(this));
    }
    void switchOn(bool on = true) {
        entry().settings->set(QString::fromUtf16(setting::publishTune), on ? 1 : 0);
        core->companion.reconsider();
    }
    void begin() {
        switchOn();
        logIn();
        pass(1);
    }
    void loseConnection() {
        inPlugin([&] { account().flags = 0; });
    }
    void letTimePass() {
        for (const auto& ring : std::exchange(rings, {})) ring();
    }
    QStringList heard() { return std::exchange(published, {}); }

    std::shared_ptr<ScriptedPlayers> players = std::make_shared<ScriptedPlayers>();
    std::vector<std::function<void()>> rings;
    QStringList published;
    OKU_WORD answer = 1;
};

TEST_F(TuneCompanionTest, NothingIsPublishedUnlessTheUserSwitchedItOn) {
    logIn();
    pass(1);
    players->play("Sen");
    EXPECT_FALSE(players->watched);
    EXPECT_TRUE(published.isEmpty());
    switchOn();
    EXPECT_TRUE(players->watched);
    EXPECT_EQ(heard(), QStringList(QStringLiteral("Sen")));
}

TEST_F(TuneCompanionTest, FollowsThePlayer) {
    begin();
    EXPECT_TRUE(heard().isEmpty()) << "nothing plays";
    players->play("Sen");
    EXPECT_EQ(heard(), QStringList(QStringLiteral("Sen")));
    letTimePass();
    EXPECT_TRUE(heard().isEmpty()) << "once is enough";
    players->play("");
    EXPECT_EQ(heard(), QStringList(QString()));
}

TEST_F(TuneCompanionTest, SkippingIsToldOnceInAWhile) {
    begin();
    players->play("Jeden");
    for (int at = 0; at < 100; ++at) players->play(at % 2 ? "Trzy" : "Dwa");
    EXPECT_EQ(heard(), QStringList(QStringLiteral("Jeden")));
    letTimePass();
    EXPECT_EQ(heard(), QStringList(QStringLiteral("Trzy")));
    players->play("Cztery");
    players->play("Trzy");
    letTimePass();
    EXPECT_TRUE(heard().isEmpty()) << "the same as before";
}

TEST_F(TuneCompanionTest, WhatPlaysIsToldAfterALogin) {
    switchOn();
    players->play("Sen");
    EXPECT_TRUE(heard().isEmpty()) << "nobody is logged in";
    logIn();
    ASSERT_TRUE(waitFor([this] { return !published.isEmpty(); }));
    EXPECT_EQ(heard(), QStringList(QStringLiteral("Sen")));
}

TEST_F(TuneCompanionTest, SwitchedOffItIsTakenBack) {
    begin();
    players->play("Sen");
    letTimePass();
    heard();
    switchOn(false);
    EXPECT_EQ(heard(), QStringList(QString()));
    EXPECT_FALSE(players->watched);
    players->play("Jawa");
    letTimePass();
    EXPECT_TRUE(heard().isEmpty());
}

TEST_F(TuneCompanionTest, TakenBackBeforeTheAccountLeaves) {
    begin();
    players->play("Sen");
    heard();
    plugin().log.clear();
    core->choices.set(entry(), Status::offline, {});
    EXPECT_EQ(heard(), QStringList(QString()));
    ASSERT_GE(plugin().log.size(), 2U);
    EXPECT_EQ(plugin().log[0], "tune") << "while there is a connection";
    core->choices.set(entry(), Status::offline, {});
    EXPECT_TRUE(heard().isEmpty()) << "once";
    players->tune = {};
    letTimePass();
    logIn();
    pass(1);
    EXPECT_TRUE(heard().isEmpty()) << "also after the next login";
}

// The server keeps it, and shows it to all contacts.
TEST_F(TuneCompanionTest, WhatALostConnectionLeftBehindIsTakenBackWithTheNextOne) {
    begin();
    players->play("Sen");
    letTimePass();
    heard();
    loseConnection();
    players->play("");
    core->choices.set(entry(), Status::offline, {});
    EXPECT_TRUE(heard().isEmpty()) << "there is no connection";
    logIn();
    ASSERT_TRUE(waitFor([this] { return !published.isEmpty(); }));
    EXPECT_EQ(heard(), QStringList(QString()));
    letTimePass();
    EXPECT_TRUE(heard().isEmpty()) << "once";
    players->play("Sen");
    letTimePass();
    heard();
    loseConnection();
    logIn();
    ASSERT_TRUE(waitFor([this] { return !published.isEmpty(); }));
    EXPECT_EQ(heard(), QStringList(QStringLiteral("Sen"))) << "it may have gone with the connection";
}

TEST_F(TuneCompanionTest, WhatAKilledRunLeftBehindIsTakenBackAtTheNextLogin) {
    begin();
    players->play("Sen");
    EXPECT_EQ(heard(), QStringList(QStringLiteral("Sen")));
    // As it lies on the disk at this moment.
    const QString path = entry().settings->path();
    ASSERT_TRUE(QFile::copy(path, path + QStringLiteral(".kept")));
    core.reset();
    ASSERT_TRUE(QFile::remove(path));
    ASSERT_TRUE(QFile::rename(path + QStringLiteral(".kept"), path));
    heard();
    players->tune = {};
    startAgain();
    switchOn(false);
    logIn();
    ASSERT_TRUE(waitFor([this] { return !published.isEmpty(); }));
    EXPECT_EQ(heard(), QStringList(QString()));
    letTimePass();
    core.reset();
    heard();
    startAgain();
    logIn();
    pass(1);
    letTimePass();
    EXPECT_TRUE(heard().isEmpty()) << "once";
}

TEST_F(TuneCompanionTest, ARunThatEndedWellLeavesNothingBehind) {
    begin();
    players->play("Sen");
    core->choices.set(entry(), Status::offline, {});
    EXPECT_EQ(heard(), (QStringList{QStringLiteral("Sen"), QString()}));
    core.reset();
    players->tune = {};
    startAgain();
    logIn();
    pass(1);
    EXPECT_TRUE(heard().isEmpty());
}

TEST_F(TuneCompanionTest, AnAccountThatPublishedNothingLeavesWithoutAWord) {
    begin();
    core->choices.set(entry(), Status::offline, {});
    EXPECT_TRUE(heard().isEmpty());
}

TEST_F(TuneCompanionTest, AServerThatTakesNoneIsAskedOnce) {
    answer = 0;
    begin();
    players->play("Sen");
    players->play("Jawa");
    players->play("");
    letTimePass();
    EXPECT_EQ(heard().size(), 1);
    EXPECT_EQ(notices.size(), 1);
    core->choices.set(entry(), Status::offline, {});
    EXPECT_TRUE(heard().isEmpty()) << "there is nothing to take back";
}

TEST_F(TuneCompanionTest, AServerThatTookNoneIsAskedAgainAfterTheNextLogin) {
    answer = 0;
    begin();
    players->play("Sen");
    letTimePass();
    EXPECT_EQ(heard().size(), 1);
    loseConnection();
    core->companion.reconsider();
    answer = 1;
    logIn();
    ASSERT_TRUE(waitFor([this] { return !published.isEmpty(); }));
    EXPECT_EQ(heard(), QStringList(QStringLiteral("Sen")));
    EXPECT_EQ(notices.size(), 1) << "of the first login";
}

TEST_F(TuneCompanionTest, WithoutABusTheUserIsTold) {
    players->there = false;
    switchOn();
    core->companion.reconsider();
    EXPECT_EQ(notices.size(), 1);
}

}  // namespace
}  // namespace oku::test
