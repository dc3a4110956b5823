#include "messenger/core/net/certificate.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QLocale>
#include <QStringList>

#include "messenger/core/net/texts.h"

namespace oku::net {

namespace {

constexpr qsizetype longestName = 200;

QString day(const QDateTime& time) { return QLocale::c().toString(time.toUTC(), QStringLiteral("yyyy-MM-dd")); }

QString shortName(const QStringList& parts) { return parts.join(QStringLiteral(", ")).simplified().left(longestName); }

/** The names that the certificate is good for. */
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

}  // namespace

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
