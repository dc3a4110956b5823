// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include "messenger/core/values/contact.h"

namespace oku {

/// What is known of one resource of a contact (RosterFace::requestInfo).
struct ContactInfo {
    QString jid;
    Resource resource;
    QString client;
    QString version;
    QString os;
    QStringList features;
};

/// What the account's server tells of itself (RosterFace::requestServerInfo).
struct ServerInfo {
    QString domain;
    QStringList identities;  ///< `category/type name`
    QStringList features;
};

}  // namespace oku
