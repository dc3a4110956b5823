// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#ifdef OKU_HAS_DBUS

#include <map>
#include <optional>
#include <QDBusConnection>
#include <QDBusMessage>

#include "messenger/core/news/players.h"

namespace oku {

/// The players that own a name `org.mpris.MediaPlayer2....` on a bus. Each is asked for its state when it says that
/// something changed, never twice at a time. What they say is only believed where it has the right type, and texts are
/// cut to a length that a person would read.
class MprisPlayers final : public Players {
    Q_OBJECT

public:
    /// `address`: of the bus; empty: that of the session. `patience`: milliseconds in which a player has to answer.
    explicit MprisPlayers(QString address = {}, int patience = 10'000);
    ~MprisPlayers() override;

    bool watch(bool on) override;
    [[nodiscard]] Tune playing() const override { return playing_; }

private slots:
    void onOwnerChanged(const QString& name, const QString& before, const QString& now);
    void onPropertiesChanged(const QDBusMessage& message);
    void forgetAll();

private:
    struct Player {
        QString owner;               ///< its unique name; empty: not known yet
        std::optional<Tune> tune{};  ///< while it plays
        quint64 began = 0;
        bool asked = false;
        bool askAgain = false;
    };

    bool reachBus();
    void subscribe(bool on);
    void meetAll();
    void meet(const QString& name, const QString& owner);
    void ask(const QString& name);
    void take(const QString& name, const QVariantMap& state);
    void update();

    const QString address_;
    const int patience_;
    std::optional<QDBusConnection> bus_;  ///< once it was reached
    bool watching_ = false;
    std::map<QString, Player> players_;  ///< by their names
    Tune playing_;
    quint64 begun_ = 0;
};

}  // namespace oku

#endif
