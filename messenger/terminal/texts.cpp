#include "messenger/terminal/texts.h"

#include <array>

#include "messenger/core/texts.h"

namespace oku::terminal {
namespace {

constexpr std::array kTexts = std::to_array<TextRow>({
    {Text::JsonLineTooLong, {"wiersz jest dłuższy niż 16 MiB", "the line is longer than 16 MiB"}},
    {Text::JsonSyntax, {"to nie jest JSON: %1 (bajt %2)", "not JSON: %1 (byte %2)"}},
    {Text::JsonNoObject, {"polecenie musi być obiektem", "a command must be an object"}},
    {Text::JsonNoCommand, {"brak pola \"cmd\" albo nie jest tekstem", "the field \"cmd\" is missing or not a text"}},
    {Text::JsonUnknownCommand, {"nieznane polecenie \"%1\"", "unknown command \"%1\""}},
    {Text::JsonFieldMissing, {"brak pola \"%1\"", "the field \"%1\" is missing"}},
    {Text::JsonFieldType, {"pole \"%1\" musi mieć wartość: %2", "the field \"%1\" must be %2"}},
    {Text::JsonTypeText, {"tekst", "a text"}},
    {Text::JsonTypeWhole, {"liczba całkowita", "a whole number"}},
    {Text::JsonTypeFlag, {"true lub false", "true or false"}},
    {Text::JsonTypeObject, {"obiekt", "an object"}},
    {Text::JsonTypeAny, {"tekst, liczba, true lub false", "a text, a number, true or false"}},
    {Text::JsonEnding, {"program kończy pracę", "the program is ending"}},
    {Text::BadStatus,
     {"nieznany status \"%1\" (możliwe: online chat dnd away xa invisible offline)",
      "unknown status \"%1\" (one of: online chat dnd away xa invisible offline)"}},
    {Text::BadKind, {"nieznany rodzaj \"%1\" (możliwe: chat normal)", "unknown kind \"%1\" (one of: chat normal)"}},
    {Text::BadLimit, {"liczba wiadomości musi być większa od zera", "the number of messages must be above zero"}},
    {Text::BadButton, {"nieznana odpowiedź \"%1\" (możliwe: ok yes no)", "unknown answer \"%1\" (one of: ok yes no)"}},
    {Text::BadNumber, {"\"%1\" nie jest liczbą całkowitą", "\"%1\" is not a whole number"}},
    {Text::NoAccount, {"nie ma jeszcze żadnego konta", "there is no account yet"}},
    {Text::CannotStart, {"nie można uruchomić: %1", "cannot start: %1"}},
    {Text::OptionUnknown, {"nieznana opcja: %1", "unknown option: %1"}},
    {Text::OptionNeedsValue, {"opcja %1 wymaga wartości", "the option %1 needs a value"}},
    {Text::OptionTwice, {"opcja %1 podana dwa razy", "the option %1 is given twice"}},
    {Text::OptionUnexpected, {"niespodziewany argument: %1", "unexpected argument: %1"}},
    {Text::TryHelp, {"Wszystkie opcje: oku-terminal --help", "All options: oku-terminal --help"}},
    {Text::FileUnreadable, {"nie można odczytać pliku %1", "cannot read the file %1"}},
    {Text::AccountRefused, {"konto %1: %2", "account %1: %2"}},
    {Text::DeliverySent, {"wiadomość %1 do %2 wysłana", "message %1 to %2 was sent"}},
    {Text::DeliveryUnconfirmed,
     {"wiadomość %1 do %2 nie została potwierdzona: połączenie zerwało się po jej wysłaniu",
      "message %1 to %2 is not confirmed: the connection broke after it was sent"}},
    {Text::DeliveryFailed, {"wiadomość %1 do %2 nie została dostarczona", "message %1 to %2 was not delivered"}},
    {Text::DeliveryQueued, {"wiadomość %1 do %2 czeka na zalogowanie", "message %1 to %2 waits for the next login"}},
    {Text::CertificateNotice,
     {"certyfikat serwera %1 odrzucony: %2; odcisk SHA-256: %3",
      "the certificate of %1 was refused: %2; SHA-256 fingerprint: %3"}},
    {Text::StatusOnline, {"dostępny", "available"}},
    {Text::StatusChat, {"chętny do rozmowy", "free for chat"}},
    {Text::StatusDnd, {"zajęty", "busy"}},
    {Text::StatusAway, {"zaraz wraca", "away"}},
    {Text::StatusXa, {"wróci później", "away for long"}},
    {Text::StatusInvisible, {"niewidoczny", "invisible"}},
    {Text::StatusOffline, {"niedostępny", "offline"}},
    {Text::StatusError, {"błąd", "error"}},
    {Text::ConnectionOffline, {"rozłączony", "offline"}},
    {Text::ConnectionConnecting, {"łączę z serwerem", "connecting to the server"}},
    {Text::ConnectionConnected, {"połączony z serwerem", "connected to the server"}},
    {Text::ConnectionEncrypted, {"połączenie jest szyfrowane", "the connection is encrypted"}},
    {Text::ConnectionAuthorized, {"zalogowany", "logged in"}},
    {Text::ConnectionOnline, {"gotowy, lista kontaktów pobrana", "ready, the contact list is here"}},
    {Text::NotJid, {"\"%1\" nie jest adresem (kto@serwer)", "\"%1\" is not an address (user@server)"}},
    {Text::TextCut, {"… (całość: %1 znaków, zobacz /export)", "… (%1 characters in all, see /export)"}},
    {Text::ScrolledBack, {"↑ %1 wierszy wyżej, End wraca", "↑ %1 lines up, End returns"}},
    {Text::SearchPrompt, {"(szukaj) %1: ", "(search) %1: "}},
    {Text::Welcome, {"oku-terminal. Polecenia: /help, koniec: /quit", "oku-terminal. Commands: /help, end: /quit"}},
    {Text::NoAccountYet,
     {"nie ma jeszcze konta; dodaje je /account add ty@serwer",
      "there is no account yet; /account add you@server adds one"}},
    {Text::AccountChosen, {"konto poleceń: %1 (łączy /online)", "commands mean the account %1 (/online connects)"}},
    {Text::AccountIsThere, {"konto %1 zapisane", "account %1 saved"}},
    {Text::NoSuchAccount, {"nie ma konta \"%1\"; lista: /account", "there is no account \"%1\"; list: /account"}},
    {Text::Ending, {"kończę…", "ending…"}},
    {Text::NoConversation,
     {"nie ma otwartej rozmowy; otwiera ją /chat-with KTO", "no conversation is open; /chat-with WHO opens one"}},
    {Text::SecretCancelled, {"przerwane", "cancelled"}},
    {Text::PasswordQuestion, {"hasło do %1 (nie będzie widoczne)", "password of %1 (not shown)"}},
    {Text::NoSuchContact, {"nie ma kontaktu \"%1\"", "there is no contact \"%1\""}},
    {Text::ManyContacts, {"\"%1\" pasuje do kilku kontaktów: %2", "\"%1\" fits several contacts: %2"}},
    {Text::OwnStatus, {"Twój status: %1", "your status: %1"}},
    {Text::ContactAdded, {"nowy kontakt: %1 <%2> w grupie %3", "new contact: %1 <%2> in the group %3"}},
    {Text::ContactRenamed, {"kontakt %1 nazywa się teraz %2", "the contact %1 is now called %2"}},
    {Text::ContactMoved, {"kontakt %1 jest teraz w grupie %2", "the contact %1 is now in the group %2"}},
    {Text::ContactSubscription, {"kontakt %1: %2", "contact %1: %2"}},
    {Text::ContactRemoved, {"kontakt usunięty: %1 <%2>", "contact removed: %1 <%2>"}},
    {Text::SubscriptionNone, {"nie widzicie się nawzajem", "you do not see each other"}},
    {Text::SubscriptionFrom, {"widzi Cię, Ty jego nie", "sees you, you do not see them"}},
    {Text::SubscriptionTo, {"Ty go widzisz, on Ciebie nie", "you see them, they do not see you"}},
    {Text::SubscriptionBoth, {"widzicie się nawzajem", "you see each other"}},
    {Text::SubscriptionUnknown, {"autoryzacja nieznana", "authorization unknown"}},
    {Text::SubscriptionWaiting, {"czeka na zgodę", "waits for consent"}},
    {Text::WithSubject, {"[%1] %2", "[%1] %2"}},
    {Text::WrittenAt, {"(napisane %1) %2", "(written %1) %2"}},
    {Text::StillQueued, {"(czeka na zalogowanie) %1", "(waits for the next login) %1"}},
    {Text::StillUnconfirmed, {"(niepotwierdzona, nr %1) %2", "(not confirmed, no. %1) %2"}},
    {Text::ResendHint, {"/resend %1 wysyła ponownie", "/resend %1 sends it again"}},
    {Text::IsTyping, {"%1 pisze…", "%1 is writing…"}},
    {Text::WantsPresence,
     {"%1 prosi o autoryzację, chce widzieć Twoją obecność: /authorize %2 albo /deny %2",
      "%1 asks for authorization to see your presence: /authorize %2 or /deny %2"}},
    {Text::AnswerHint, {"odpowiedz: /answer %1 yes albo /answer %1 no", "answer: /answer %1 yes or /answer %1 no"}},
    {Text::PinHint,
     {"/pin przyjmuje ten certyfikat na stałe; potem /online",
      "/pin accepts this certificate from now on; then /online"}},
    {Text::InfoPresence, {"obecność", "presence"}},
    {Text::InfoPriority, {"priorytet", "priority"}},
    {Text::InfoChanged, {"ostatnia zmiana", "last change"}},
    {Text::InfoClient, {"program", "client"}},
    {Text::InfoSystem, {"system", "system"}},
    {Text::InfoFeatures, {"możliwości", "features"}},
    {Text::InfoDone, {"%1: to wszystko, co wiadomo", "%1: that is all that is known"}},
    {Text::MainTitle, {"oku-terminal · wszystkie zdarzenia", "oku-terminal · all events"}},
    {Text::MainWindow, {"główne", "main"}},
    {Text::NotOnRoster, {"spoza listy kontaktów", "not on the contact list"}},
    {Text::UnknownCommand, {"nie ma polecenia /%1; lista: /help", "there is no command /%1; list: /help"}},
    {Text::Usage, {"użycie:", "usage:"}},
    {Text::HelpKeys,
     {"Tab uzupełnia; ↑ ↓ wcześniejsze wiersze, Ctrl-R szuka w nich\nAlt-Enter nowy wiersz; // na początku: tekst z "
      "ukośnikiem\nPgUp PgDn przewija; Alt-0…9 okna, Alt-A następne nieprzeczytane\nCtrl-L rysuje od nowa; Ctrl-C "
      "przerywa; Ctrl-D kończy",
      "Tab completes; ↑ ↓ earlier lines, Ctrl-R searches them\nAlt-Enter new line; // in front: a text with a "
      "slash\nPgUp PgDn scroll; Alt-0…9 windows, Alt-A next unread\nCtrl-L redraws; Ctrl-C cancels; Ctrl-D ends"}},
    {Text::ConsoleOn, {"konsola XML włączona; hasła są zakryte", "the XML console is on; passwords are masked"}},
    {Text::ConsoleOff, {"konsola XML wyłączona", "the XML console is off"}},
    {Text::NoQuestion, {"nie ma otwartego pytania", "no question is open"}},
    {Text::SettingUnset, {"(domyślne)", "(default)"}},
    {Text::UnknownSetting, {"nie ma ustawienia \"%1\"; lista: /get", "there is no setting \"%1\"; list: /get"}},
    {Text::TypingOn, {"powiadomienia o pisaniu będą wysyłane", "typing notices will be sent"}},
    {Text::TypingOff, {"powiadomienia o pisaniu nie będą wysyłane", "no typing notices will be sent"}},
    {Text::NoCertificate, {"żaden certyfikat nie został odrzucony", "no certificate was refused"}},
    {Text::Pinned, {"certyfikat przyjęty: %1", "certificate accepted: %1"}},
    {Text::PinTakenBack, {"zapamiętany certyfikat odwołany", "the accepted certificate is taken back"}},
    {Text::RosterEmpty,
     {"lista kontaktów jest pusta; kontakt dodaje /add", "the contact list is empty; /add adds a contact"}},
    {Text::RosterNoneFits, {"żaden kontakt nie pasuje", "no contact fits"}},
    {Text::RosterGroup, {"%1 (%2/%3)", "%1 (%2/%3)"}},
    {Text::NoResource, {"bez nazwy", "no name"}},
    {Text::AskedForPresence, {"poproszono %1 o autoryzację", "asked %1 for authorization"}},
    {Text::NoRequests, {"nikt nie prosi o autoryzację", "nobody asks for authorization"}},
    {Text::ManyRequests,
     {"kilka osób prosi o autoryzację, podaj jedną: %1", "several people ask for authorization, name one: %1"}},
    {Text::Authorized, {"%1 będzie widzieć Twoją obecność", "%1 will see your presence"}},
    {Text::AuthorizedAndAsked,
     {"%1 będzie widzieć Twoją obecność; wysłano prośbę o wzajemność",
      "%1 will see your presence, and was asked for the same"}},
    {Text::Denied, {"odmówiono: %1", "refused: %1"}},
    {Text::NothingUnread, {"nie ma nieprzeczytanych wiadomości", "nothing is unread"}},
    {Text::NoSuchWindow, {"nie ma okna \"%1\"", "there is no window \"%1\""}},
    {Text::HistoryEmpty, {"brak wiadomości", "no messages"}},
    {Text::Exported, {"historia zapisana: %1", "history written: %1"}},
    {Text::HowToQuit, {"program kończy /quit albo Ctrl-D", "/quit or Ctrl-D ends the program"}},
});

constexpr bool inOrder() {
    for (std::size_t at = 0; at < kTexts.size(); ++at)
        if (kTexts[at].id != static_cast<Text>(at)) return false;
    return kTexts.size() == static_cast<std::size_t>(Text::Count);
}
static_assert(inOrder(), "each text has its row, in the order of the enumeration");

Language chosen = Language::Polish;

}  // namespace

Language languageOfEnvironment() { return speaksPolish() ? Language::Polish : Language::English; }

void setLanguage(Language language) { chosen = language; }
Language language() { return chosen; }

QString say(const Words& words) {
    return QString::fromUtf8(chosen == Language::English ? words.english : words.polish);
}

std::span<const TextRow> allTexts() { return kTexts; }

QString say(Text id) { return say(kTexts[static_cast<std::size_t>(id)].words); }

}  // namespace oku::terminal
