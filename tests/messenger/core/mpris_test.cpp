// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Players on a bus of the test's own, good ones and bad ones.
#include "messenger/core/news/mpris_players.h"

#ifdef OKU_HAS_DBUS

#include <QDBusArgument>
#include <QDBusVirtualObject>
#include <QProcess>

#include "tests/messenger/core/stage.h"

namespace oku::test {
namespace {

const QString kPath = QStringLiteral("/org/mpris/MediaPlayer2");

/// A player that answers what the test says.
class FakePlayer : public QDBusVirtualObject {
public:
    FakePlayer(const QString& address, const QString& name)
        : connection_(QDBusConnection::connectToBus(address, QStringLiteral("player-%1").arg(++made))), name_(name) {
        EXPECT_TRUE(connection_.registerVirtualObject(kPath, this));
        own();
    }
    // The connection stays until the program ends: Qt's thread may still take messages from it.
    ~FakePlayer() override {
        connection_.unregisterObject(kPath);
        if (owned_) leave();
    }

    void own() {
        owned_ = connection_.registerService(QStringLiteral("org.mpris.MediaPlayer2.") + name_);
        EXPECT_TRUE(owned_);
    }
    void leave() {
        owned_ = false;
        EXPECT_TRUE(connection_.unregisterService(QStringLiteral("org.mpris.MediaPlayer2.") + name_));
    }

    void set(const QString& status, const QVariant& metadata) {
        state = {{QStringLiteral("PlaybackStatus"), status}, {QStringLiteral("Metadata"), metadata}};
        tell();
    }
    void play(const char* title, const char* artist = "Artysta") {
        set(QStringLiteral("Playing"),
            QVariantMap{{QStringLiteral("xesam:title"), QString::fromUtf8(title)},
                        {QStringLiteral("xesam:artist"), QStringList(QString::fromUtf8(artist))},
                        {QStringLiteral("xesam:album"), QStringLiteral("Album")},
                        {QStringLiteral("xesam:trackNumber"), 3},
                        {QStringLiteral("xesam:url"), QStringLiteral("file:///home/ja/a.ogg")},
                        {QStringLiteral("mpris:length"), qlonglong{185'500'000}}});
    }
    void tell() {
        auto signal = QDBusMessage::createSignal(kPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                 QStringLiteral("PropertiesChanged"));
        signal << QStringLiteral("org.mpris.MediaPlayer2.Player") << QVariantMap() << QStringList();
        EXPECT_TRUE(connection_.send(signal));
    }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        ++asked;
        return connection.send(broken ? message.createReply(QVariantList{QStringLiteral("no map"), 5})
                                      : message.createReply(QVariant(state)));
    }

    QVariantMap state;
    std::atomic<int> asked = 0;
    std::atomic<bool> broken = false;

private:
    static inline int made = 0;

    QDBusConnection connection_;
    QString name_;
    bool owned_ = false;
};

class MprisTest : public testing::Test {
protected:
    void SetUp() override {
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
        ASSERT_TRUE(waitFor([this] { return daemon_.canReadLine(); })) << "no dbus-daemon";
        address = QString::fromUtf8(daemon_.readLine()).trimmed();
        players = std::make_unique<MprisPlayers>(address);
    }
    void TearDown() override {
        players.reset();
        daemon_.kill();
        daemon_.waitForFinished();
    }
    bool plays(const char* title) {
        return waitFor([&] { return players->playing().title == QString::fromUtf8(title); });
    }

