// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/certificate.h"

#include <algorithm>
#include <QCryptographicHash>
#include <QDateTime>
#include <QHostAddress>
#include <QLocale>
#include <QStringList>

#include "messenger/core/net/system_resolver.h"
#include "messenger/core/net/texts.h"

namespace oku::net {

namespace {

constexpr qsizetype kLongestName = 200;

QString day(const QDateTime& time) { return QLocale::c().toString(time.toUTC(), QStringLiteral("yyyy-MM-dd")); }

QString shortName(const QStringList& parts) { return parts.join(QStringLiteral(", ")).simplified().left(kLongestName); }

/// The names that the certificate is good for.
QString namesOf(const QSslCertificate& certificate) {
    const QStringList names = certificate.subjectAlternativeNames().values(QSsl::DnsEntry);
    return shortName(names.isEmpty() ? certificate.subjectInfo(QSslCertificate::CommonName) : names);
}

QString reasonFor(const QSslError& error, const QSslCertificate& certificate, const QString& domain) {
    switch (error.error()) {
        case QSslError::SelfSignedCertificate:
            return text(Text::CertificateSelfSigned);
        case QSslError::SelfSignedCertificateInChain:
        case QSslError::UnableToGetLocalIssuerCertificate:
        case QSslError::UnableToGetIssuerCertificate:
        case QSslError::UnableToVerifyFirstCertificate:
        case QSslError::CertificateUntrusted:
            return text(Text::CertificateUnknown);
        case QSslError::CertificateExpired:
            return text(Text::CertificateExpired, day(error.certificate().expiryDate()));
        case QSslError::CertificateNotYetValid:
            return text(Text::CertificateTooEarly, day(error.certificate().effectiveDate()));
        case QSslError::CertificateRevoked:
        case QSslError::CertificateBlacklisted:
            return text(Text::CertificateRevoked);
        case QSslError::HostNameMismatch:
            return text(Text::CertificateForOther, namesOf(certificate), domain);
        default:
            return text(Text::CertificateOther, error.errorString());
    }
}

/// A `*` stands for one whole label, the first, of a name that has two more.
bool covers(const QString& pattern, const QString& name) {
    if (!pattern.startsWith(QLatin1String("*.")) || pattern.count(u'.') < 2)
        return pattern.compare(name, Qt::CaseInsensitive) == 0;
    const qsizetype dot = name.indexOf(u'.');
    return dot > 0 && QStringView(name).sliced(dot).compare(QStringView(pattern).sliced(1), Qt::CaseInsensitive) == 0;
}

bool coversAddress(const QStringList& addresses, const QHostAddress& wanted) {
    return std::any_of(addresses.begin(), addresses.end(),
                       [&](const QString& address) { return QHostAddress(address) == wanted; });
}

}  // namespace

std::optional<QSslError> nameFault(const QSslCertificate& certificate, const QString& domain) {
    const auto others = certificate.subjectAlternativeNames();
    const QStringList names = others.values(QSsl::DnsEntry);
    const QStringList addresses = others.values(QSsl::IpAddressEntry);
    const QString wanted = asciiName(domain);
    const QHostAddress address(wanted);
    if (names.isEmpty() && (address.isNull() || addresses.isEmpty())) return std::nullopt;
    const bool good = address.isNull() ? std::any_of(names.begin(), names.end(),
                                                     [&](const QString& name) { return covers(name, wanted); })
                                       : coversAddress(addresses, address);
    if (good) return std::nullopt;
    return QSslError(QSslError::HostNameMismatch, certificate);
}

BadCertificate describe(const QSslCertificate& certificate, const QList<QSslError>& errors, const QString& domain) {
    QStringList reasons;
    for (const QSslError& error : errors) {
        const QString reason = reasonFor(error, certificate, domain);
        if (!reasons.contains(reason)) reasons.append(reason);
    }
    return {domain, reasons.join(u' '), fingerprintOf(certificate),
            shortName(certificate.subjectInfo(QSslCertificate::CommonName)),
            shortName(certificate.issuerInfo(QSslCertificate::CommonName))};
}

QByteArray fingerprintOf(const QSslCertificate& certificate) { return certificate.digest(QCryptographicHash::Sha256); }

QString fingerprintText(const QByteArray& fingerprint) { return QString::fromLatin1(fingerprint.toHex(':').toUpper()); }

}  // namespace oku::net
