#pragma once

#include <QList>
#include <QSslCertificate>
#include <QSslError>

#include "messenger/core/net/socket_types.h"

namespace oku::net {

/** What is wrong with a server's certificate, for the person who decides about it. */
BadCertificate describe(const QSslCertificate& certificate, const QList<QSslError>& errors, const QString& domain);

/** SHA-256 of the certificate. */
QByteArray fingerprintOf(const QSslCertificate& certificate);

}  // namespace oku::net
