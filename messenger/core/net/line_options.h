// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include "messenger/core/net/socket_settings.h"

class QAbstractSocket;

namespace oku::net {

/// Has the system find a dead line: idle ones by keepalive, those with unsent data by the user time-out (RFC 5482).
/// Small packets go at once, as a stanza is nothing to wait with.
void setLineOptions(QAbstractSocket& socket, const SocketSettings& settings);

/// A short reason for an error of a socket, in the user's language.
QString lineError(const QAbstractSocket& socket);

}  // namespace oku::net
