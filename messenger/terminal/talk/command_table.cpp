#include <array>

#include "messenger/terminal/talk/commands.h"

namespace oku::terminal {
namespace {

constexpr std::array kSettings = std::to_array<SettingRow>({
    {"XMPP/User", false, QT_TRANSLATE_NOOP("SettingKeys", "adres konta z zasobem")},
    {"XMPP/Priority", true, QT_TRANSLATE_NOOP("SettingKeys", "priorytet połączenia, od -128 do 127")},
    {"XMPP/AuthType", true,
     QT_TRANSLATE_NOOP("SettingKeys", "prośby o autoryzację: 0 pytaj, 1 odmawiaj, 2 przyjmuj, 3 pomijaj")},
    {"XMPP/MessageAsChat", true, QT_TRANSLATE_NOOP("SettingKeys", "1: zwykłe wiadomości jak rozmowa")},
    {"XMPP/Serv/Enable", true, QT_TRANSLATE_NOOP("SettingKeys", "1: serwer podany w XMPP/Serv/Host")},
    {"XMPP/Serv/Host", false, QT_TRANSLATE_NOOP("SettingKeys", "serwer:port połączenia")},
    {"XMPP/Serv/SSL", true, QT_TRANSLATE_NOOP("SettingKeys", "1: szyfrowanie TLS")},
    {"XMPP/Serv/SSL/Legacy", true, QT_TRANSLATE_NOOP("SettingKeys", "1: TLS od pierwszego bajtu")},
    {"XMPP/Serv/Compress", true, QT_TRANSLATE_NOOP("SettingKeys", "1: kompresja strumienia")},
    {"XMPP/Proxy/OKU", true, QT_TRANSLATE_NOOP("SettingKeys", "1: pośrednik z ustawień programu")},
    {"XMPP/Proxy/Enable", true, QT_TRANSLATE_NOOP("SettingKeys", "1: pośrednik (proxy)")},
    {"XMPP/Proxy/Type", true, QT_TRANSLATE_NOOP("SettingKeys", "0 SOCKS 4, 1 SOCKS 4A, 2 SOCKS 5, 3 HTTP")},
    {"XMPP/Proxy/Host", false, QT_TRANSLATE_NOOP("SettingKeys", "adres pośrednika")},
    {"XMPP/Proxy/Port", false, QT_TRANSLATE_NOOP("SettingKeys", "port pośrednika")},
    {"XMPP/Proxy/Auth", true, QT_TRANSLATE_NOOP("SettingKeys", "1: pośrednik wymaga logowania")},
    {"XMPP/Proxy/User", false, QT_TRANSLATE_NOOP("SettingKeys", "użytkownik pośrednika")},
    {"XMPP/Proxy/Pass", false, QT_TRANSLATE_NOOP("SettingKeys", "hasło pośrednika")},
    {"XMPP/Avatar/Enable", true, QT_TRANSLATE_NOOP("SettingKeys", "1: pobieraj awatary")},
    {"XMPP/Avatar/SendEnable", true, QT_TRANSLATE_NOOP("SettingKeys", "1: wysyłaj własny awatar")},
    {"XMPP/GMail", true, QT_TRANSLATE_NOOP("SettingKeys", "1: powiadomienia o poczcie")},
    {"XMPP/GMailLeave", true, QT_TRANSLATE_NOOP("SettingKeys", "1: zostaw powiadomienie do kliknięcia")},
    {"XMPP/XEP-118", true, QT_TRANSLATE_NOOP("SettingKeys", "1: czego słuchają kontakty")},
    {"XMPP/XEP-107", true, QT_TRANSLATE_NOOP("SettingKeys", "1: nastroje kontaktów")},
    {"desc/Protect", true, QT_TRANSLATE_NOOP("SettingKeys", "1: opis nie zmienia się ze statusem")},
    {"OKU/SendTyping", true, QT_TRANSLATE_NOOP("SettingKeys", "0: nie wysyłaj powiadomień o pisaniu")},
    {"OKU/PasswordInFile", true,
     QT_TRANSLATE_NOOP("SettingKeys", "hasło w pliku konta, gdy nie ma pęku kluczy: 1 tak, 0 nie")},
    {"OKU/AllowClearText", true, QT_TRANSLATE_NOOP("SettingKeys", "1: połączenie bez szyfrowania dozwolone")},
});

}  // namespace

std::span<const CommandRow> commandTable() {
    using enum ArgumentKind;
    using C = Commands;
    static constexpr const char* none = "";
    static constexpr const char* description = QT_TRANSLATE_NOOP("Commands", "[OPIS]");
    static constexpr const char* who = QT_TRANSLATE_NOOP("Commands", "KTO");
    static constexpr const char* anyone = QT_TRANSLATE_NOOP("Commands", "[KTO]");
    static constexpr std::array rows = std::to_array<CommandRow>({
        {"help", QT_TRANSLATE_NOOP("Commands", "[POLECENIE]"),
         QT_TRANSLATE_NOOP("Commands", "lista poleceń albo opis jednego"), Command, None, false, &C::help},
        {"account",
         QT_TRANSLATE_NOOP("Commands", "[add JID [SERWER[:PORT]] | password | remove JID [history] | JID | NUMER]"),
         QT_TRANSLATE_NOOP("Commands", "lista kont; dodaje i usuwa konto, zmienia hasło, wybiera konto poleceń"),
         Account, None, false, &C::account},
        {"online", description, QT_TRANSLATE_NOOP("Commands", "status: dostępny (łączy z serwerem)"), None, None, true,
         &C::online},
        {"chat", description, QT_TRANSLATE_NOOP("Commands", "status: chętny do rozmowy"), None, None, true, &C::chat},
        {"away", description, QT_TRANSLATE_NOOP("Commands", "status: zaraz wracam"), None, None, true, &C::away},
        {"xa", description, QT_TRANSLATE_NOOP("Commands", "status: wrócę później"), None, None, true, &C::xa},
        {"dnd", description, QT_TRANSLATE_NOOP("Commands", "status: zajęty"), None, None, true, &C::dnd},
        {"invisible", description, QT_TRANSLATE_NOOP("Commands", "status: niewidoczny"), None, None, true,
         &C::invisible},
        {"offline", description, QT_TRANSLATE_NOOP("Commands", "rozłącza"), None, None, true, &C::offline},
        {"roster", QT_TRANSLATE_NOOP("Commands", "[online | GRUPA | TEKST]"),
         QT_TRANSLATE_NOOP("Commands", "kontakty według grup, z każdym zasobem"), Group, None, true, &C::roster},
        {"contacts", "on|off|online|all",
         QT_TRANSLATE_NOOP("Commands", "lista kontaktów obok rozmów: jest czy nie, tylko dostępni czy wszyscy"), View,
         None, false, &C::contacts},
        {"add", QT_TRANSLATE_NOOP("Commands", "JID [NAZWA [GRUPA]]"),
         QT_TRANSLATE_NOOP("Commands", "dodaje kontakt i prosi o jego obecność"), Request, None, true, &C::add},
        {"rename", QT_TRANSLATE_NOOP("Commands", "KTO NAZWA"), QT_TRANSLATE_NOOP("Commands", "zmienia nazwę kontaktu"),
         Contact, None, true, &C::rename},
        {"group", QT_TRANSLATE_NOOP("Commands", "KTO GRUPA"),
         QT_TRANSLATE_NOOP("Commands", "przenosi kontakt do grupy"), Contact, Group, true, &C::group},
        {"remove", who, QT_TRANSLATE_NOOP("Commands", "usuwa kontakt z listy"), Contact, None, true, &C::remove},
        {"subscribe", who, QT_TRANSLATE_NOOP("Commands", "prosi o obecność kontaktu"), Contact, None, true,
         &C::subscribe},
        {"authorize", QT_TRANSLATE_NOOP("Commands", "[KTO] [ask]"),
         QT_TRANSLATE_NOOP("Commands", "pozwala widzieć Twoją obecność; ask: i prosi o wzajemność"), Request, None,
         true, &C::authorize},
        {"deny", anyone, QT_TRANSLATE_NOOP("Commands", "odmawia prośbie o obecność"), Request, None, true, &C::deny},
        {"msg", QT_TRANSLATE_NOOP("Commands", "KTO TEKST"), QT_TRANSLATE_NOOP("Commands", "wysyła jedną wiadomość"),
         Contact, None, true, &C::message},
        {"me", QT_TRANSLATE_NOOP("Commands", "TEKST"), QT_TRANSLATE_NOOP("Commands", "wysyła w rozmowie, co robisz"),
         None, None, true, &C::me},
        {"chat-with", QT_TRANSLATE_NOOP("Commands", "KTO [TEKST]"),
         QT_TRANSLATE_NOOP("Commands", "otwiera rozmowę; zwykłe wiersze idą odtąd do niej"), Contact, None, true,
         &C::chatWith},
        {"close", none, QT_TRANSLATE_NOOP("Commands", "zamyka rozmowę"), None, None, false, &C::close},
        {"window", QT_TRANSLATE_NOOP("Commands", "[NUMER]"),
         QT_TRANSLATE_NOOP("Commands", "pokazuje okno; bez numeru następne nieprzeczytane"), None, None, false,
         &C::window},
        {"history", QT_TRANSLATE_NOOP("Commands", "[KTO] [LICZBA | TEKST]"),
         QT_TRANSLATE_NOOP("Commands", "ostatnie wiadomości albo te z tekstem"), Contact, None, true, &C::history},
        {"export", QT_TRANSLATE_NOOP("Commands", "PLIK [KTO]"),
         QT_TRANSLATE_NOOP("Commands", "zapisuje historię do pliku (.json: jako JSON)"), None, Contact, true,
         &C::exportTo},
        {"resend", QT_TRANSLATE_NOOP("Commands", "NUMER"),
         QT_TRANSLATE_NOOP("Commands", "wysyła ponownie wiadomość bez potwierdzenia"), None, None, false, &C::resend},
        {"cancel", QT_TRANSLATE_NOOP("Commands", "[NUMER]"),
         QT_TRANSLATE_NOOP("Commands", "wycofuje wiadomość, która czeka; bez numeru ostatnią w rozmowie"), None, None,
         false, &C::cancel},
        {"info", anyone, QT_TRANSLATE_NOOP("Commands", "program, wersja i możliwości kontaktu"), Contact, None, true,
         &C::info},
        {"server", none, QT_TRANSLATE_NOOP("Commands", "możliwości serwera"), None, None, true, &C::server},
        {"answer", QT_TRANSLATE_NOOP("Commands", "[NUMER] ok|yes|no"),
         QT_TRANSLATE_NOOP("Commands", "odpowiada na pytanie"), Button, Button, false, &C::answer},
        {"console", QT_TRANSLATE_NOOP("Commands", "[on|off]"), QT_TRANSLATE_NOOP("Commands", "konsola XML"), Switch,
         None, false, &C::console},
        {"raw", QT_TRANSLATE_NOOP("Commands", "XML"), QT_TRANSLATE_NOOP("Commands", "wysyła XML"), None, None, true,
         &C::raw},
        {"set", QT_TRANSLATE_NOOP("Commands", "KLUCZ WARTOŚĆ"),
         QT_TRANSLATE_NOOP("Commands", "zmienia ustawienie konta"), Setting, None, true, &C::set},
        {"get", QT_TRANSLATE_NOOP("Commands", "[CZĘŚĆ | all]"),
         QT_TRANSLATE_NOOP("Commands", "zmienione ustawienia konta, te z częścią nazwy, wszystkie"), Setting, None,
         true, &C::get},
        {"typing", QT_TRANSLATE_NOOP("Commands", "[on|off]"),
         QT_TRANSLATE_NOOP("Commands", "czy wysyłać powiadomienia o pisaniu"), Switch, None, true, &C::typing},
        {"pin", QT_TRANSLATE_NOOP("Commands", "[ODCISK | off]"),
         QT_TRANSLATE_NOOP("Commands", "przyjmuje odrzucony certyfikat serwera"), None, None, true, &C::pin},
        {"clear", none, QT_TRANSLATE_NOOP("Commands", "czyści okno"), None, None, false, &C::clear},
        {"quit", none, QT_TRANSLATE_NOOP("Commands", "kończy program"), None, None, false, &C::quit},
    });
    return rows;
}

std::span<const SettingRow> settingTable() { return kSettings; }

const CommandRow* findCommand(const QString& name) {
    for (const CommandRow& row : commandTable())
        if (name.compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0) return &row;
    return nullptr;
}

}  // namespace oku::terminal
