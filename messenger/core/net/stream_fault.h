// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <QByteArrayView>
#include <QString>

namespace oku::net {

/// What a server said before it ended a stream or refused a login.
struct StreamFault {
    QString condition;      ///< "conflict", "not-authorized"...
    QString text;           ///< the server's own words, one line of at most 200 characters, or empty
    bool conflict = false;  ///< another client took the resource (RFC 6120, 4.9.3.3)

    /// "not-authorized (Wrong password)"
    QString toString() const;
};

/// Reads a complete "stream:error" or "failure" element (RFC 6120, 4.9 and 6.5). Nullopt when it is none.
std::optional<StreamFault> readFault(QByteArrayView element);

}  // namespace oku::net
