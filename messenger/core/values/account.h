// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include "messenger/core/values/status.h"

namespace oku {

/// How far an account's connection has come. `online` means that the roster is complete.
enum class ConnectionState { offline, connecting, connected, encrypted, authorized, online };

/// The same word as the enumerator's.
QString connectionStateWord(ConnectionState state);

/// One account. `jid` is empty for the default account while nobody has set it up.
struct Account {
    QString jid;
    QString settingsPath;
    ConnectionState connection = ConnectionState::offline;
    Status status = Status::offline;
    QString description;
    bool encrypted = false;  ///< the connection is, by TLS
};

/// What became of a bad certificate (AccountsFace::certificateRefused).
struct CertificateProblem {
    QString host;
    QString reason;
    QString fingerprint;  ///< SHA-256, hexadecimal, colons between bytes
};

}  // namespace oku
