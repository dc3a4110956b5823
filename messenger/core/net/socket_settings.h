// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <QHostAddress>
#include <QList>
#include <QSslCertificate>
#include <QString>

namespace oku::net {

std::unique_ptr<QObject> listenToSystem(std::function<void()> changed);
qint64 systemSleptTime();
QList<QHostAddress> systemAddresses();

/// All times in milliseconds, all sizes in bytes. Tests make the times short.
struct SocketSettings {
    /// Trusted besides the system's store.
    QList<QSslCertificate> extraCa;

    /// Whether the flags word of the account that owns the socket says that the stream is compressed.
    std::function<bool(const QString& name)> compressed = [](const QString&) { return false; };

    /// A piece that inflates past 32 KiB does not come through the plugin, hence the small one.
    qsizetype clearPiece = 256 * 1024;
    qsizetype compressedPiece = 1024;

    int stall = 60'000;        ///< from the dial to sessionBound()
    int closeGrace = 5'000;    ///< from our closing tag, or the server's, to our close
    int srvTimeout = 6'000;    ///< then the domain itself is dialled
    int hostTimeout = 10'000;  ///< for the addresses of one host
    int raceDelay = 250;       ///< head start of each address before the next one (RFC 8305)
    int targetTimeout = 10'000;
    int proxyTimeout = 20'000;  ///< for the proxy's answers, once it is reached

    qsizetype holdBytes = 64 * 1024 * 1024;  ///< an incomplete element is kept back up to this size...
    int holdTime = 120'000;                  ///< ...and this age

    qsizetype sendBacklog = 64 * 1024 * 1024;  ///< bytes waiting to be sent; more end the connection

    int keepaliveIdle = 15'000;
    int keepaliveInterval = 5'000;
    int keepaliveCount = 3;
    int userTimeout = 30'000;

    int paceAfter = 3;  ///< failed logins in a row
    int paceFirst = 10'000;
    int paceMost = 300'000;

    /// How long the machine slept since it was started, and its addresses; tests tell another tale.
    std::function<qint64()> sleptTime = systemSleptTime;
    std::function<QList<QHostAddress>()> localAddresses = systemAddresses;
    /// Calls whenever these may have changed; see system_events.h.
    std::function<std::unique_ptr<QObject>(std::function<void()> changed)> systemEvents = listenToSystem;
    /// How often they are looked at while connections exist where the system does not tell of changes.
    int watchInterval = 5'000;
};

}  // namespace oku::net
