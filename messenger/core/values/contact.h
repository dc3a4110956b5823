// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>

#include "messenger/core/values/status.h"

namespace oku {

/// One online resource of a contact.
struct Resource {
    QString name;
    Status status = Status::offline;
    int priority = 0;
    QString description;
    QDateTime changed;
    quint64 order = 0;  ///< grows from one presence to the next, where two have the same time
};

/// One entry of an account's contact list. `status` and `description` are those of the resource with the highest
/// priority (the newest among equals), and offline without a resource. Of more than 64 resources the newest are kept.
struct Contact {
    QString jid;
    QString name;
    QString group;
    QString subscription;  ///< `none` `from` `to` `both`, or empty while the server has not told it
    bool waiting = false;  ///< we asked for its presence and wait for the answer
    Status status = Status::offline;
    QString description;
    QList<Resource> resources;
    int unread = 0;
    QString tune;  ///< what it listens to, as the plugin words it, in lines; empty: nothing that is known
    QString mood;  ///< how it feels, likewise
};

/// What the server's own words about a contact tell beyond the plugin's.
struct ContactDetails {
    QString subscription;
    QStringList groups;
    bool asked = false;  ///< we asked for its presence and wait for the answer
};

}  // namespace oku

Q_DECLARE_METATYPE(oku::Contact)