    QString address;
    std::unique_ptr<MprisPlayers> players;

private:
    QProcess daemon_;
};

TEST_F(MprisTest, SeesAPlayerThatIsThereAndFollowsIt) {
    FakePlayer player(address, QStringLiteral("jeden"));
    player.play("Sen");
    ASSERT_TRUE(players->watch(true));
    ASSERT_TRUE(plays("Sen"));
    const Tune tune = players->playing();
    EXPECT_EQ(tune.artist, QStringLiteral("Artysta"));
    EXPECT_EQ(tune.source, QStringLiteral("Album"));
    EXPECT_EQ(tune.track, QStringLiteral("3"));
    EXPECT_EQ(tune.length, QStringLiteral("185"));
    EXPECT_TRUE(tune.uri.isEmpty()) << "the folders of this computer are nobody's business";
    player.play("Jawa");
    EXPECT_TRUE(plays("Jawa"));
    player.set(QStringLiteral("Paused"), QVariantMap{{QStringLiteral("xesam:title"), QStringLiteral("Jawa")}});
    EXPECT_TRUE(plays(""));
}

TEST_F(MprisTest, SeesPlayersComeAndGo) {
    ASSERT_TRUE(players->watch(true));
    auto first = std::make_unique<FakePlayer>(address, QStringLiteral("jeden"));
    first->play("Sen");
    ASSERT_TRUE(plays("Sen"));
    FakePlayer second(address, QStringLiteral("dwa"));
    second.play("Jawa");
    ASSERT_TRUE(plays("Jawa")) << "who began last";
    second.leave();
    ASSERT_TRUE(plays("Sen"));
    first.reset();
    EXPECT_TRUE(plays("")) << "gone without a word";
}

TEST_F(MprisTest, NoLongerWatchedNothingPlays) {
    FakePlayer player(address, QStringLiteral("jeden"));
    player.play("Sen");
    ASSERT_TRUE(players->watch(true));
    ASSERT_TRUE(plays("Sen"));
    EXPECT_TRUE(players->watch(false));
    EXPECT_TRUE(players->playing().isEmpty());
    ASSERT_TRUE(players->watch(true));
    EXPECT_TRUE(plays("Sen"));
}

TEST_F(MprisTest, CanBeSwitchedWhileAPlayerShouts) {
    FakePlayer player(address, QStringLiteral("jeden"));
    player.play("Sen");
    for (int round = 0; round < 100; ++round) {
        ASSERT_TRUE(players->watch(true));
        ASSERT_TRUE(plays("Sen"));
        for (int at = 0; at < 20; ++at) player.tell();
        EXPECT_TRUE(players->watch(false));
        EXPECT_TRUE(players->playing().isEmpty());
    }
}

TEST_F(MprisTest, WhatAPlayerSaysIsOnlyBelievedWhereItHasTheRightType) {
    FakePlayer player(address, QStringLiteral("jeden"));
    ASSERT_TRUE(players->watch(true));
    const QString playing = QStringLiteral("Playing");
    const QList<QVariant> bad{QVariantMap(), QVariant(5), QVariant(QStringLiteral("text")),
                              QVariantMap{{QStringLiteral("xesam:title"), 7}, {QStringLiteral("xesam:artist"), true}},
                              QVariantMap{{QStringLiteral("xesam:title"), QVariantMap{{QStringLiteral("a"), 1}}}}};
    int sign = 0;
    for (const QVariant& metadata : bad) {
        const QByteArray before = QByteArray::number(++sign);
        player.play(before.constData());
        ASSERT_TRUE(plays(before.constData()));
        player.set(playing, metadata);
        EXPECT_TRUE(plays("")) << sign;
    }
    player.set(playing, QVariantMap{{QStringLiteral("xesam:title"), QStringLiteral("Sen")},
                                    {QStringLiteral("xesam:trackNumber"), QStringLiteral("x")},
                                    {QStringLiteral("mpris:length"), qlonglong{-5}}});
    ASSERT_TRUE(plays("Sen"));
    EXPECT_TRUE(players->playing().length.isEmpty());
    EXPECT_TRUE(players->playing().track.isEmpty());
    player.broken = true;
    player.tell();
    EXPECT_TRUE(plays("")) << "an answer that is none";
    player.broken = false;
    player.play("Sen");
    EXPECT_TRUE(plays("Sen"));
}

TEST_F(MprisTest, HugeTextsAreCut) {
    FakePlayer player(address, QStringLiteral("jeden"));
    ASSERT_TRUE(players->watch(true));
    QStringList artists;
    for (int at = 0; at < 1000; ++at) artists.append(QString(1000, u'b'));
    player.set(QStringLiteral("Playing"), QVariantMap{{QStringLiteral("xesam:title"), QString(5'000'000, u'a')},
                                                      {QStringLiteral("xesam:artist"), artists}});
    ASSERT_TRUE(waitFor([this] { return !players->playing().isEmpty(); }));
    EXPECT_EQ(players->playing().title.size(), 256);
    EXPECT_EQ(players->playing().artist.size(), 256);
}

TEST_F(MprisTest, APlayerThatShoutsIsAskedInProportion) {
    FakePlayer player(address, QStringLiteral("jeden"));
    player.play("Sen");
    ASSERT_TRUE(players->watch(true));
    ASSERT_TRUE(plays("Sen"));
    const int before = player.asked;
    for (int at = 0; at < 2000; ++at) player.tell();
    player.play("Jawa");
    ASSERT_TRUE(plays("Jawa")) << "the last word counts";
    EXPECT_LT(player.asked - before, 2000);
}

TEST_F(MprisTest, WithoutABusNothingIsSeen) {
    MprisPlayers nowhere(QStringLiteral("unix:path=/nonexistent/bus"));
    EXPECT_FALSE(nowhere.watch(true));
    EXPECT_TRUE(nowhere.playing().isEmpty());
}

}  // namespace
}  // namespace oku::test

#endif
