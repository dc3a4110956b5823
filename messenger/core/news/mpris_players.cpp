// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/news/mpris_players.h"

#ifdef OKU_HAS_DBUS

#include <algorithm>
#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFileInfo>
#include <utility>

namespace oku {
namespace {

const QString kPrefix = QStringLiteral("org.mpris.MediaPlayer2.");
const QString kPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString kPlayer = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kBus = QStringLiteral("org.freedesktop.DBus");

constexpr std::size_t kMostPlayers = 32;
constexpr qsizetype kLongestText = 256;
constexpr qint64 kMicroseconds = 1'000'000;
constexpr qint64 kLongestTune = 24 * 60 * 60;  // seconds

/// Asking for a bus where there is none would start one.
bool sessionHasBus() {
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return true;
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFileInfo::exists(runtime + QStringLiteral("/bus"));
}

QString cut(QString text) {
    text.truncate(kLongestText);
    if (!text.isEmpty() && text.back().isHighSurrogate()) text.chop(1);
    return text.simplified();
}

/// A text, or several of them.
QString textOf(const QVariant& value) {
    if (value.typeId() == QMetaType::QString) return cut(value.toString());
    if (value.typeId() != QMetaType::QStringList) return {};
    const QStringList texts = value.toStringList().mid(0, 8);
    QStringList kept;
    for (const QString& text : texts) kept.append(cut(text));
    kept.removeAll(QString());
    return cut(kept.join(QStringLiteral(", ")));
}

/// A whole number above zero; 0 for anything else.
qint64 numberOf(const QVariant& value) {
    switch (value.typeId()) {
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
            return std::max<qint64>(0, value.toLongLong());
        default:
            return 0;
    }
}

QVariantMap mapOf(const QVariant& value) {
    if (value.typeId() != qMetaTypeId<QDBusArgument>()) return {};
    const auto argument = value.value<QDBusArgument>();
    return argument.currentSignature() == QLatin1String("a{sv}") ? qdbus_cast<QVariantMap>(argument) : QVariantMap();
}

QString numberText(qint64 number) { return number > 0 ? QString::number(number) : QString(); }

/// The address stays here: of a tune on this computer it tells the names of folders.
Tune tuneOf(const QVariantMap& metadata) {
    Tune tune;
    tune.title = textOf(metadata.value(QStringLiteral("xesam:title")));
    tune.artist = textOf(metadata.value(QStringLiteral("xesam:artist")));
    tune.source = textOf(metadata.value(QStringLiteral("xesam:album")));
    if (tune.title.isEmpty() && tune.artist.isEmpty()) return {};
    tune.track = numberText(numberOf(metadata.value(QStringLiteral("xesam:trackNumber"))));
    const qint64 seconds = numberOf(metadata.value(QStringLiteral("mpris:length"))) / kMicroseconds;
    if (seconds <= kLongestTune) tune.length = numberText(seconds);
    return tune;
}

}  // namespace

MprisPlayers::MprisPlayers(QString address, int patience) : address_(std::move(address)), patience_(patience) {}

MprisPlayers::~MprisPlayers() { watch(false); }

bool MprisPlayers::watch(bool on) {
    if (!on) {
        if (std::exchange(watching_, false)) subscribe(false);
        forgetAll();
        return true;
    }
    if (watching_ && bus_->isConnected()) return true;
    watching_ = reachBus();
    if (!watching_) return false;
    subscribe(true);
    meetAll();
    return true;
}

// A connection that was reached stays until the program ends. Qt's thread may just be taking a message from it, and
// would delete it a second time if it was given up here (seen with Qt 6.4).
bool MprisPlayers::reachBus() {
    if (bus_ && bus_->isConnected()) return true;
    if (address_.isEmpty() && !sessionHasBus()) return false;
    static int made = 0;
    const QString name = QStringLiteral("oku-players-%1").arg(++made);
    const auto bus = address_.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)
                                        : QDBusConnection::connectToBus(address_, name);
    if (!bus.isConnected()) {
        QDBusConnection::disconnectFromBus(name);
        return false;
    }
    bus_ = bus;
    return true;
}

