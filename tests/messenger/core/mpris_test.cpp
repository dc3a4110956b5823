// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Players on a bus of the test's own, good ones and bad ones.
#include "messenger/core/news/mpris_players.h"

#ifdef OKU_HAS_DBUS

#include <optional>
#include <QDBusConnectionInterface>
#include <QDBusMetaType>
#include <QDBusVirtualObject>
#include <QProcess>
#include <utility>

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
    /// Returns when the bus has all that was told before: what another player tells from now on comes after it.
    void letTheBusCatchUp() { EXPECT_TRUE(connection_.interface()->isServiceRegistered(connection_.baseService())); }

    /// Keeps the next question waiting, with the state at that moment as its answer, until letAnswer().
    void hold() { holding_ = true; }
    void letAnswer() {
        holding_ = false;
        ASSERT_TRUE(kept_);
        EXPECT_TRUE(connection_.send(*std::exchange(kept_, {})));
    }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        auto answer = broken ? message.createReply(QVariantList{QStringLiteral("no map"), 5})
                             : message.createReply(QVariant(state));
        if (holding_) {
            kept_ = std::move(answer);
        } else if (!connection.send(answer)) {
            return false;
        }
        ++asked;
        return true;
    }

    QVariantMap state;
    int asked = 0;
    bool broken = false;

private:
    static inline int made = 0;

    QDBusConnection connection_;
    QString name_;
    bool owned_ = false;
    bool holding_ = false;
    std::optional<QDBusMessage> kept_;
};

class MprisTest : public testing::Test {
protected:
    void SetUp() override {
        daemon_.start(QStringLiteral("dbus-daemon"),
                      {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
        ASSERT_TRUE(waitFor([this] { return daemon_.canReadLine(); })) << "no dbus-daemon";
        address = QString::fromUtf8(daemon_.readLine()).trimmed();
        players = std::make_unique<MprisPlayers>(address, 600'000);
    }
    void TearDown() override {
        players.reset();
        daemon_.terminate();  // so that it takes its socket along
        daemon_.waitForFinished();
    }
    /// Watches, and keeps what played in this order.
    void watch() {
        Players* const watched = players.get();
        QObject::connect(watched, &Players::changed, [this, watched] { played.append(watched->playing().title); });
        ASSERT_TRUE(players->watch(true));
    }
    bool plays(const char* title) {
        return waitFor([&] { return players->playing().title == QString::fromUtf8(title); });
    }

    QString address;
    std::unique_ptr<MprisPlayers> players;
    QStringList played;

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

TEST_F(MprisTest, ANewTuneOfThePlayerThatBeganFirstDoesNotMakeItTheLast) {
    FakePlayer first(address, QStringLiteral("jeden"));
    FakePlayer second(address, QStringLiteral("dwa"));
    watch();
    first.play("Sen");
    ASSERT_TRUE(plays("Sen"));
    second.play("Jawa");
    ASSERT_TRUE(plays("Jawa"));
    const int before = first.asked;
    first.play("Nowy sen");
    ASSERT_TRUE(waitFor([&] { return first.asked > before; }));
    first.letTheBusCatchUp();
    second.play("Nowa jawa");
    ASSERT_TRUE(plays("Nowa jawa"));
    second.set(QStringLiteral("Stopped"), QVariantMap());
    ASSERT_TRUE(plays("Nowy sen"));
    EXPECT_FALSE(played.mid(0, played.indexOf(QStringLiteral("Nowa jawa"))).contains(QStringLiteral("Nowy sen")))
        << played.join(u' ').toStdString();
    second.play("Jawa");
    EXPECT_TRUE(plays("Jawa")) << "it began anew";
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
    using Texts = QMap<QString, QString>;
    qDBusRegisterMetaType<Texts>();
    const QList<QVariant> bad{QVariantMap(),
                              QVariant::fromValue(Texts{{QStringLiteral("xesam:title"), playing}}),
                              QVariant(5),
                              QVariant(QStringLiteral("text")),
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
                                    {QStringLiteral("xesam:trackNumber"), QStringLiteral("3")},
                                    {QStringLiteral("mpris:length"), QStringLiteral("185500000")}});
    ASSERT_TRUE(plays("Sen"));
    EXPECT_TRUE(players->playing().length.isEmpty());
    EXPECT_TRUE(players->playing().track.isEmpty());
    player.set(playing, QVariantMap{{QStringLiteral("xesam:title"), QStringLiteral("Jawa")},
                                    {QStringLiteral("xesam:trackNumber"), -3},
                                    {QStringLiteral("mpris:length"), qlonglong{-185'500'000}}});
    ASSERT_TRUE(plays("Jawa"));
    EXPECT_TRUE(players->playing().length.isEmpty());
    EXPECT_TRUE(players->playing().track.isEmpty());
    player.set(playing, QVariantMap{{QStringLiteral("xesam:title"), QStringLiteral("Sen")},
                                    {QStringLiteral("mpris:length"), qlonglong{86'401'000'000}}});
    ASSERT_TRUE(plays("Sen"));
    EXPECT_TRUE(players->playing().length.isEmpty()) << "more than a day";
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

// However often it tells that something changed while it has not answered yet.
TEST_F(MprisTest, APlayerThatShoutsIsAskedOnceMore) {
    FakePlayer player(address, QStringLiteral("jeden"));
    FakePlayer other(address, QStringLiteral("dwa"));
    watch();
    player.play("Sen");
    ASSERT_TRUE(plays("Sen"));
    const int before = player.asked;
    player.hold();
    player.tell();
    ASSERT_TRUE(waitFor([&] { return player.asked == before + 1; }));
    for (int at = 0; at < 500; ++at) player.tell();
    player.play("Jawa");
    player.letTheBusCatchUp();
    other.play("Inny");
    ASSERT_TRUE(plays("Inny")) << "what was told before it has come";
    EXPECT_EQ(player.asked, before + 1);
    player.letAnswer();
    other.set(QStringLiteral("Stopped"), QVariantMap());
    ASSERT_TRUE(plays("Jawa")) << "the last word counts";
    EXPECT_EQ(player.asked, before + 2);
}

TEST_F(MprisTest, WithoutABusNothingIsSeen) {
    MprisPlayers nowhere(QStringLiteral("unix:path=/nonexistent/bus"));
    EXPECT_FALSE(nowhere.watch(true));
    EXPECT_TRUE(nowhere.playing().isEmpty());
}

}  // namespace
}  // namespace oku::test

#endif
