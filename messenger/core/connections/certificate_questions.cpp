// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "messenger/core/connections/certificate_questions.h"

#include <utility>

#include "messenger/core/accounts/accounts.h"
#include "messenger/core/accounts/certificate_pins.h"
#include "messenger/core/values/setting_keys.h"
#include "messenger/core/windows/message_boxes.h"

namespace oku {

void CertificateQuestions::ask(const QString& owner, const net::ConnectionId& id,
                               const net::BadCertificate& certificate) {
    const auto key = std::pair(owner, certificate.fingerprint);
    if (!open_.insert_or_assign(key, id).second) return;
    const auto* account = accounts_.bySocket(id.name);
    const QString jid = account ? account->jid() : QString();
    const QString fingerprint = net::fingerprintText(certificate.fingerprint);
    const QString text =
        QCoreApplication::translate(
            "Certificates",
            "Certyfikat serwera %1 jest niepoprawny. %2\nWystawiony dla: %3\nWystawca: %4\nSHA-256: %5\n"
            "Czy zaufać temu certyfikatowi na stałe na tym koncie?")
            .arg(certificate.domain, certificate.reason, certificate.subject, certificate.issuer, fingerprint);
    const CertificateProblem problem{certificate.domain, certificate.reason, fingerprint};
    boxes_.ask(QCoreApplication::translate("Certificates", "Certyfikat serwera"), text,
               [this, key, jid, problem](BoxButton button) {
                   const net::ConnectionId waiting = open_.extract(key).mapped();
                   const bool trust = button == BoxButton::yes;
                   // Kept also when nothing waits any more: the next connection need not ask.
                   if (trust) keep(accounts_.byKey(key.first), key.second);
                   decide_(waiting, trust ? net::CertificateDecision::Pin : net::CertificateDecision::Refuse);
                   if (!trust) emit refused(jid, problem);
               });
}

void CertificateQuestions::keep(AccountEntry* account, const QByteArray& fingerprint) {
    if (!account) return;
    const QString key = QString::fromUtf16(setting::pinnedCertificate);
    const auto pins = withPin(account->settings->text(key), net::fingerprintText(fingerprint));
    if (pins) account->settings->set(key, *pins);
}

QSet<QByteArray> CertificateQuestions::accepted(const AccountEntry& account) {
    QSet<QByteArray> pins;
    const QString kept = account.settings->text(QString::fromUtf16(setting::pinnedCertificate));
    for (QString pin : kept.split(u' ', Qt::SkipEmptyParts))
        pins.insert(QByteArray::fromHex(pin.remove(u':').toLatin1()));
    return pins;
}

}  // namespace oku
