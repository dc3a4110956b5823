// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QObject>
#include <vector>

#include "messenger/terminal/talk/desk.h"

namespace oku::terminal {

/// Presences as they come, in words; one that says nothing new is not told.
class PresenceDisplay : public QObject {
public:
    explicit PresenceDisplay(const Desk& desk);

private:
    struct ToldPresence {
        QString resource;
        Status status;
        QString description;
    };

    void onPresence(const QString& account, const QString& jid, const Resource& resource);
    [[nodiscard]] bool isOwn(const QString& account, const QString& jid, const Resource& resource) const;
    bool isNew(const Peer& peer, const Resource& resource);

    Desk desk_;
    /// What was told last of contacts' resources: a few, for which a table of its own would take ten times as much.
    QHash<Peer, std::vector<ToldPresence>> told_;
};

}  // namespace oku::terminal