void MprisPlayers::subscribe(bool on) {
    struct Signal {
        QString service, path, interface, name;
        const char* slot;
    };
    const Signal signalsOfInterest[] = {
        {kBus, QStringLiteral("/org/freedesktop/DBus"), kBus, QStringLiteral("NameOwnerChanged"),
         SLOT(onOwnerChanged(QString, QString, QString))},
        {{}, kPath, kProperties, QStringLiteral("PropertiesChanged"), SLOT(onPropertiesChanged(QDBusMessage))},
        {{},
         QStringLiteral("/org/freedesktop/DBus/Local"),
         QStringLiteral("org.freedesktop.DBus.Local"),
         QStringLiteral("Disconnected"),
         SLOT(forgetAll())},
    };
    for (const Signal& one : signalsOfInterest) {
        if (on)
            bus_->connect(one.service, one.path, one.interface, one.name, this, one.slot);
        else
            bus_->disconnect(one.service, one.path, one.interface, one.name, this, one.slot);
    }
}

void MprisPlayers::meetAll() {
    const auto list = QDBusMessage::createMethodCall(kBus, QStringLiteral("/org/freedesktop/DBus"), kBus,
                                                     QStringLiteral("ListNames"));
    auto* answer = new QDBusPendingCallWatcher(bus_->asyncCall(list, patience_), this);  // deletes itself
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QStringList> names = *answer;
        if (names.isError() || !watching_) return;
        for (const QString& name : names.value()) meet(name, {});
    });
}

void MprisPlayers::meet(const QString& name, const QString& owner) {
    if (!name.startsWith(kPrefix)) return;
    if (!players_.contains(name) && players_.size() >= kMostPlayers) return;
    Player& player = players_[name];
    if (!owner.isEmpty()) player.owner = owner;
    ask(name);
}

void MprisPlayers::onOwnerChanged(const QString& name, const QString&, const QString& now) {
    if (!watching_ || !name.startsWith(kPrefix)) return;
    players_.erase(name);
    update();
    if (!now.isEmpty()) meet(name, now);
}

void MprisPlayers::onPropertiesChanged(const QDBusMessage& message) {
    for (const auto& [name, player] : players_) {
        if (player.owner != message.service()) continue;
        ask(name);
        return;
    }
}

void MprisPlayers::ask(const QString& name) {
    Player& player = players_[name];
    player.askAgain = player.asked;
    if (std::exchange(player.asked, true)) return;
    auto request = QDBusMessage::createMethodCall(name, kPath, kProperties, QStringLiteral("GetAll"));
    request << kPlayer;
    auto* answer = new QDBusPendingCallWatcher(bus_->asyncCall(request, patience_), this);  // deletes itself
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, name] {
        answer->deleteLater();
        const auto found = players_.find(name);
        if (found == players_.end() || !watching_) return;
        // An answer that never came, and one that the reply below finds to be none, name nobody.
        if (const QString owner = answer->reply().service(); !owner.isEmpty()) found->second.owner = owner;
        const QDBusPendingReply<QVariantMap> state = *answer;
        found->second.asked = false;
        take(name, state.isError() ? QVariantMap() : state.value());
        if (found->second.askAgain) ask(name);
    });
}

void MprisPlayers::take(const QString& name, const QVariantMap& state) {
    Player& player = players_[name];
    const bool wasPlaying = player.tune.has_value();
    player.tune.reset();
    if (textOf(state.value(QStringLiteral("PlaybackStatus"))) == QLatin1String("Playing")) {
        player.tune = tuneOf(mapOf(state.value(QStringLiteral("Metadata"))));
        if (!wasPlaying) player.began = ++begun_;
    }
    update();
}

void MprisPlayers::update() {
    const Player* latest = nullptr;
    for (const auto& [name, player] : players_) {
        if (player.tune && (!latest || player.began > latest->began)) latest = &player;
    }
    const Tune now = latest ? *latest->tune : Tune();
    if (now == playing_) return;
    playing_ = now;
    emit changed();
}

void MprisPlayers::forgetAll() {
    players_.clear();
    update();
}

std::shared_ptr<Players> sessionPlayers() { return std::make_shared<MprisPlayers>(); }

}  // namespace oku

#else

#include "messenger/core/news/players.h"

namespace oku {

std::shared_ptr<Players> sessionPlayers() { return nullptr; }

}  // namespace oku

#endif
