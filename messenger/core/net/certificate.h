// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <QList>
#include <QSslCertificate>
#include <QSslError>

#include "messenger/core/net/socket_types.h"

namespace oku::net {

/// What is wrong with a server's certificate, for the person who decides about it.
BadCertificate describe(const QSslCertificate& certificate, const QList<QSslError>& errors, const QString& domain);

/// Set when the certificate has DNS names and none of them is the domain, or when the domain is an address that is not
/// among its addresses. The common name counts only where there are no such names (RFC 6125, section 6.4.4); a
/// certificate without them gives nothing here, as TLS itself has compared that one.
std::optional<QSslError> nameFault(const QSslCertificate& certificate, const QString& domain);

/// SHA-256 of the certificate.
QByteArray fingerprintOf(const QSslCertificate& certificate);

}  // namespace oku::net
