// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/net/texts.h"

#include <array>
#include <QCoreApplication>

namespace oku::net {

namespace {

struct Row {
    Text id;
    const char* source;
};

constexpr std::array rows{
    Row{Text::ClosedByPlugin, QT_TRANSLATE_NOOP("Network", "Połączenie zakończone.")},
    Row{Text::Conflict,
        QT_TRANSLATE_NOOP("Network", "Na to konto zalogował się inny program pod tą samą nazwą zasobu.")},
    Row{Text::CertificateRefused, QT_TRANSLATE_NOOP("Network", "Certyfikat domeny %1 został odrzucony.")},
    Row{Text::NameNotFound, QT_TRANSLATE_NOOP("Network", "Nie znaleziono adresu serwera %1.")},
    Row{Text::ServiceRefused, QT_TRANSLATE_NOOP("Network", "Domena %1 nie udostępnia usługi XMPP.")},
    Row{Text::Unreachable, QT_TRANSLATE_NOOP("Network", "Nie można połączyć się z serwerem: %1.")},
    Row{Text::ProxyFailed, QT_TRANSLATE_NOOP("Network", "Serwer pośredniczący %1: %2.")},
    Row{Text::TlsFailed, QT_TRANSLATE_NOOP("Network", "Nie udało się zaszyfrować połączenia: %1.")},
    Row{Text::ClosedByServer, QT_TRANSLATE_NOOP("Network", "Serwer zakończył połączenie.")},
    Row{Text::Reset, QT_TRANSLATE_NOOP("Network", "Serwer przerwał połączenie.")},
    Row{Text::LineDead, QT_TRANSLATE_NOOP("Network", "Połączenie przestało działać: %1.")},
    Row{Text::Stalled, QT_TRANSLATE_NOOP("Network", "Logowanie nie zakończyło się w ciągu %1 s.")},
    Row{Text::BacklogFull, QT_TRANSLATE_NOOP("Network", "Na wysłanie czekało więcej niż %1 MiB danych.")},
    Row{Text::NetworkGone, QT_TRANSLATE_NOOP("Network", "Sieć przestała być dostępna.")},
    Row{Text::Resumed, QT_TRANSLATE_NOOP("Network", "Komputer był uśpiony, połączenie trzeba nawiązać od nowa.")},
    Row{Text::ProtocolBroken,
        QT_TRANSLATE_NOOP("Network", "Serwer wysłał niezaszyfrowane dane w trakcie włączania szyfrowania.")},
    Row{Text::ServerSaid, QT_TRANSLATE_NOOP("Network", "Serwer podał: %1.")},
    Row{Text::Paced, QT_TRANSLATE_NOOP("Network", "Nieudane logowania z rzędu: %1. Następna próba za %2 s.")},
    Row{Text::CertificateOverridden, QT_TRANSLATE_NOOP("Network", "Połączenie mimo złego certyfikatu domeny %1: %2")},
    Row{Text::Dialling, QT_TRANSLATE_NOOP("Network", "Łączenie z %1, port %2")},
    Row{Text::DiallingThroughProxy, QT_TRANSLATE_NOOP("Network", "Łączenie z %1 przez serwer pośredniczący %2")},
    Row{Text::LookingUp, QT_TRANSLATE_NOOP("Network", "Wyszukiwanie serwera dla %1")},
    Row{Text::LineRefused, QT_TRANSLATE_NOOP("Network", "połączenie odrzucone")},
    Row{Text::LineTimeout, QT_TRANSLATE_NOOP("Network", "brak odpowiedzi")},
    Row{Text::LineNoRoute, QT_TRANSLATE_NOOP("Network", "sieć lub komputer nieosiągalny")},
    Row{Text::LineNoAddress, QT_TRANSLATE_NOOP("Network", "nieznany adres")},
    Row{Text::LineOther, QT_TRANSLATE_NOOP("Network", "%1")},
    Row{Text::CertificateUnknown, QT_TRANSLATE_NOOP("Network", "Certyfikat wystawił nieznany urząd.")},
    Row{Text::CertificateSelfSigned, QT_TRANSLATE_NOOP("Network", "Certyfikat podpisał sam serwer.")},
    Row{Text::CertificateExpired, QT_TRANSLATE_NOOP("Network", "Certyfikat stracił ważność %1.")},
    Row{Text::CertificateTooEarly, QT_TRANSLATE_NOOP("Network", "Certyfikat będzie ważny dopiero od %1.")},
    Row{Text::CertificateRevoked, QT_TRANSLATE_NOOP("Network", "Certyfikat został unieważniony.")},
    Row{Text::CertificateForOther, QT_TRANSLATE_NOOP("Network", "Certyfikat wystawiono dla %1, a nie dla %2.")},
    Row{Text::CertificateOther, QT_TRANSLATE_NOOP("Network", "Certyfikat jest nieprawidłowy: %1.")},
    Row{Text::ProxyNameNotFound, QT_TRANSLATE_NOOP("Network", "nie znaleziono jego adresu")},
    Row{Text::ProxyUnreachable, QT_TRANSLATE_NOOP("Network", "nie można się z nim połączyć (%1)")},
    Row{Text::ProxySilent, QT_TRANSLATE_NOOP("Network", "nie odpowiada")},
    Row{Text::ProxyClosed, QT_TRANSLATE_NOOP("Network", "przerwał połączenie")},
    Row{Text::ProxyNoSense,
        QT_TRANSLATE_NOOP("Network", "odpowiedź jest niezrozumiała, to chyba serwer innego rodzaju")},
    Row{Text::ProxyWantsLogin, QT_TRANSLATE_NOOP("Network", "wymaga logowania")},
    Row{Text::ProxyLoginWrong, QT_TRANSLATE_NOOP("Network", "odrzucił nazwę użytkownika lub hasło")},
    Row{Text::ProxyLoginUnusable,
        QT_TRANSLATE_NOOP("Network", "nazwy użytkownika lub hasła nie da się przesłać w tym protokole")},
    Row{Text::ProxyHostUnusable, QT_TRANSLATE_NOOP("Network", "nazwy serwera %1 nie da się przesłać w tym protokole")},
    Row{Text::ProxyRuleset, QT_TRANSLATE_NOOP("Network", "nie zezwala na połączenie z %1")},
    Row{Text::ProxyTargetUnreachable, QT_TRANSLATE_NOOP("Network", "nie może połączyć się z %1")},
    Row{Text::ProxyTargetRefused, QT_TRANSLATE_NOOP("Network", "%1 odrzuca połączenie")},
    Row{Text::ProxyRefused, QT_TRANSLATE_NOOP("Network", "odmówił połączenia z %1 (%2)")},
    Row{Text::ProxyIdentd, QT_TRANSLATE_NOOP("Network", "nie mógł potwierdzić nazwy użytkownika (identd)")},
    Row{Text::ProxyNeedsIpv4, QT_TRANSLATE_NOOP("Network", "SOCKS 4 wymaga adresu IPv4, a %1 go nie ma")},
    Row{Text::ProxyKindUnknown, QT_TRANSLATE_NOOP("Network", "ustawiony jest nieznany rodzaj")},
    Row{Text::PortUnusable, QT_TRANSLATE_NOOP("Network", "port %1 nie mieści się między 1 a 65535")},
};

constexpr bool inOrder() {
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (static_cast<std::size_t>(rows[i].id) != i) return false;
    return rows.size() == static_cast<std::size_t>(Text::Count);
}
static_assert(inOrder(), "the table has a row for each text, in the order of the enumeration");

}  // namespace

QString text(Text id, const QString& first, const QString& second) {
    const Row& row = rows[static_cast<std::size_t>(id)];
    const QString sentence = QCoreApplication::translate("Network", row.source);
    if (sentence.contains(QLatin1String("%2"))) return sentence.arg(first, second);
    if (sentence.contains(QLatin1String("%1"))) return sentence.arg(first);
    return sentence;
}

}  // namespace oku::net
