// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/messenger/net/authority.h"

#include <QFile>
#include <QProcess>

namespace oku::net::test {

namespace {

const QStringList newKey{"-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes"};

void openssl(const QStringList& arguments) {
    QProcess process;
    process.start("openssl", arguments);
    if (!process.waitForFinished(60'000) || process.exitCode() != 0)
        qFatal("openssl failed: %s", process.readAllStandardError().constData());
}

}  // namespace

Authority& Authority::instance() {
    static Authority authority;
    return authority;
}

Authority::Authority() {
    openssl(QStringList{"req", "-x509"} + newKey +
            QStringList{"-days", "30", "-subj", "/CN=Authority of the tests", "-keyout", path("ca.key"), "-out",
                        path("ca.crt")});
    certificate_ = QSslCertificate::fromPath(path("ca.crt")).value(0);
}

Identity Authority::issue(const QStringList& names, int days, const QString& commonName) {
    const QString stem = QString::number(++count_);
    QStringList request = QStringList{"req"} + newKey;
    request << "-subj"
            << "/CN=" + (commonName.isEmpty() ? names.first() : commonName);
    if (!names.isEmpty())
        request << "-addext"
                << "subjectAltName=DNS:" + names.join(",DNS:");
    openssl(request + QStringList{"-keyout", path(stem + ".key"), "-out", path(stem + ".csr")});
    openssl({"x509", "-req", "-in", path(stem + ".csr"), "-CA", path("ca.crt"), "-CAkey", path("ca.key"),
             "-CAcreateserial", "-days", QString::number(days), "-copy_extensions", "copy", "-out",
             path(stem + ".crt")});
    return read(stem);
}

Identity Authority::selfSigned(const QString& name) {
    const QString stem = QString::number(++count_);
    openssl(QStringList{"req", "-x509"} + newKey +
            QStringList{"-days", "30", "-subj", "/CN=" + name, "-addext", "subjectAltName=DNS:" + name, "-keyout",
                        path(stem + ".key"), "-out", path(stem + ".crt")});
    return read(stem);
}

Identity Authority::read(const QString& stem) const {
    QFile key(path(stem + ".key"));
    if (!key.open(QIODevice::ReadOnly)) qFatal("no key was made");
    return {QSslCertificate::fromPath(path(stem + ".crt")).value(0), QSslKey(&key, QSsl::Ec)};
}

}  // namespace oku::net::test
