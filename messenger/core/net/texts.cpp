#include "messenger/core/net/texts.h"

#include <array>

#include "messenger/core/texts.h"

namespace oku::net {

namespace {

struct Row {
    Text id;
    const char* polish;
    const char* english;
};

constexpr std::array rows{
    Row{Text::ClosedByPlugin, "Połączenie zakończone.", "The connection was closed."},
    Row{Text::Conflict, "Na to konto zalogował się inny program pod tą samą nazwą zasobu.",
        "Another program logged in to this account under the same resource."},
    Row{Text::CertificateRefused, "Certyfikat domeny %1 został odrzucony.",
        "The certificate of the domain %1 was refused."},
    Row{Text::NameNotFound, "Nie znaleziono adresu serwera %1.", "No address was found for the server %1."},
    Row{Text::ServiceRefused, "Domena %1 nie udostępnia usługi XMPP.", "The domain %1 offers no XMPP service."},
    Row{Text::Unreachable, "Nie można połączyć się z serwerem: %1.", "The server cannot be reached: %1."},
    Row{Text::ProxyFailed, "Serwer pośredniczący %1: %2.", "Proxy server %1: %2."},
    Row{Text::TlsFailed, "Nie udało się zaszyfrować połączenia: %1.", "The connection could not be encrypted: %1."},
    Row{Text::ClosedByServer, "Serwer zakończył połączenie.", "The server closed the connection."},
    Row{Text::Reset, "Serwer przerwał połączenie.", "The server cut the connection."},
    Row{Text::LineDead, "Połączenie przestało działać: %1.", "The connection went dead: %1."},
    Row{Text::Stalled, "Logowanie nie zakończyło się w ciągu %1 s.", "The login did not finish within %1 s."},
    Row{Text::NetworkGone, "Sieć przestała być dostępna.", "The network is gone."},
    Row{Text::Resumed, "Komputer był uśpiony, połączenie trzeba nawiązać od nowa.",
        "The computer was asleep, the connection has to be made anew."},
    Row{Text::ProtocolBroken, "Serwer wysłał niezaszyfrowane dane w trakcie włączania szyfrowania.",
        "The server sent clear text while encryption was being started."},
    Row{Text::ServerSaid, "Serwer podał: %1.", "The server said: %1."},
    Row{Text::Paced, "Nieudane logowania z rzędu: %1. Następna próba za %2 s.",
        "Logins that failed in a row: %1. The next attempt follows in %2 s."},
    Row{Text::CertificateOverridden, "Połączenie mimo złego certyfikatu domeny %1: %2",
        "Connected in spite of the bad certificate of the domain %1: %2"},
    Row{Text::Dialling, "Łączenie z %1, port %2", "Connecting to %1, port %2"},
    Row{Text::DiallingThroughProxy, "Łączenie z %1 przez serwer pośredniczący %2",
        "Connecting to %1 through the proxy server %2"},
    Row{Text::LookingUp, "Wyszukiwanie serwera dla %1", "Looking up the server of %1"},
    Row{Text::LineRefused, "połączenie odrzucone", "connection refused"},
    Row{Text::LineTimeout, "brak odpowiedzi", "no answer"},
    Row{Text::LineNoRoute, "sieć lub komputer nieosiągalny", "network or machine unreachable"},
    Row{Text::LineNoAddress, "nieznany adres", "address unknown"},
    Row{Text::LineOther, "%1", "%1"},
    Row{Text::CertificateUnknown, "Certyfikat wystawił nieznany urząd.",
        "The certificate was issued by an unknown authority."},
    Row{Text::CertificateSelfSigned, "Certyfikat podpisał sam serwer.", "The certificate is signed by itself."},
    Row{Text::CertificateExpired, "Certyfikat stracił ważność %1.", "The certificate expired on %1."},
    Row{Text::CertificateTooEarly, "Certyfikat będzie ważny dopiero od %1.", "The certificate is not valid before %1."},
    Row{Text::CertificateRevoked, "Certyfikat został unieważniony.", "The certificate was revoked."},
    Row{Text::CertificateForOther, "Certyfikat wystawiono dla %1, a nie dla %2.",
        "The certificate was issued for %1 and not for %2."},
    Row{Text::CertificateOther, "Certyfikat jest nieprawidłowy: %1.", "The certificate is not valid: %1."},
    Row{Text::ProxyNameNotFound, "nie znaleziono jego adresu", "its address was not found"},
    Row{Text::ProxyUnreachable, "nie można się z nim połączyć (%1)", "it cannot be reached (%1)"},
    Row{Text::ProxySilent, "nie odpowiada", "it does not answer"},
    Row{Text::ProxyClosed, "przerwał połączenie", "it cut the connection"},
    Row{Text::ProxyNoSense, "odpowiedź jest niezrozumiała, to chyba serwer innego rodzaju",
        "its answer makes no sense, it may be a server of another kind"},
    Row{Text::ProxyWantsLogin, "wymaga logowania", "it wants a login"},
    Row{Text::ProxyLoginWrong, "odrzucił nazwę użytkownika lub hasło", "it refused the user name or the password"},
    Row{Text::ProxyLoginUnusable, "nazwy użytkownika lub hasła nie da się przesłać w tym protokole",
        "the user name or the password cannot be sent in this protocol"},
    Row{Text::ProxyHostUnusable, "nazwy serwera %1 nie da się przesłać w tym protokole",
        "the server name %1 cannot be sent in this protocol"},
    Row{Text::ProxyRuleset, "nie zezwala na połączenie z %1", "it does not allow a connection to %1"},
    Row{Text::ProxyTargetUnreachable, "nie może połączyć się z %1", "it cannot reach %1"},
    Row{Text::ProxyTargetRefused, "%1 odrzuca połączenie", "%1 refuses the connection"},
    Row{Text::ProxyRefused, "odmówił połączenia z %1 (%2)", "it refused the connection to %1 (%2)"},
    Row{Text::ProxyIdentd, "nie mógł potwierdzić nazwy użytkownika (identd)",
        "it could not confirm the user name (identd)"},
    Row{Text::ProxyNeedsIpv4, "SOCKS 4 wymaga adresu IPv4, a %1 go nie ma",
        "SOCKS 4 needs an IPv4 address, and %1 has none"},
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
    const QString sentence = say(row.polish, row.english);
    if (sentence.contains(QLatin1String("%2"))) return sentence.arg(first, second);
    if (sentence.contains(QLatin1String("%1"))) return sentence.arg(first);
    return sentence;
}

}  // namespace oku::net
