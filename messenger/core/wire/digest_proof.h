// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <QByteArray>

/// The server's half of DIGEST-MD5 (RFC 2831).
namespace oku {

/// The value of a directive of a challenge or a response, without its quotation marks; nothing when it is not there.
std::optional<QByteArray> digestDirective(const QByteArray& text, const QByteArray& name);

/// What a server must send as `rspauth` when this response reached it, both sides knowing the password. Nothing when
/// the response was not made with that password.
std::optional<QByteArray> expectedProof(const QByteArray& response, const QByteArray& password);

}  // namespace oku
