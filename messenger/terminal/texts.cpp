// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/texts.h"

#include <array>
#include <QCoreApplication>

namespace oku::terminal {
namespace {

struct TextRow {
    Text id;
    const char* source;
};

constexpr std::array kTexts = std::to_array<TextRow>({
    {Text::JsonLineTooLong, QT_TRANSLATE_NOOP("Terminal", "wiersz jest dłuższy niż 16 MiB")},
    {Text::JsonSyntax, QT_TRANSLATE_NOOP("Terminal", "to nie jest JSON: %1 (bajt %2)")},
    {Text::JsonNoObject, QT_TRANSLATE_NOOP("Terminal", "polecenie musi być obiektem")},
    {Text::JsonNoCommand, QT_TRANSLATE_NOOP("Terminal", "brak pola \"cmd\" albo nie jest tekstem")},
    {Text::JsonUnknownCommand, QT_TRANSLATE_NOOP("Terminal", "nieznane polecenie \"%1\"")},
    {Text::JsonFieldMissing, QT_TRANSLATE_NOOP("Terminal", "brak pola \"%1\"")},
    {Text::JsonFieldType, QT_TRANSLATE_NOOP("Terminal", "pole \"%1\" musi mieć wartość: %2")},
    {Text::JsonTypeText, QT_TRANSLATE_NOOP("Terminal", "tekst")},
    {Text::JsonTypeWhole, QT_TRANSLATE_NOOP("Terminal", "liczba całkowita")},
    {Text::JsonTypeFlag, QT_TRANSLATE_NOOP("Terminal", "true lub false")},
    {Text::JsonTypeObject, QT_TRANSLATE_NOOP("Terminal", "obiekt")},
    {Text::JsonTypeAny, QT_TRANSLATE_NOOP("Terminal", "tekst, liczba, true lub false")},
    {Text::JsonEnding, QT_TRANSLATE_NOOP("Terminal", "program kończy pracę")},
    {Text::BadStatus,
     QT_TRANSLATE_NOOP("Terminal", "nieznany status \"%1\" (możliwe: online chat dnd away xa invisible offline)")},
    {Text::BadKind, QT_TRANSLATE_NOOP("Terminal", "nieznany rodzaj \"%1\" (możliwe: chat normal)")},
    {Text::BadLimit, QT_TRANSLATE_NOOP("Terminal", "liczba wiadomości musi być większa od zera")},
    {Text::BadButton, QT_TRANSLATE_NOOP("Terminal", "nieznana odpowiedź \"%1\" (możliwe: ok yes no)")},
    {Text::BadNumber, QT_TRANSLATE_NOOP("Terminal", "\"%1\" nie jest liczbą całkowitą")},
    {Text::NoAccount, QT_TRANSLATE_NOOP("Terminal", "nie ma jeszcze żadnego konta")},
    {Text::CannotStart, QT_TRANSLATE_NOOP("Terminal", "nie można uruchomić: %1")},
    {Text::OutputUnread, QT_TRANSLATE_NOOP("Terminal", "nikt nie czyta tego, co program pisze")},
    {Text::OptionUnknown, QT_TRANSLATE_NOOP("Terminal", "nieznana opcja: %1")},
    {Text::OptionNeedsValue, QT_TRANSLATE_NOOP("Terminal", "opcja %1 wymaga wartości")},
    {Text::OptionTwice, QT_TRANSLATE_NOOP("Terminal", "opcja %1 podana dwa razy")},
    {Text::OptionUnexpected, QT_TRANSLATE_NOOP("Terminal", "niespodziewany argument: %1")},
    {Text::TryHelp, QT_TRANSLATE_NOOP("Terminal", "Wszystkie opcje: oku-terminal --help")},
    {Text::FileUnreadable, QT_TRANSLATE_NOOP("Terminal", "nie można odczytać pliku %1")},
    {Text::AccountRefused, QT_TRANSLATE_NOOP("Terminal", "konto %1: %2")},
    {Text::DeliverySent, QT_TRANSLATE_NOOP("Terminal", "wiadomość %1 do %2 wysłana")},
    {Text::DeliveryUnconfirmed,
     QT_TRANSLATE_NOOP("Terminal",
                       "wiadomość %1 do %2 nie została potwierdzona: połączenie zerwało się po jej wysłaniu")},
    {Text::DeliveryFailed, QT_TRANSLATE_NOOP("Terminal", "wiadomość %1 do %2 nie została dostarczona")},
    {Text::DeliveryCancelled, QT_TRANSLATE_NOOP("Terminal", "wiadomość %1 do %2 została wycofana")},
    {Text::DeliveryQueued, QT_TRANSLATE_NOOP("Terminal", "wiadomość %1 do %2 czeka na zalogowanie")},
    {Text::CertificateNotice, QT_TRANSLATE_NOOP("Terminal", "certyfikat serwera %1 odrzucony: %2; odcisk SHA-256: %3")},
    {Text::StatusOnline, QT_TRANSLATE_NOOP("Terminal", "dostępny")},
    {Text::StatusChat, QT_TRANSLATE_NOOP("Terminal", "chętny do rozmowy")},
    {Text::StatusDnd, QT_TRANSLATE_NOOP("Terminal", "zajęty")},
    {Text::StatusAway, QT_TRANSLATE_NOOP("Terminal", "zaraz wraca")},
    {Text::StatusXa, QT_TRANSLATE_NOOP("Terminal", "wróci później")},
    {Text::StatusInvisible, QT_TRANSLATE_NOOP("Terminal", "niewidoczny")},
    {Text::StatusOffline, QT_TRANSLATE_NOOP("Terminal", "niedostępny")},
    {Text::StatusError, QT_TRANSLATE_NOOP("Terminal", "błąd")},
    {Text::ConnectionOffline, QT_TRANSLATE_NOOP("Terminal", "rozłączony")},
    {Text::ConnectionConnecting, QT_TRANSLATE_NOOP("Terminal", "łączę z serwerem")},
    {Text::ConnectionConnected, QT_TRANSLATE_NOOP("Terminal", "połączony z serwerem")},
    {Text::ConnectionEncrypted, QT_TRANSLATE_NOOP("Terminal", "połączenie jest szyfrowane")},
    {Text::ConnectionAuthorized, QT_TRANSLATE_NOOP("Terminal", "zalogowany")},
    {Text::ConnectionOnline, QT_TRANSLATE_NOOP("Terminal", "gotowy, lista kontaktów pobrana")},
    {Text::NotEncrypted, QT_TRANSLATE_NOOP("Terminal", "bez szyfrowania")},
    {Text::NotJid, QT_TRANSLATE_NOOP("Terminal", "\"%1\" nie jest adresem (kto@serwer)")},
    {Text::TextCut, QT_TRANSLATE_N_NOOP("Terminal", "… (całość: %n znaków, zobacz /export)")},
    {Text::ScrolledBack, QT_TRANSLATE_N_NOOP("Terminal", "↑ %n wierszy wyżej, End wraca")},
    {Text::SearchPrompt, QT_TRANSLATE_NOOP("Terminal", "(szukaj) %1: ")},
    {Text::SearchFailed, QT_TRANSLATE_NOOP("Terminal", "(szukaj: brak) %1: ")},
    {Text::Welcome, QT_TRANSLATE_NOOP("Terminal", "oku-terminal. Polecenia: /help, koniec: /quit")},
    {Text::NoAccountYet, QT_TRANSLATE_NOOP("Terminal", "nie ma jeszcze konta; dodaje je /account add ty@serwer")},
    {Text::AccountChosen, QT_TRANSLATE_NOOP("Terminal", "konto poleceń: %1 (łączy /online)")},
    {Text::AccountIsThere, QT_TRANSLATE_NOOP("Terminal", "konto %1 zapisane")},
    {Text::NoSuchAccount, QT_TRANSLATE_NOOP("Terminal", "nie ma konta \"%1\"; lista: /account")},
    {Text::Ending, QT_TRANSLATE_NOOP("Terminal", "kończę…")},
    {Text::NoConversation, QT_TRANSLATE_NOOP("Terminal", "nie ma otwartej rozmowy; otwiera ją /chat-with KTO")},
    {Text::SecretCancelled, QT_TRANSLATE_NOOP("Terminal", "przerwane")},
    {Text::PasswordQuestion, QT_TRANSLATE_NOOP("Terminal", "hasło do %1 (nie będzie widoczne)")},
    {Text::PasswordTaken, QT_TRANSLATE_NOOP("Terminal", "hasło do %1 przyjęte")},
    {Text::NoSuchContact, QT_TRANSLATE_NOOP("Terminal", "nie ma kontaktu \"%1\"")},
    {Text::ManyContacts, QT_TRANSLATE_NOOP("Terminal", "\"%1\" pasuje do kilku kontaktów: %2")},
    {Text::OwnStatus, QT_TRANSLATE_NOOP("Terminal", "Twój status: %1")},
    {Text::ContactAdded, QT_TRANSLATE_NOOP("Terminal", "nowy kontakt: %1 <%2> w grupie %3")},
    {Text::ContactRenamed, QT_TRANSLATE_NOOP("Terminal", "kontakt %1 nazywa się teraz %2")},
    {Text::ContactMoved, QT_TRANSLATE_NOOP("Terminal", "kontakt %1 jest teraz w grupie %2")},
    {Text::ContactSubscription, QT_TRANSLATE_NOOP("Terminal", "kontakt %1: %2")},
    {Text::ContactRemoved, QT_TRANSLATE_NOOP("Terminal", "kontakt usunięty: %1 <%2>")},
    {Text::SubscriptionNone, QT_TRANSLATE_NOOP("Terminal", "nie widzicie się nawzajem")},
    {Text::SubscriptionFrom, QT_TRANSLATE_NOOP("Terminal", "widzi Cię, Ty jego nie")},
    {Text::SubscriptionTo, QT_TRANSLATE_NOOP("Terminal", "Ty go widzisz, on Ciebie nie")},
    {Text::SubscriptionBoth, QT_TRANSLATE_NOOP("Terminal", "widzicie się nawzajem")},
    {Text::SubscriptionUnknown, QT_TRANSLATE_NOOP("Terminal", "autoryzacja nieznana")},
    {Text::SubscriptionWaiting, QT_TRANSLATE_NOOP("Terminal", "czeka na zgodę")},
    {Text::WithSubject, QT_TRANSLATE_NOOP("Terminal", "[%1] %2")},
    {Text::WrittenAt, QT_TRANSLATE_NOOP("Terminal", "(napisane %1) %2")},
    {Text::StillQueued, QT_TRANSLATE_NOOP("Terminal", "(czeka na zalogowanie) %1")},
    {Text::StillUnconfirmed, QT_TRANSLATE_NOOP("Terminal", "(niepotwierdzona, nr %1) %2")},
    {Text::ResendHint, QT_TRANSLATE_NOOP("Terminal", "/resend %1 wysyła ponownie")},
    {Text::IsTyping, QT_TRANSLATE_NOOP("Terminal", "%1 pisze…")},
    {Text::WantsPresence,
     QT_TRANSLATE_NOOP("Terminal", "%1 prosi o autoryzację, chce widzieć Twoją obecność: /authorize %2 albo /deny %2")},
    {Text::AnswerHint, QT_TRANSLATE_NOOP("Terminal", "odpowiedz: /answer %1 yes albo /answer %1 no")},
    {Text::PinHint, QT_TRANSLATE_NOOP("Terminal", "/pin przyjmuje ten certyfikat na stałe; potem /online")},
    {Text::InfoPresence, QT_TRANSLATE_NOOP("Terminal", "obecność")},
    {Text::InfoPriority, QT_TRANSLATE_NOOP("Terminal", "priorytet")},
    {Text::InfoChanged, QT_TRANSLATE_NOOP("Terminal", "ostatnia zmiana")},
    {Text::InfoClient, QT_TRANSLATE_NOOP("Terminal", "program")},
    {Text::InfoSystem, QT_TRANSLATE_NOOP("Terminal", "system")},
    {Text::InfoFeatures, QT_TRANSLATE_NOOP("Terminal", "możliwości")},
    {Text::InfoDone, QT_TRANSLATE_NOOP("Terminal", "%1: to wszystko, co wiadomo")},
    {Text::MainTitle, QT_TRANSLATE_NOOP("Terminal", "oku-terminal · wszystkie zdarzenia")},
    {Text::MainWindow, QT_TRANSLATE_NOOP("Terminal", "główne")},
    {Text::NotOnRoster, QT_TRANSLATE_NOOP("Terminal", "spoza listy kontaktów")},
    {Text::Strangers, QT_TRANSLATE_NOOP("Terminal", "nieznajomi")},
    {Text::StrangersTitle, QT_TRANSLATE_NOOP("Terminal", "nieznajomi · odpowiedź: /chat-with ADRES")},
    {Text::UnknownCommand, QT_TRANSLATE_NOOP("Terminal", "nie ma polecenia /%1; lista: /help")},
    {Text::Usage, QT_TRANSLATE_NOOP("Terminal", "użycie:")},
    {Text::HelpKeys,
     QT_TRANSLATE_NOOP(
         "Terminal",
         "Tab uzupełnia; ↑ ↓ wcześniejsze wiersze, Ctrl-R szuka w nich\nAlt-Enter nowy wiersz; // na początku: tekst z "
         "ukośnikiem\nPgUp PgDn przewija; Alt-0…9 okna, Alt-↑ Alt-↓ sąsiednie, Alt-A następne nieprzeczytane\n"
         "F2 lista kontaktów, F3 wchodzi do niej (strzałki, Enter), F4 tylko dostępni\nCtrl-L rysuje od nowa; Ctrl-C "
         "przerywa; Ctrl-D kończy")},
    {Text::ConsoleOn, QT_TRANSLATE_NOOP("Terminal", "konsola XML włączona (okno główne); hasła są zakryte")},
    {Text::ConsoleOff, QT_TRANSLATE_NOOP("Terminal", "konsola XML wyłączona")},
    {Text::NoQuestion, QT_TRANSLATE_NOOP("Terminal", "nie ma otwartego pytania")},
    {Text::Answered, QT_TRANSLATE_NOOP("Terminal", "odpowiedź na pytanie %1: %2")},
    {Text::SettingUnset, QT_TRANSLATE_NOOP("Terminal", "(domyślne)")},
    {Text::SettingsLeft, QT_TRANSLATE_N_NOOP("Terminal", "… i %n ustawień domyślnych: /get all, /get CZĘŚĆ")},
    {Text::UnknownSetting, QT_TRANSLATE_NOOP("Terminal", "nie ma ustawienia \"%1\"; lista: /get all")},
    {Text::TypingOn, QT_TRANSLATE_NOOP("Terminal", "powiadomienia o pisaniu będą wysyłane")},
    {Text::TypingOff, QT_TRANSLATE_NOOP("Terminal", "powiadomienia o pisaniu nie będą wysyłane")},
    {Text::NoCertificate, QT_TRANSLATE_NOOP("Terminal", "żaden certyfikat nie został odrzucony")},
    {Text::Pinned, QT_TRANSLATE_NOOP("Terminal", "certyfikat przyjęty: %1")},
    {Text::PinTakenBack, QT_TRANSLATE_NOOP("Terminal", "zapamiętany certyfikat odwołany")},
    {Text::RosterEmpty, QT_TRANSLATE_NOOP("Terminal", "lista kontaktów jest pusta; kontakt dodaje /add")},
    {Text::RosterNoneFits, QT_TRANSLATE_NOOP("Terminal", "żaden kontakt nie pasuje")},
    {Text::RosterGroup, QT_TRANSLATE_NOOP("Terminal", "%1 (%2/%3)")},
    {Text::NoResource, QT_TRANSLATE_NOOP("Terminal", "bez nazwy")},
    {Text::AskedForPresence, QT_TRANSLATE_NOOP("Terminal", "poproszono %1 o autoryzację")},
    {Text::NoRequests, QT_TRANSLATE_NOOP("Terminal", "nikt nie prosi o autoryzację")},
    {Text::ManyRequests, QT_TRANSLATE_NOOP("Terminal", "kilka osób prosi o autoryzację, podaj jedną: %1")},
    {Text::Authorized, QT_TRANSLATE_NOOP("Terminal", "%1 będzie widzieć Twoją obecność")},
    {Text::AuthorizedAndAsked,
     QT_TRANSLATE_NOOP("Terminal", "%1 będzie widzieć Twoją obecność; wysłano prośbę o wzajemność")},
    {Text::Denied, QT_TRANSLATE_NOOP("Terminal", "odmówiono: %1")},
    {Text::PaneHint,
     QT_TRANSLATE_NOOP("Terminal", "Enter otwiera, Esc wraca, Spacja zwija grupę, F4 tylko dostępni, F2 chowa listę")},
    {Text::PaneNeedsScreen,
     QT_TRANSLATE_NOOP("Terminal", "lista obok rozmów jest tylko na ekranie; tutaj wypisuje ją /roster")},
    {Text::NothingUnread, QT_TRANSLATE_NOOP("Terminal", "nie ma nieprzeczytanych wiadomości")},
    {Text::NewMessages, QT_TRANSLATE_NOOP("Terminal", "nowe wiadomości")},
    {Text::NoSuchWindow, QT_TRANSLATE_NOOP("Terminal", "nie ma okna \"%1\"")},
    {Text::HistoryEmpty, QT_TRANSLATE_NOOP("Terminal", "brak wiadomości")},
    {Text::Exported, QT_TRANSLATE_NOOP("Terminal", "historia zapisana: %1")},
    {Text::ExportExists, QT_TRANSLATE_NOOP("Terminal", "plik %1 już jest. Zastąpić go? Jeśli tak, powtórz polecenie.")},
    {Text::NothingWaits, QT_TRANSLATE_NOOP("Terminal", "w tej rozmowie żadna wiadomość nie czeka")},
    {Text::AccountGone, QT_TRANSLATE_NOOP("Terminal", "usunięto konto %1")},
    {Text::HowToQuit, QT_TRANSLATE_NOOP("Terminal", "program kończy /quit albo Ctrl-D")},
});

constexpr bool inOrder() {
    for (std::size_t at = 0; at < kTexts.size(); ++at)
        if (kTexts[at].id != static_cast<Text>(at)) return false;
    return kTexts.size() == static_cast<std::size_t>(Text::Count);
}
static_assert(inOrder(), "each text has its row, in the order of the enumeration");

const char* sourceOf(Text id) { return kTexts[static_cast<std::size_t>(id)].source; }

}  // namespace

QString say(Text id) { return QCoreApplication::translate("Terminal", sourceOf(id)); }

QString sayCounted(Text id, qsizetype count) {
    return QCoreApplication::translate("Terminal", sourceOf(id), nullptr, static_cast<int>(count));
}

}  // namespace oku::terminal
