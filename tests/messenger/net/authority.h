// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QCryptographicHash>
#include <QSslCertificate>
#include <QSslKey>
#include <QStringList>
#include <QTemporaryDir>

namespace oku::net::test {

struct Identity {
    QSslCertificate certificate;
    QSslKey key;

    QByteArray fingerprint() const { return certificate.digest(QCryptographicHash::Sha256); }
};

/** A certificate authority made by openssl when it is first needed, with what it issued. */
class Authority {
public:
    static Authority& instance();

    QSslCertificate certificate() const { return certificate_; }

    /** A certificate for these DNS names, good for so many days; -1 has expired. The common name is the first of them,
     * if none is given. */
    Identity issue(const QStringList& names, int days = 30, const QString& commonName = {});
    Identity selfSigned(const QString& name);

private:
    Authority();

    QString path(const QString& name) const { return folder_.filePath(name); }
    Identity read(const QString& stem) const;

    QTemporaryDir folder_;
    QSslCertificate certificate_;
    int count_ = 0;
};

}  // namespace oku::net::test
