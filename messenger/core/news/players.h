// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QObject>

#include "messenger/core/values/news.h"

namespace oku {

/// What the players of the user's session play.
class Players : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Looks for players from now on, or no more. False when there is no way to see any.
    virtual bool watch(bool on) = 0;
    /// The tune of the player that began last; empty: nothing plays, or nothing is known of it.
    [[nodiscard]] virtual Tune playing() const = 0;

signals:
    /// playing() is another one.
    void changed();
};

/// Those on the session's bus (MPRIS). Null when this program was built without QtDBus.
std::shared_ptr<Players> sessionPlayers();

}  // namespace oku
