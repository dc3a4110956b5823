<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_GB" sourcelanguage="pl_PL">
<context>
    <name>CardFields</name>
    <message>
        <source>pseudonim</source>
        <translation>nickname</translation>
    </message>
    <message>
        <source>imię</source>
        <translation>given name</translation>
    </message>
    <message>
        <source>nazwisko</source>
        <translation>family name</translation>
    </message>
    <message>
        <source>e-mail</source>
        <translation>e-mail</translation>
    </message>
    <message>
        <source>strona WWW</source>
        <translation>web page</translation>
    </message>
    <message>
        <source>tytuł</source>
        <translation>title</translation>
    </message>
    <message>
        <source>rola</source>
        <translation>role</translation>
    </message>
    <message>
        <source>urodziny</source>
        <translation>birthday</translation>
    </message>
    <message>
        <source>nazwa</source>
        <translation>name</translation>
    </message>
    <message>
        <source>zdjęcie</source>
        <translation>photo</translation>
    </message>
    <message>
        <source>drugie imię</source>
        <translation>middle name</translation>
    </message>
    <message>
        <source>adres</source>
        <translation>address</translation>
    </message>
    <message>
        <source>telefon</source>
        <translation>telephone</translation>
    </message>
    <message>
        <source>kolejny e-mail</source>
        <translation>another e-mail</translation>
    </message>
    <message>
        <source>organizacja</source>
        <translation>organisation</translation>
    </message>
    <message>
        <source>opis</source>
        <translation>description</translation>
    </message>
</context>
<context>
    <name>Cards</name>
    <message>
        <source>Zbyt wiele wizytówek naraz; poczekaj na poprzednie.</source>
        <translation>Too many cards at once; wait for those before.</translation>
    </message>
    <message>
        <source>Wizytówka nie ma pola %1.</source>
        <translation>A card has no field %1.</translation>
    </message>
    <message>
        <source>Pole %1 jest za długie (najwyżej %2 znaków).</source>
        <translation>The field %1 is too long (at most %2 characters).</translation>
    </message>
    <message>
        <source>Nie ma własnego obrazka.</source>
        <translation>There is no own picture.</translation>
    </message>
    <message>
        <source>Obrazek zmieni się, gdy skończy się logowanie; spróbuj potem.</source>
        <translation>The picture changes when the login is over; try again then.</translation>
    </message>
    <message>
        <source>To konto zajmuje się jeszcze swoją wizytówką albo obrazkiem.</source>
        <translation>This account is still busy with its card or picture.</translation>
    </message>
    <message>
        <source>Serwer nie podał wizytówki.</source>
        <translation>The server did not give the card.</translation>
    </message>
    <message>
        <source>Nie można odczytać pliku %1 albo ma ponad 4 MiB.</source>
        <translation>The file %1 cannot be read, or is larger than 4 MiB.</translation>
    </message>
    <message>
        <source>Pobrany obrazek jest pusty albo ma ponad 4 MiB.</source>
        <translation>The fetched picture is empty, or larger than 4 MiB.</translation>
    </message>
    <message>
        <source>Brak programu oku-picture, więc obrazki nie są odczytywane.</source>
        <translation>The program oku-picture is missing, so no pictures are read.</translation>
    </message>
    <message>
        <source>To nie jest obrazek PNG, JPEG, GIF, WebP ani BMP o boku do 4096 punktów.</source>
        <translation>This is no PNG, JPEG, GIF, WebP or BMP picture with sides of at most 4096 points.</translation>
    </message>
    <message>
        <source>Nie można zapisać obrazka: %1. Poprzedni zostaje.</source>
        <translation>The picture cannot be written: %1. The one before stays.</translation>
    </message>
    <message>
        <source>Serwer nie odpowiedział.</source>
        <translation>The server did not answer.</translation>
    </message>
    <message>
        <source>Nie można usunąć obrazka %1</source>
        <translation>The picture %1 cannot be removed</translation>
    </message>
    <message>
        <source>Obrazek usunięto, zanim nowy został odczytany.</source>
        <translation>The picture was removed before the new one had been read.</translation>
    </message>
</context>
<context>
    <name>Certificates</name>
    <message>
        <source>Certyfikat serwera %1 jest niepoprawny. %2
Wystawiony dla: %3
Wystawca: %4
SHA-256: %5
Czy zaufać temu certyfikatowi na stałe na tym koncie?</source>
        <translation>The certificate of the server %1 is not valid. %2
Issued to: %3
Issuer: %4
SHA-256: %5
Trust this certificate on this account from now on?</translation>
    </message>
    <message>
        <source>Certyfikat serwera</source>
        <translation>Server certificate</translation>
    </message>
</context>
<context>
    <name>Commands</name>
    <message>
        <source>[OPIS]</source>
        <translation>[DESCRIPTION]</translation>
    </message>
    <message>
        <source>KTO</source>
        <translation>WHO</translation>
    </message>
    <message>
        <source>[KTO]</source>
        <translation>[WHO]</translation>
    </message>
    <message>
        <source>[POLECENIE]</source>
        <translation>[COMMAND]</translation>
    </message>
    <message>
        <source>lista poleceń albo opis jednego</source>
        <translation>all commands, or one of them</translation>
    </message>
    <message>
        <source>status: dostępny (łączy z serwerem)</source>
        <translation>status: available (connects)</translation>
    </message>
    <message>
        <source>status: chętny do rozmowy</source>
        <translation>status: free for chat</translation>
    </message>
    <message>
        <source>status: zaraz wracam</source>
        <translation>status: away</translation>
    </message>
    <message>
        <source>status: wrócę później</source>
        <translation>status: away for long</translation>
    </message>
    <message>
        <source>status: zajęty</source>
        <translation>status: busy</translation>
    </message>
    <message>
        <source>status: niewidoczny</source>
        <translation>status: invisible</translation>
    </message>
    <message>
        <source>rozłącza</source>
        <translation>disconnects</translation>
    </message>
    <message>
        <source>[online | GRUPA | TEKST]</source>
        <translation>[online | GROUP | TEXT]</translation>
    </message>
    <message>
        <source>kontakty według grup, z każdym zasobem</source>
        <translation>contacts by groups, with each resource</translation>
    </message>
    <message>
        <source>JID [NAZWA [GRUPA]]</source>
        <translation>JID [NAME [GROUP]]</translation>
    </message>
    <message>
        <source>dodaje kontakt i prosi o jego obecność</source>
        <translation>adds a contact and asks for its presence</translation>
    </message>
    <message>
        <source>KTO NAZWA</source>
        <translation>WHO NAME</translation>
    </message>
    <message>
        <source>zmienia nazwę kontaktu</source>
        <translation>renames a contact</translation>
    </message>
    <message>
        <source>KTO GRUPA</source>
        <translation>WHO GROUP</translation>
    </message>
    <message>
        <source>przenosi kontakt do grupy</source>
        <translation>moves a contact to a group</translation>
    </message>
    <message>
        <source>usuwa kontakt z listy</source>
        <translation>takes a contact off the list</translation>
    </message>
    <message>
        <source>prosi o obecność kontaktu</source>
        <translation>asks for a contact&apos;s presence</translation>
    </message>
    <message>
        <source>[KTO] [ask]</source>
        <translation>[WHO] [ask]</translation>
    </message>
    <message>
        <source>pozwala widzieć Twoją obecność; ask: i prosi o wzajemność</source>
        <translation>lets somebody see your presence; ask: and asks in return</translation>
    </message>
    <message>
        <source>odmawia prośbie o obecność</source>
        <translation>refuses a request for your presence</translation>
    </message>
    <message>
        <source>KTO TEKST</source>
        <translation>WHO TEXT</translation>
    </message>
    <message>
        <source>wysyła jedną wiadomość</source>
        <translation>sends one message</translation>
    </message>
    <message>
        <source>TEKST</source>
        <translation>TEXT</translation>
    </message>
    <message>
        <source>wysyła w rozmowie, co robisz</source>
        <translation>says in a conversation what you do</translation>
    </message>
    <message>
        <source>KTO [TEKST]</source>
        <translation>WHO [TEXT]</translation>
    </message>
    <message>
        <source>otwiera rozmowę; zwykłe wiersze idą odtąd do niej</source>
        <translation>opens a conversation; plain lines go there from now on</translation>
    </message>
    <message>
        <source>zamyka rozmowę</source>
        <translation>closes the conversation</translation>
    </message>
    <message>
        <source>[NUMER]</source>
        <translation>[NUMBER]</translation>
    </message>
    <message>
        <source>pokazuje okno; bez numeru następne nieprzeczytane</source>
        <translation>shows a window; without a number the next unread one</translation>
    </message>
    <message>
        <source>[KTO] [LICZBA | TEKST]</source>
        <translation>[WHO] [NUMBER | TEXT]</translation>
    </message>
    <message>
        <source>ostatnie wiadomości albo te z tekstem</source>
        <translation>the last messages, or those with a text</translation>
    </message>
    <message>
        <source>PLIK [KTO]</source>
        <translation>FILE [WHO]</translation>
    </message>
    <message>
        <source>zapisuje historię do pliku (.json: jako JSON)</source>
        <translation>writes the history to a file (.json: as JSON)</translation>
    </message>
    <message>
        <source>NUMER</source>
        <translation>NUMBER</translation>
    </message>
    <message>
        <source>wysyła ponownie wiadomość bez potwierdzenia</source>
        <translation>sends an unconfirmed message again</translation>
    </message>
    <message>
        <source>program, wersja i możliwości kontaktu</source>
        <translation>a contact&apos;s client, version and features</translation>
    </message>
    <message>
        <source>możliwości serwera</source>
        <translation>the server&apos;s features</translation>
    </message>
    <message>
        <source>[NUMER] ok|yes|no</source>
        <translation>[NUMBER] ok|yes|no</translation>
    </message>
    <message>
        <source>odpowiada na pytanie</source>
        <translation>answers a question</translation>
    </message>
    <message>
        <source>[on|off]</source>
        <translation>[on|off]</translation>
    </message>
    <message>
        <source>konsola XML</source>
        <translation>the XML console</translation>
    </message>
    <message>
        <source>XML</source>
        <translation>XML</translation>
    </message>
    <message>
        <source>wysyła XML</source>
        <translation>sends XML</translation>
    </message>
    <message>
        <source>KLUCZ WARTOŚĆ</source>
        <translation>KEY VALUE</translation>
    </message>
    <message>
        <source>zmienia ustawienie konta</source>
        <translation>changes a setting of the account</translation>
    </message>
    <message>
        <source>czy wysyłać powiadomienia o pisaniu</source>
        <translation>whether typing notices are sent</translation>
    </message>
    <message>
        <source>[ODCISK | off]</source>
        <translation>[FINGERPRINT | off]</translation>
    </message>
    <message>
        <source>przyjmuje odrzucony certyfikat serwera</source>
        <translation>accepts the server&apos;s certificate that was refused</translation>
    </message>
    <message>
        <source>czyści okno</source>
        <translation>clears the window</translation>
    </message>
    <message>
        <source>kończy program</source>
        <translation>ends the program</translation>
    </message>
    <message>
        <source>[CZĘŚĆ | all]</source>
        <translation>[PART | all]</translation>
    </message>
    <message>
        <source>zmienione ustawienia konta, te z częścią nazwy, wszystkie</source>
        <translation>the account&apos;s changed settings, those with the part, all of them</translation>
    </message>
    <message>
        <source>lista kontaktów obok rozmów: jest czy nie, tylko dostępni czy wszyscy</source>
        <translation>the contact list beside the log: there or not, those who can be reached or all</translation>
    </message>
    <message>
        <source>[add JID [SERWER[:PORT]] | password | remove JID [history] | JID | NUMER]</source>
        <translation>[add JID [SERVER[:PORT]] | password | remove JID [history] | JID | NUMBER]</translation>
    </message>
    <message>
        <source>lista kont; dodaje i usuwa konto, zmienia hasło, wybiera konto poleceń</source>
        <translation>lists, adds and removes accounts, changes the password, picks the account of commands</translation>
    </message>
    <message>
        <source>wycofuje wiadomość, która czeka; bez numeru ostatnią w rozmowie</source>
        <translation>takes back a message that waits; without a number the last in the conversation</translation>
    </message>
    <message>
        <source>wizytówka kontaktu</source>
        <translation>a contact&apos;s card</translation>
    </message>
    <message>
        <source>[POLE TEKST | store | forget]</source>
        <translation>[FIELD TEXT | store | forget]</translation>
    </message>
    <message>
        <source>własna wizytówka na serwerze; zmienia pole, zapisuje albo porzuca zmiany</source>
        <translation>the own card on the server; changes a field, stores the changes or drops them</translation>
    </message>
    <message>
        <source>[set PLIK | remove | publish | fetch]</source>
        <translation>[set FILE | remove | publish | fetch]</translation>
    </message>
    <message>
        <source>własny obrazek: pokazuje, ustawia, usuwa, publikuje na serwerze, pobiera stamtąd</source>
        <translation>the own picture: shows, sets, removes it, publishes it on the server, fetches it from there</translation>
    </message>
    <message>
        <source>[KTO] PLIK</source>
        <translation>[WHO] FILE</translation>
    </message>
    <message>
        <source>wysyła plik</source>
        <translation>sends a file</translation>
    </message>
    <message>
        <source>odbiera plik, który ktoś chce przysłać</source>
        <translation>takes a file that somebody offers</translation>
    </message>
    <message>
        <source>odmawia przyjęcia pliku</source>
        <translation>refuses a file</translation>
    </message>
    <message>
        <source>zostawia plik bez odpowiedzi</source>
        <translation>leaves a file unanswered</translation>
    </message>
    <message>
        <source>pliki wysyłane i odbierane</source>
        <translation>files that are sent and received</translation>
    </message>
    <message>
        <source>przerywa przesyłanie pliku</source>
        <translation>ends the transfer of a file</translation>
    </message>
    <message>
        <source>NUMER [PLIK]</source>
        <translation>NUMBER [FILE]</translation>
    </message>
    <message>
        <source>wskazuje plik, o który pyta wtyczka, albo żaden</source>
        <translation>names the file that the plugin asks for, or none</translation>
    </message>
    <message>
        <source>NASTRÓJ [TEKST] | off</source>
        <translation>MOOD [TEXT] | off</translation>
    </message>
    <message>
        <source>pokazuje kontaktom Twój nastrój (nazwy podpowiada Tab)</source>
        <translation>shows the contacts your mood (Tab tells the names)</translation>
    </message>
    <message>
        <source>TYTUŁ [WYKONAWCA [ALBUM]] | off</source>
        <translation>TITLE [ARTIST [ALBUM]] | off</translation>
    </message>
    <message>
        <source>pokazuje kontaktom, czego słuchasz</source>
        <translation>shows the contacts what you listen to</translation>
    </message>
    <message>
        <source>POLE WARTOŚĆ [POLE WARTOŚĆ]... | off</source>
        <translation>FIELD VALUE [FIELD VALUE]... | off</translation>
    </message>
    <message>
        <source>pokazuje kontaktom, gdzie jesteś, na przykład: locality Łódź country Polska</source>
        <translation>shows the contacts where you are, for example: locality London country Britain</translation>
    </message>
    <message>
        <source>otwiera stronę poczty z powiadomienia, off: zamyka je</source>
        <translation>opens the mail page that a notice is about; off: closes the notice</translation>
    </message>
    <message>
        <source>[NUMER [WIERSZ]]</source>
        <translation>[NUMBER [LINE]]</translation>
    </message>
    <message>
        <source>okna wtyczki: lista, albo wejście do jednego (? mówi, co w nim można)</source>
        <translation>the plugin&apos;s windows: a list, or into one of them (? tells what can be done there)</translation>
    </message>
    <message>
        <source>strona opcji konta</source>
        <translation>an account&apos;s page of options</translation>
    </message>
    <message>
        <source>strona właściwości kontaktu, także nowego</source>
        <translation>a contact&apos;s page of properties, also of a new one</translation>
    </message>
    <message>
        <source>otwiera odebrany plik programem systemu</source>
        <translation>opens a received file with the system&apos;s program</translation>
    </message>
    <message>
        <source>[KTO [NUMER] | new]</source>
        <translation>[WHO [NUMBER] | new]</translation>
    </message>
    <message>
        <source>[NUMER | KTO]</source>
        <translation>[NUMBER | WHO]</translation>
    </message>
    <message>
        <source>menu wtyczki: lista, albo wybór pozycji; co wtyczka pozwala zrobić z kontaktem</source>
        <translation>the plugin&apos;s menu: a list, or choose an item; what the plugin lets you do with a contact</translation>
    </message>
</context>
<context>
    <name>ContactList</name>
    <message>
        <source>Nie można zapisać listy kontaktów w pliku %1: %2. Dawny plik zostaje, zapis będzie ponawiany.</source>
        <translation>The contact list cannot be saved in the file %1: %2. The old file stays, and saving will be tried again.</translation>
    </message>
    <message>
        <source>Listy kontaktów %1 nie można odczytać; plik został zachowany jako %2.</source>
        <translation>The contact list %1 cannot be read; the file was kept as %2.</translation>
    </message>
    <message>
        <source>Listy kontaktów %1 nie można odczytać ani odłożyć na bok.</source>
        <translation>The contact list %1 can neither be read nor be put aside.</translation>
    </message>
</context>
<context>
    <name>ContactMenu</name>
    <message>
        <source>Archiwum rozmów</source>
        <translation>Archive of conversations</translation>
    </message>
    <message>
        <source>Wyślij plik</source>
        <translation>Send a file</translation>
    </message>
    <message>
        <source>Wyślij wiadomość</source>
        <translation>Send a message</translation>
    </message>
    <message>
        <source>Rozmawiaj</source>
        <translation>Talk</translation>
    </message>
    <message>
        <source>Usuń z listy</source>
        <translation>Remove from the list</translation>
    </message>
    <message>
        <source>Właściwości</source>
        <translation>Properties</translation>
    </message>
    <message>
        <source>Wizytówka</source>
        <translation>Card</translation>
    </message>
</context>
<context>
    <name>Contacts</name>
    <message>
        <source>Nie ma takiego kontaktu: %1</source>
        <translation>There is no such contact: %1</translation>
    </message>
    <message>
        <source>Konto nie jest połączone.</source>
        <translation>The account is not connected.</translation>
    </message>
    <message>
        <source>To nie jest adres: %1</source>
        <translation>This is not an address: %1</translation>
    </message>
    <message>
        <source>Serwer odmówił zmiany kontaktu %1: %2</source>
        <translation>The server refused to change %1: %2</translation>
    </message>
    <message>
        <source>Nie podano adresu.</source>
        <translation>No address is given.</translation>
    </message>
    <message>
        <source>Na odpowiedź czeka tak wiele próśb o autoryzację, że dalsze nie są pokazywane.</source>
        <translation>So many requests for authorization wait for an answer that further ones are not shown.</translation>
    </message>
</context>
<context>
    <name>Dialogs</name>
    <message>
        <source>Tego pola nie ma w oknie albo nie można tego z nim zrobić.</source>
        <translation>The window has no such field, or this cannot be done with it.</translation>
    </message>
    <message>
        <source>Nie ma takiego okna.</source>
        <translation>There is no such window.</translation>
    </message>
    <message>
        <source>To okno czeka teraz na inne albo na odpowiedź.</source>
        <translation>This window waits for another one or for an answer.</translation>
    </message>
    <message>
        <source>To pole jest teraz nieaktywne.</source>
        <translation>This field is disabled now.</translation>
    </message>
    <message>
        <source>Tekst zawiera znaki, których nie można wysłać.</source>
        <translation>The text has characters that cannot be sent.</translation>
    </message>
    <message>
        <source>Nie ma takiego wiersza.</source>
        <translation>There is no such row.</translation>
    </message>
    <message>
        <source>Nie ma takiej pozycji menu.</source>
        <translation>There is no such menu item.</translation>
    </message>
    <message>
        <source>Nie ma takiej strony.</source>
        <translation>There is no such page.</translation>
    </message>
    <message>
        <source>Ta strona jest pusta.</source>
        <translation>This page is empty.</translation>
    </message>
    <message>
        <source>Tego, co wpisano, nie udało się zapisać.</source>
        <translation>What was entered could not be saved.</translation>
    </message>
</context>
<context>
    <name>History</name>
    <message>
        <source>Nie można otworzyć archiwum rozmów %1: %2</source>
        <translation>The history %1 cannot be opened: %2</translation>
    </message>
    <message>
        <source>napisana %1</source>
        <translation>written %1</translation>
    </message>
    <message>
        <source>Nie zapisano w archiwum rozmów wiadomości: %1.</source>
        <translation>Messages that were not written to the history: %1.</translation>
    </message>
    <message>
        <source>Zbyt wiele wiadomości czeka na zapis w archiwum rozmów; następne nie zostaną w nim zapisane.</source>
        <translation>Too many messages wait to be written to the history; further ones will not be written to it.</translation>
    </message>
    <message>
        <source>Nie można zapisać w archiwum rozmów: %1. Wiadomości są pokazywane, a zapis będzie ponawiany.</source>
        <translation>The history cannot be written: %1. Messages are shown, and writing will be tried again.</translation>
    </message>
    <message>
        <source>Archiwum rozmów znów działa; zapisano to, co czekało.</source>
        <translation>The history works again; what waited is written.</translation>
    </message>
    <message>
        <source>Archiwum rozmów było uszkodzone i zostało zachowane jako %1. Zaczęto nowe; odczytane wiadomości: %2.</source>
        <translation>The history was damaged and is kept as %1. A new one was begun; messages that could be read: %2.</translation>
    </message>
    <message>
        <source>Dysk nie przyjmuje archiwum rozmów: %1</source>
        <translation>The disk does not take the history: %1</translation>
    </message>
    <message>
        <source>Nie można odczytać archiwum rozmów: %1</source>
        <translation>The history cannot be read: %1</translation>
    </message>
    <message>
        <source>pochodzi z nowszej wersji programu</source>
        <translation>it comes from a newer version of the program</translation>
    </message>
    <message>
        <source>Nie można usunąć z archiwum rozmów: %1</source>
        <translation>The history cannot give something up: %1</translation>
    </message>
</context>
<context>
    <name>HostCore</name>
    <message>
        <source>Nie można wejść do katalogu %1</source>
        <translation>The directory %1 cannot be entered</translation>
    </message>
    <message>
        <source>To nie jest poprawny XML: %1</source>
        <translation>This is not well-formed XML: %1</translation>
    </message>
    <message>
        <source>niedozwolony znak</source>
        <translation>a character that is not allowed</translation>
    </message>
    <message>
        <source>Poza elementem nie może stać tekst.</source>
        <translation>No text may stand outside an element.</translation>
    </message>
    <message>
        <source>XMPP nie dopuszcza komentarzy, instrukcji przetwarzania ani deklaracji DOCTYPE.</source>
        <translation>XMPP allows no comments, processing instructions or DOCTYPE declarations.</translation>
    </message>
    <message>
        <source>Nie ma elementu do wysłania.</source>
        <translation>There is no element to send.</translation>
    </message>
    <message>
        <source>Połączenie nie jest szyfrowane, więc zostało zakończone, zanim cokolwiek wysłano.</source>
        <translation>The connection is not encrypted, so it was ended before anything was sent.</translation>
    </message>
    <message>
        <source>Serwer nie dowiódł, że zna hasło tego konta: jego odpowiedź jest błędna.</source>
        <translation>The server did not prove that it knows this account&apos;s password: its answer is wrong.</translation>
    </message>
    <message>
        <source>Serwer nie dowiódł, że zna hasło tego konta, a połączenie nie jest szyfrowane.</source>
        <translation>The server did not prove that it knows this account&apos;s password, and the connection is not encrypted.</translation>
    </message>
    <message>
        <source>Zanim logowanie się skończyło, przyszły dane, o które nikt nie prosił. Zostały odrzucone.</source>
        <translation>Before the login was complete, data came that nobody had asked for. It was rejected.</translation>
    </message>
    <message>
        <source>Zanim połączenie było szyfrowane, przyszły dane, którym nie można ufać. Zostały odrzucone.</source>
        <translation>Before the connection was encrypted, data came that cannot be trusted. It was rejected.</translation>
    </message>
    <message>
        <source>Nie można usunąć pliku %1</source>
        <translation>The file %1 cannot be removed</translation>
    </message>
    <message>
        <source>Połączenie nie jest szyfrowane, a na tym koncie już takie być nie może. Zostało zakończone.</source>
        <translation>The connection is not encrypted, which this account does not allow any more. It was ended.</translation>
    </message>
    <message>
        <source>Serwer odmówił otwarcia sesji.</source>
        <translation>The server refused to open a session.</translation>
    </message>
    <message>
        <source>Nikt nie odpowiedział przez %1 s: %2. Odpowiedź: nie.</source>
        <translation>Nobody answered for %1 s: %2. The answer is no.</translation>
    </message>
    <message>
        <source>Strony WWW pytają dalej; przez 2 minuty dostają bez pytania odpowiedź: nie.</source>
        <translation>Web sites go on asking; for 2 minutes they get a no without a question to you.</translation>
    </message>
    <message>
        <source>Pominięto dalsze komunikaty (%1): %2.</source>
        <translation>Further messages were left out (%1): %2.</translation>
    </message>
</context>
<context>
    <name>Links</name>
    <message>
        <source>Tego adresu nie otwarto: %1</source>
        <translation>This address was not opened: %1</translation>
    </message>
    <message>
        <source>Nie ma programu, który otworzy adres: %1</source>
        <translation>There is no program that opens the address: %1</translation>
    </message>
</context>
<context>
    <name>Messenger</name>
    <message>
        <source>Nie ma takiego konta: %1</source>
        <translation>There is no such account: %1</translation>
    </message>
    <message>
        <source>Wtyczka nie jest wczytana.</source>
        <translation>The plugin is not loaded.</translation>
    </message>
    <message>
        <source>To nie jest adres konta: %1</source>
        <translation>This is not an account&apos;s address: %1</translation>
    </message>
    <message>
        <source>Nie można zapisać konta w pliku %1.</source>
        <translation>The account cannot be written to %1.</translation>
    </message>
    <message>
        <source>Wiadomość jest pusta.</source>
        <translation>The message is empty.</translation>
    </message>
    <message>
        <source>Nie można zapisać wiadomości, więc nie została wysłana.</source>
        <translation>The message cannot be written down, so it was not sent.</translation>
    </message>
    <message>
        <source>Tej wiadomości nie można wysłać ponownie.</source>
        <translation>This message cannot be sent again.</translation>
    </message>
    <message>
        <source>Nie można zapisać pliku %1: %2</source>
        <translation>The file %1 cannot be written: %2</translation>
    </message>
    <message>
        <source>Nie ma takiego pytania, albo nie ma w nim takiej odpowiedzi.</source>
        <translation>There is no such question, or it has no such answer.</translation>
    </message>
    <message>
        <source>Nie ma takiej pozycji menu.</source>
        <translation>There is no such menu item.</translation>
    </message>
    <message>
        <source>To konto nie ma okna statusu.</source>
        <translation>This account has no status window.</translation>
    </message>
    <message>
        <source>Wiadomość zawiera znaki, których nie można wysłać.</source>
        <translation>The message holds characters that cannot be sent.</translation>
    </message>
    <message>
        <source>To nie jest odcisk SHA-256: %1</source>
        <translation>This is not a SHA-256 fingerprint: %1</translation>
    </message>
    <message>
        <source>Zmiana działa, ale nie można jej zapisać w pliku %1.</source>
        <translation>The change counts, but it cannot be saved in the file %1.</translation>
    </message>
    <message>
        <source>Ta wiadomość nie czeka na wysłanie.</source>
        <translation>This message does not wait to be sent.</translation>
    </message>
    <message>
        <source>Nie można wycofać wiadomości.</source>
        <translation>The message cannot be taken back.</translation>
    </message>
    <message>
        <source>Nie można odczytać archiwum rozmów.</source>
        <translation>The message history cannot be read.</translation>
    </message>
</context>
<context>
    <name>Network</name>
    <message>
        <source>Połączenie zakończone.</source>
        <translation>The connection was closed.</translation>
    </message>
    <message>
        <source>Na to konto zalogował się inny program pod tą samą nazwą zasobu.</source>
        <translation>Another program logged in to this account under the same resource.</translation>
    </message>
    <message>
        <source>Certyfikat domeny %1 został odrzucony.</source>
        <translation>The certificate of the domain %1 was refused.</translation>
    </message>
    <message>
        <source>Nie znaleziono adresu serwera %1.</source>
        <translation>No address was found for the server %1.</translation>
    </message>
    <message>
        <source>Domena %1 nie udostępnia usługi XMPP.</source>
        <translation>The domain %1 offers no XMPP service.</translation>
    </message>
    <message>
        <source>Nie można połączyć się z serwerem: %1.</source>
        <translation>The server cannot be reached: %1.</translation>
    </message>
    <message>
        <source>Serwer pośredniczący %1: %2.</source>
        <translation>Proxy server %1: %2.</translation>
    </message>
    <message>
        <source>Nie udało się zaszyfrować połączenia: %1.</source>
        <translation>The connection could not be encrypted: %1.</translation>
    </message>
    <message>
        <source>Serwer zakończył połączenie.</source>
        <translation>The server closed the connection.</translation>
    </message>
    <message>
        <source>Serwer przerwał połączenie.</source>
        <translation>The server cut the connection.</translation>
    </message>
    <message>
        <source>Połączenie przestało działać: %1.</source>
        <translation>The connection went dead: %1.</translation>
    </message>
    <message>
        <source>Logowanie nie zakończyło się w ciągu %1 s.</source>
        <translation>The login did not finish within %1 s.</translation>
    </message>
    <message>
        <source>Sieć przestała być dostępna.</source>
        <translation>The network is gone.</translation>
    </message>
    <message>
        <source>Komputer był uśpiony, połączenie trzeba nawiązać od nowa.</source>
        <translation>The computer was asleep, the connection has to be made anew.</translation>
    </message>
    <message>
        <source>Serwer wysłał niezaszyfrowane dane w trakcie włączania szyfrowania.</source>
        <translation>The server sent clear text while encryption was being started.</translation>
    </message>
    <message>
        <source>Serwer podał: %1.</source>
        <translation>The server said: %1.</translation>
    </message>
    <message>
        <source>Nieudane logowania z rzędu: %1. Następna próba za %2 s.</source>
        <translation>Logins that failed in a row: %1. The next attempt follows in %2 s.</translation>
    </message>
    <message>
        <source>Połączenie mimo złego certyfikatu domeny %1: %2</source>
        <translation>Connected in spite of the bad certificate of the domain %1: %2</translation>
    </message>
    <message>
        <source>Łączenie z %1, port %2</source>
        <translation>Connecting to %1, port %2</translation>
    </message>
    <message>
        <source>Łączenie z %1 przez serwer pośredniczący %2</source>
        <translation>Connecting to %1 through the proxy server %2</translation>
    </message>
    <message>
        <source>Wyszukiwanie serwera dla %1</source>
        <translation>Looking up the server of %1</translation>
    </message>
    <message>
        <source>połączenie odrzucone</source>
        <translation>connection refused</translation>
    </message>
    <message>
        <source>brak odpowiedzi</source>
        <translation>no answer</translation>
    </message>
    <message>
        <source>sieć lub komputer nieosiągalny</source>
        <translation>network or machine unreachable</translation>
    </message>
    <message>
        <source>nieznany adres</source>
        <translation>address unknown</translation>
    </message>
    <message>
        <source>%1</source>
        <translation>%1</translation>
    </message>
    <message>
        <source>Certyfikat wystawił nieznany urząd.</source>
        <translation>The certificate was issued by an unknown authority.</translation>
    </message>
    <message>
        <source>Certyfikat podpisał sam serwer.</source>
        <translation>The certificate is signed by itself.</translation>
    </message>
    <message>
        <source>Certyfikat stracił ważność %1.</source>
        <translation>The certificate expired on %1.</translation>
    </message>
    <message>
        <source>Certyfikat będzie ważny dopiero od %1.</source>
        <translation>The certificate is not valid before %1.</translation>
    </message>
    <message>
        <source>Certyfikat został unieważniony.</source>
        <translation>The certificate was revoked.</translation>
    </message>
    <message>
        <source>Certyfikat wystawiono dla %1, a nie dla %2.</source>
        <translation>The certificate was issued for %1 and not for %2.</translation>
    </message>
    <message>
        <source>Certyfikat jest nieprawidłowy: %1.</source>
        <translation>The certificate is not valid: %1.</translation>
    </message>
    <message>
        <source>nie znaleziono jego adresu</source>
        <translation>its address was not found</translation>
    </message>
    <message>
        <source>nie można się z nim połączyć (%1)</source>
        <translation>it cannot be reached (%1)</translation>
    </message>
    <message>
        <source>nie odpowiada</source>
        <translation>it does not answer</translation>
    </message>
    <message>
        <source>przerwał połączenie</source>
        <translation>it cut the connection</translation>
    </message>
    <message>
        <source>odpowiedź jest niezrozumiała, to chyba serwer innego rodzaju</source>
        <translation>its answer makes no sense, it may be a server of another kind</translation>
    </message>
    <message>
        <source>wymaga logowania</source>
        <translation>it wants a login</translation>
    </message>
    <message>
        <source>odrzucił nazwę użytkownika lub hasło</source>
        <translation>it refused the user name or the password</translation>
    </message>
    <message>
        <source>nazwy użytkownika lub hasła nie da się przesłać w tym protokole</source>
        <translation>the user name or the password cannot be sent in this protocol</translation>
    </message>
    <message>
        <source>nazwy serwera %1 nie da się przesłać w tym protokole</source>
        <translation>the server name %1 cannot be sent in this protocol</translation>
    </message>
    <message>
        <source>nie zezwala na połączenie z %1</source>
        <translation>it does not allow a connection to %1</translation>
    </message>
    <message>
        <source>nie może połączyć się z %1</source>
        <translation>it cannot reach %1</translation>
    </message>
    <message>
        <source>%1 odrzuca połączenie</source>
        <translation>%1 refuses the connection</translation>
    </message>
    <message>
        <source>odmówił połączenia z %1 (%2)</source>
        <translation>it refused the connection to %1 (%2)</translation>
    </message>
    <message>
        <source>nie mógł potwierdzić nazwy użytkownika (identd)</source>
        <translation>it could not confirm the user name (identd)</translation>
    </message>
    <message>
        <source>SOCKS 4 wymaga adresu IPv4, a %1 go nie ma</source>
        <translation>SOCKS 4 needs an IPv4 address, and %1 has none</translation>
    </message>
    <message>
        <source>ustawiony jest nieznany rodzaj</source>
        <translation>its kind is set to an unknown one</translation>
    </message>
    <message>
        <source>port %1 nie mieści się między 1 a 65535</source>
        <translation>the port %1 is not between 1 and 65535</translation>
    </message>
    <message>
        <source>Na wysłanie czekało więcej niż %1 MiB danych.</source>
        <translation>More than %1 MiB of data waited to be sent.</translation>
    </message>
</context>
<context>
    <name>News</name>
    <message>
        <source>Nie ma takiego powiadomienia.</source>
        <translation>There is no such pop-up.</translation>
    </message>
    <message>
        <source>Nie wysłano: serwer konta nie przyjmuje takich wiadomości o sobie.</source>
        <translation>Not sent: the account&apos;s server takes no such news of its users.</translation>
    </message>
    <message>
        <source>Nie ma takiego nastroju: %1</source>
        <translation>There is no such mood: %1</translation>
    </message>
    <message>
        <source>Miejsce nie ma takiego pola: %1</source>
        <translation>A location has no such field: %1</translation>
    </message>
    <message>
        <source>W tej sesji nie widać odtwarzaczy: nie ma szyny D-Bus.</source>
        <translation>No players can be seen in this session: it has no D-Bus.</translation>
    </message>
</context>
<context>
    <name>Options</name>
    <message>
        <source>FOLDER</source>
        <translation>FOLDER</translation>
    </message>
    <message>
        <source>folder profilu: ustawienia, listy kontaktów, historia</source>
        <translation>folder of the profile: settings, contact lists, history</translation>
    </message>
    <message>
        <source>PLIK</source>
        <translation>FILE</translation>
    </message>
    <message>
        <source>plik wtyczki (zwykle protoLink.module obok programu)</source>
        <translation>the plugin&apos;s file (usually protoLink.module beside it)</translation>
    </message>
    <message>
        <source>JID</source>
        <translation>JID</translation>
    </message>
    <message>
        <source>konto, którego dotyczą polecenia; nowe zostanie dodane</source>
        <translation>the account that commands mean; a new one is added</translation>
    </message>
    <message>
        <source>STATUS</source>
        <translation>STATUS</translation>
    </message>
    <message>
        <source>połącz od razu: online chat away xa dnd invisible</source>
        <translation>connect at once: online chat away xa dnd invisible</translation>
    </message>
    <message>
        <source>zaufane urzędy certyfikacji w pliku PEM, obok systemowych</source>
        <translation>certificate authorities to trust (PEM) beside the system&apos;s</translation>
    </message>
    <message>
        <source>polecenia i zdarzenia jako wiersze JSON, dla skryptów</source>
        <translation>commands and events as JSON lines, for scripts</translation>
    </message>
    <message>
        <source>zwykłe wiersze zamiast ekranu (tak też bez terminala)</source>
        <translation>plain lines instead of a screen (also without a terminal)</translation>
    </message>
    <message>
        <source>pokazuj też dziennik wtyczki i programu</source>
        <translation>show the log of plugin and program as well</translation>
    </message>
    <message>
        <source>oku-terminal - komunikator XMPP w terminalu

Użycie: oku-terminal [opcje]

Opcje:
</source>
        <translation>oku-terminal - an XMPP messenger in a terminal

Usage: oku-terminal [options]

Options:
</translation>
    </message>
    <message>
        <source>  --help              ten tekst
  --version           wersja programu

Opcja z wartością może mieć postać --profile FOLDER albo --profile=FOLDER.

Środowisko:
  OKU_PASSWORD        hasło konta z --account (inaczej program o nie zapyta)
  LANG                pl wybiera polski, inny język (też żaden) angielski
  NO_COLOR            bez kolorów

Program kończy się kodem 0, 1 (nie można uruchomić) albo 2 (złe opcje).
Polecenia w programie: /help. Całość opisuje: man oku-terminal
</source>
        <translation>  --help              this text
  --version           the program&apos;s version

An option with a value may stand as --profile FOLDER or --profile=FOLDER.

Environment:
  OKU_PASSWORD        password of --account (else the program asks for it)
  LANG                pl chooses Polish, another one (or none) English
  NO_COLOR            no colours

The program ends with 0, 1 (it could not start) or 2 (wrong options).
Commands inside the program: /help. All of it: man oku-terminal
</translation>
    </message>
</context>
<context>
    <name>Passwords</name>
    <message>
        <source>ten program nie obsługuje pęku kluczy</source>
        <translation>this program was built without key rings</translation>
    </message>
    <message>
        <source>Pęk kluczy nie podał hasła (%1). Podaj je jeszcze raz.</source>
        <translation>The key ring did not give the password (%1). Please give it again.</translation>
    </message>
    <message>
        <source>Nie ma systemowego pęku kluczy. Czy zachować hasło konta %1 w jego pliku, który tylko Ty możesz odczytać? Inaczej trzeba je podawać po każdym uruchomieniu.</source>
        <translation>There is no key ring of the system. Keep the password of %1 in its file, which only you can read? Otherwise it has to be given after each start.</translation>
    </message>
    <message>
        <source>Hasło</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>Hasło konta %1 zostało w pęku kluczy: %2</source>
        <translation>The password of the account %1 stayed in the key ring: %2</translation>
    </message>
</context>
<context>
    <name>PluginLoader</name>
    <message>
        <source>Plik %1 nie jest wtyczką komunikatora: brak w nim funkcji %2.</source>
        <translation>%1 is not a plugin of this messenger: it has no function %2.</translation>
    </message>
    <message>
        <source>Nie ma pliku wtyczki: %1</source>
        <translation>The plugin&apos;s file does not exist: %1</translation>
    </message>
    <message>
        <source>To nie jest plik wtyczki: %1</source>
        <translation>This is not a plugin&apos;s file: %1</translation>
    </message>
    <message>
        <source>Nie można wczytać wtyczki %1: %2</source>
        <translation>The plugin %1 cannot be loaded: %2</translation>
    </message>
    <message>
        <source>Plik %1 nie jest wtyczką komunikatora: jej opis jest niepełny.</source>
        <translation>%1 is not a plugin of this messenger: its description is incomplete.</translation>
    </message>
</context>
<context>
    <name>PrivateFile</name>
    <message>
        <source>brak miejsca na dysku</source>
        <translation>no space left on the disk</translation>
    </message>
    <message>
        <source>przydział miejsca na dysku jest wyczerpany</source>
        <translation>the disk quota is used up</translation>
    </message>
    <message>
        <source>plik byłby za duży</source>
        <translation>the file would be too large</translation>
    </message>
    <message>
        <source>system plików jest tylko do odczytu</source>
        <translation>the file system is read-only</translation>
    </message>
    <message>
        <source>brak uprawnień</source>
        <translation>permission denied</translation>
    </message>
    <message>
        <source>nie ma takiego katalogu</source>
        <translation>there is no such folder</translation>
    </message>
    <message>
        <source>w tym miejscu jest katalog</source>
        <translation>a folder is in its place</translation>
    </message>
    <message>
        <source>błąd dysku</source>
        <translation>disk error</translation>
    </message>
    <message>
        <source>w tym miejscu jest dowiązanie</source>
        <translation>a link is in its place</translation>
    </message>
    <message>
        <source>taki plik już jest</source>
        <translation>there is such a file already</translation>
    </message>
    <message>
        <source>%1 należy do innego użytkownika.</source>
        <translation>%1 belongs to another user.</translation>
    </message>
    <message>
        <source>Inni mogą zapisywać w %1; odbierz im to prawo: chmod go-w %1</source>
        <translation>Others can write %1; take that right from them: chmod go-w %1</translation>
    </message>
</context>
<context>
    <name>Profile</name>
    <message>
        <source>Ścieżka katalogu profilu jest za długa: %1</source>
        <translation>The profile&apos;s path is too long: %1</translation>
    </message>
    <message>
        <source>Nie można utworzyć katalogu %1</source>
        <translation>The directory %1 cannot be made</translation>
    </message>
    <message>
        <source>Brak prawa do odczytu lub zapisu w katalogu %1</source>
        <translation>No right to read or write in the directory %1</translation>
    </message>
    <message>
        <source>Nie można zapisać w katalogu %1: %2</source>
        <translation>Nothing can be written in the directory %1: %2</translation>
    </message>
    <message>
        <source>Profil %1 jest już używany przez inny komunikator (proces %2).</source>
        <translation>The profile %1 is in use by another messenger (process %2).</translation>
    </message>
    <message>
        <source>Profil %1 jest właśnie otwierany przez inny komunikator albo została po nim blokada %2. Spróbuj ponownie za kilka sekund.</source>
        <translation>The profile %1 is being opened by another messenger, or one has left its lock %2 behind. Try again in a few seconds.</translation>
    </message>
</context>
<context>
    <name>Sessions</name>
    <message>
        <source>To konto zalogowało się w innym miejscu z tym samym zasobem.</source>
        <translation>This account logged in elsewhere with the same resource.</translation>
    </message>
    <message>
        <source>Serwer nie podał listy kontaktów; pokazana jest ostatnia znana.</source>
        <translation>The server gave no contact list; the last known one is shown.</translation>
    </message>
</context>
<context>
    <name>SettingKeys</name>
    <message>
        <source>adres konta z zasobem</source>
        <translation>the account&apos;s address with its resource</translation>
    </message>
    <message>
        <source>priorytet połączenia, od -128 do 127</source>
        <translation>the connection&apos;s priority, -128 to 127</translation>
    </message>
    <message>
        <source>prośby o autoryzację: 0 pytaj, 1 odmawiaj, 2 przyjmuj, 3 pomijaj</source>
        <translation>requests for authorization: 0 ask, 1 refuse, 2 accept, 3 ignore</translation>
    </message>
    <message>
        <source>1: zwykłe wiadomości jak rozmowa</source>
        <translation>1: normal messages count as chat</translation>
    </message>
    <message>
        <source>1: serwer podany w XMPP/Serv/Host</source>
        <translation>1: the server of XMPP/Serv/Host</translation>
    </message>
    <message>
        <source>serwer:port połączenia</source>
        <translation>server:port to connect to</translation>
    </message>
    <message>
        <source>1: szyfrowanie TLS</source>
        <translation>1: encrypt by TLS</translation>
    </message>
    <message>
        <source>1: TLS od pierwszego bajtu</source>
        <translation>1: TLS from the first byte</translation>
    </message>
    <message>
        <source>1: kompresja strumienia</source>
        <translation>1: compress the stream</translation>
    </message>
    <message>
        <source>1: pośrednik z ustawień programu</source>
        <translation>1: the program&apos;s own proxy settings</translation>
    </message>
    <message>
        <source>1: pośrednik (proxy)</source>
        <translation>1: use a proxy</translation>
    </message>
    <message>
        <source>0 SOCKS 4, 1 SOCKS 4A, 2 SOCKS 5, 3 HTTP</source>
        <translation>0 SOCKS 4, 1 SOCKS 4A, 2 SOCKS 5, 3 HTTP</translation>
    </message>
    <message>
        <source>adres pośrednika</source>
        <translation>the proxy&apos;s address</translation>
    </message>
    <message>
        <source>port pośrednika</source>
        <translation>the proxy&apos;s port</translation>
    </message>
    <message>
        <source>1: pośrednik wymaga logowania</source>
        <translation>1: the proxy wants a login</translation>
    </message>
    <message>
        <source>użytkownik pośrednika</source>
        <translation>the proxy&apos;s user</translation>
    </message>
    <message>
        <source>hasło pośrednika</source>
        <translation>the proxy&apos;s password</translation>
    </message>
    <message>
        <source>1: pobieraj awatary</source>
        <translation>1: fetch avatars</translation>
    </message>
    <message>
        <source>1: wysyłaj własny awatar</source>
        <translation>1: send the own avatar</translation>
    </message>
    <message>
        <source>1: powiadomienia o poczcie</source>
        <translation>1: mail notifications</translation>
    </message>
    <message>
        <source>1: zostaw powiadomienie do kliknięcia</source>
        <translation>1: a notification stays until clicked</translation>
    </message>
    <message>
        <source>1: czego słuchają kontakty</source>
        <translation>1: what contacts listen to</translation>
    </message>
    <message>
        <source>1: nastroje kontaktów</source>
        <translation>1: moods of contacts</translation>
    </message>
    <message>
        <source>1: opis nie zmienia się ze statusem</source>
        <translation>1: a status keeps the description</translation>
    </message>
    <message>
        <source>0: nie wysyłaj powiadomień o pisaniu</source>
        <translation>0: send no typing notices</translation>
    </message>
    <message>
        <source>hasło w pliku konta, gdy nie ma pęku kluczy: 1 tak, 0 nie</source>
        <translation>the password in the account&apos;s file, when there is no key ring: 1 yes, 0 no</translation>
    </message>
    <message>
        <source>1: połączenie bez szyfrowania dozwolone</source>
        <translation>1: connection without encryption allowed</translation>
    </message>
    <message>
        <source>1: mów o nowych obrazkach kontaktów</source>
        <translation>1: tell of contacts&apos; new pictures</translation>
    </message>
    <message>
        <source>folder odebranych plików; %documents% i %from% się zmieniają</source>
        <translation>folder of received files; %documents% and %from% are filled in</translation>
    </message>
    <message>
        <source>1: pytaj też o pliki od nieznajomych</source>
        <translation>1: ask about files of strangers too</translation>
    </message>
    <message>
        <source>1: pokazuj kontaktom, co gra odtwarzacz</source>
        <translation>1: show the contacts what the player plays</translation>
    </message>
    <message>
        <source>1: wysyłane pliki można pobrać z tego komputera</source>
        <translation>1: files that are sent can be fetched from this computer</translation>
    </message>
    <message>
        <source>adres, pod którym można je pobrać</source>
        <translation>the address that they can be fetched from</translation>
    </message>
    <message>
        <source>port, na którym można je pobrać; 0: dowolny</source>
        <translation>the port that they can be fetched from; 0: any</translation>
    </message>
</context>
<context>
    <name>Settings</name>
    <message>
        <source>Nie można odczytać ustawień z pliku %1: %2</source>
        <translation>The settings in %1 cannot be read: %2</translation>
    </message>
    <message>
        <source>Plik ustawień %1 jest uszkodzony i nie można go odłożyć na bok.</source>
        <translation>The settings file %1 is damaged and cannot be set aside.</translation>
    </message>
    <message>
        <source>Plik ustawień %1 jest uszkodzony; został zachowany jako %2.</source>
        <translation>The settings file %1 is damaged; it was kept as %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; nie może być nazwą ustawienia: nie może być pusta, zaczynać się od #, mieć odstępów na brzegach, znaku = ani końca wiersza.</source>
        <translation>&quot;%1&quot; cannot be the name of a setting: it must not be empty, begin with #, have blanks at its ends, or hold a = or the end of a line.</translation>
    </message>
    <message>
        <source>Ustawienia nie zostały odczytane. %1</source>
        <translation>The settings were not read. %1</translation>
    </message>
    <message>
        <source>Ustawienia nie są zapisywane, bo nie odczytano pliku %1.</source>
        <translation>The settings are not saved, as the file %1 was not read.</translation>
    </message>
    <message>
        <source>Nie można zapisać ustawień w pliku %1: %2. Dawny plik zostaje, zapis będzie ponawiany.</source>
        <translation>The settings cannot be saved in the file %1: %2. The old file stays, and saving will be tried again.</translation>
    </message>
    <message>
        <source>%1 to liczba całkowita od %2 do %3.</source>
        <translation>%1 is a whole number from %2 to %3.</translation>
    </message>
    <message>
        <source>Port w %1 to liczba całkowita od 1 do %2.</source>
        <translation>The port in %1 is a whole number from 1 to %2.</translation>
    </message>
    <message>
        <source>%1 to adres konta.</source>
        <translation>%1 is the address of an account.</translation>
    </message>
</context>
<context>
    <name>Sockets</name>
    <message>
        <source>Nie wiadomo, przez jaki serwer pośredniczący się łączyć. %1</source>
        <translation>The proxy server to connect through is not known. %1</translation>
    </message>
    <message>
        <source>Plik %1 jest uszkodzony albo nie można go odczytać.</source>
        <translation>The file %1 is damaged, or cannot be read.</translation>
    </message>
</context>
<context>
    <name>Terminal</name>
    <message>
        <source>wiersz jest dłuższy niż 16 MiB</source>
        <translation>the line is longer than 16 MiB</translation>
    </message>
    <message>
        <source>to nie jest JSON: %1 (bajt %2)</source>
        <translation>not JSON: %1 (byte %2)</translation>
    </message>
    <message>
        <source>polecenie musi być obiektem</source>
        <translation>a command must be an object</translation>
    </message>
    <message>
        <source>brak pola &quot;cmd&quot; albo nie jest tekstem</source>
        <translation>the field &quot;cmd&quot; is missing or not a text</translation>
    </message>
    <message>
        <source>nieznane polecenie &quot;%1&quot;</source>
        <translation>unknown command &quot;%1&quot;</translation>
    </message>
    <message>
        <source>brak pola &quot;%1&quot;</source>
        <translation>the field &quot;%1&quot; is missing</translation>
    </message>
    <message>
        <source>pole &quot;%1&quot; musi mieć wartość: %2</source>
        <translation>the field &quot;%1&quot; must be %2</translation>
    </message>
    <message>
        <source>tekst</source>
        <translation>a text</translation>
    </message>
    <message>
        <source>liczba całkowita</source>
        <translation>a whole number</translation>
    </message>
    <message>
        <source>true lub false</source>
        <translation>true or false</translation>
    </message>
    <message>
        <source>obiekt</source>
        <translation>an object</translation>
    </message>
    <message>
        <source>tekst, liczba, true lub false</source>
        <translation>a text, a number, true or false</translation>
    </message>
    <message>
        <source>program kończy pracę</source>
        <translation>the program is ending</translation>
    </message>
    <message>
        <source>nieznany status &quot;%1&quot; (możliwe: online chat dnd away xa invisible offline)</source>
        <translation>unknown status &quot;%1&quot; (one of: online chat dnd away xa invisible offline)</translation>
    </message>
    <message>
        <source>nieznany rodzaj &quot;%1&quot; (możliwe: chat normal)</source>
        <translation>unknown kind &quot;%1&quot; (one of: chat normal)</translation>
    </message>
    <message>
        <source>liczba wiadomości musi być większa od zera</source>
        <translation>the number of messages must be above zero</translation>
    </message>
    <message>
        <source>nieznana odpowiedź &quot;%1&quot; (możliwe: ok yes no)</source>
        <translation>unknown answer &quot;%1&quot; (one of: ok yes no)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; nie jest liczbą całkowitą</source>
        <translation>&quot;%1&quot; is not a whole number</translation>
    </message>
    <message>
        <source>nie ma jeszcze żadnego konta</source>
        <translation>there is no account yet</translation>
    </message>
    <message>
        <source>nie można uruchomić: %1</source>
        <translation>cannot start: %1</translation>
    </message>
    <message>
        <source>nieznana opcja: %1</source>
        <translation>unknown option: %1</translation>
    </message>
    <message>
        <source>opcja %1 wymaga wartości</source>
        <translation>the option %1 needs a value</translation>
    </message>
    <message>
        <source>opcja %1 podana dwa razy</source>
        <translation>the option %1 is given twice</translation>
    </message>
    <message>
        <source>niespodziewany argument: %1</source>
        <translation>unexpected argument: %1</translation>
    </message>
    <message>
        <source>Wszystkie opcje: oku-terminal --help</source>
        <translation>All options: oku-terminal --help</translation>
    </message>
    <message>
        <source>nie można odczytać pliku %1</source>
        <translation>cannot read the file %1</translation>
    </message>
    <message>
        <source>konto %1: %2</source>
        <translation>account %1: %2</translation>
    </message>
    <message>
        <source>wiadomość %1 do %2 wysłana</source>
        <translation>message %1 to %2 was sent</translation>
    </message>
    <message>
        <source>wiadomość %1 do %2 nie została potwierdzona: połączenie zerwało się po jej wysłaniu</source>
        <translation>message %1 to %2 is not confirmed: the connection broke after it was sent</translation>
    </message>
    <message>
        <source>wiadomość %1 do %2 nie została dostarczona</source>
        <translation>message %1 to %2 was not delivered</translation>
    </message>
    <message>
        <source>wiadomość %1 do %2 czeka na zalogowanie</source>
        <translation>message %1 to %2 waits for the next login</translation>
    </message>
    <message>
        <source>certyfikat serwera %1 odrzucony: %2; odcisk SHA-256: %3</source>
        <translation>the certificate of %1 was refused: %2; SHA-256 fingerprint: %3</translation>
    </message>
    <message>
        <source>dostępny</source>
        <translation>available</translation>
    </message>
    <message>
        <source>chętny do rozmowy</source>
        <translation>free for chat</translation>
    </message>
    <message>
        <source>zajęty</source>
        <translation>busy</translation>
    </message>
    <message>
        <source>zaraz wraca</source>
        <translation>away</translation>
    </message>
    <message>
        <source>wróci później</source>
        <translation>away for long</translation>
    </message>
    <message>
        <source>niewidoczny</source>
        <translation>invisible</translation>
    </message>
    <message>
        <source>niedostępny</source>
        <translation>offline</translation>
    </message>
    <message>
        <source>błąd</source>
        <translation>error</translation>
    </message>
    <message>
        <source>rozłączony</source>
        <translation>offline</translation>
    </message>
    <message>
        <source>łączę z serwerem</source>
        <translation>connecting to the server</translation>
    </message>
    <message>
        <source>połączony z serwerem</source>
        <translation>connected to the server</translation>
    </message>
    <message>
        <source>połączenie jest szyfrowane</source>
        <translation>the connection is encrypted</translation>
    </message>
    <message>
        <source>zalogowany</source>
        <translation>logged in</translation>
    </message>
    <message>
        <source>gotowy, lista kontaktów pobrana</source>
        <translation>ready, the contact list is here</translation>
    </message>
    <message>
        <source>&quot;%1&quot; nie jest adresem (kto@serwer)</source>
        <translation>&quot;%1&quot; is not an address (user@server)</translation>
    </message>
    <message numerus="yes">
        <source>… (całość: %n znaków, zobacz /export)</source>
        <translation>
            <numerusform>… (%n character in all, see /export)</numerusform>
            <numerusform>… (%n characters in all, see /export)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>↑ %n wierszy wyżej, End wraca</source>
        <translation>
            <numerusform>↑ %n line up, End returns</numerusform>
            <numerusform>↑ %n lines up, End returns</numerusform>
        </translation>
    </message>
    <message>
        <source>(szukaj) %1: </source>
        <translation>(search) %1: </translation>
    </message>
    <message>
        <source>oku-terminal. Polecenia: /help, koniec: /quit</source>
        <translation>oku-terminal. Commands: /help, end: /quit</translation>
    </message>
    <message>
        <source>nie ma jeszcze konta; dodaje je /account add ty@serwer</source>
        <translation>there is no account yet; /account add you@server adds one</translation>
    </message>
    <message>
        <source>konto poleceń: %1 (łączy /online)</source>
        <translation>commands mean the account %1 (/online connects)</translation>
    </message>
    <message>
        <source>konto %1 zapisane</source>
        <translation>account %1 saved</translation>
    </message>
    <message>
        <source>nie ma konta &quot;%1&quot;; lista: /account</source>
        <translation>there is no account &quot;%1&quot;; list: /account</translation>
    </message>
    <message>
        <source>kończę…</source>
        <translation>ending…</translation>
    </message>
    <message>
        <source>nie ma otwartej rozmowy; otwiera ją /chat-with KTO</source>
        <translation>no conversation is open; /chat-with WHO opens one</translation>
    </message>
    <message>
        <source>przerwane</source>
        <translation>cancelled</translation>
    </message>
    <message>
        <source>hasło do %1 (nie będzie widoczne)</source>
        <translation>password of %1 (not shown)</translation>
    </message>
    <message>
        <source>nie ma kontaktu &quot;%1&quot;</source>
        <translation>there is no contact &quot;%1&quot;</translation>
    </message>
    <message>
        <source>&quot;%1&quot; pasuje do kilku kontaktów: %2</source>
        <translation>&quot;%1&quot; fits several contacts: %2</translation>
    </message>
    <message>
        <source>Twój status: %1</source>
        <translation>your status: %1</translation>
    </message>
    <message>
        <source>nowy kontakt: %1 &lt;%2&gt; w grupie %3</source>
        <translation>new contact: %1 &lt;%2&gt; in the group %3</translation>
    </message>
    <message>
        <source>kontakt %1 nazywa się teraz %2</source>
        <translation>the contact %1 is now called %2</translation>
    </message>
    <message>
        <source>kontakt %1 jest teraz w grupie %2</source>
        <translation>the contact %1 is now in the group %2</translation>
    </message>
    <message>
        <source>kontakt %1: %2</source>
        <translation>contact %1: %2</translation>
    </message>
    <message>
        <source>kontakt usunięty: %1 &lt;%2&gt;</source>
        <translation>contact removed: %1 &lt;%2&gt;</translation>
    </message>
    <message>
        <source>nie widzicie się nawzajem</source>
        <translation>you do not see each other</translation>
    </message>
    <message>
        <source>widzi Cię, Ty jego nie</source>
        <translation>sees you, you do not see them</translation>
    </message>
    <message>
        <source>Ty go widzisz, on Ciebie nie</source>
        <translation>you see them, they do not see you</translation>
    </message>
    <message>
        <source>widzicie się nawzajem</source>
        <translation>you see each other</translation>
    </message>
    <message>
        <source>autoryzacja nieznana</source>
        <translation>authorization unknown</translation>
    </message>
    <message>
        <source>czeka na zgodę</source>
        <translation>waits for consent</translation>
    </message>
    <message>
        <source>[%1] %2</source>
        <translation>[%1] %2</translation>
    </message>
    <message>
        <source>(napisane %1) %2</source>
        <translation>(written %1) %2</translation>
    </message>
    <message>
        <source>(czeka na zalogowanie) %1</source>
        <translation>(waits for the next login) %1</translation>
    </message>
    <message>
        <source>(niepotwierdzona, nr %1) %2</source>
        <translation>(not confirmed, no. %1) %2</translation>
    </message>
    <message>
        <source>/resend %1 wysyła ponownie</source>
        <translation>/resend %1 sends it again</translation>
    </message>
    <message>
        <source>%1 pisze…</source>
        <translation>%1 is writing…</translation>
    </message>
    <message>
        <source>%1 prosi o autoryzację, chce widzieć Twoją obecność: /authorize %2 albo /deny %2</source>
        <translation>%1 asks for authorization to see your presence: /authorize %2 or /deny %2</translation>
    </message>
    <message>
        <source>odpowiedz: /answer %1 yes albo /answer %1 no</source>
        <translation>answer: /answer %1 yes or /answer %1 no</translation>
    </message>
    <message>
        <source>/pin przyjmuje ten certyfikat na stałe; potem /online</source>
        <translation>/pin accepts this certificate from now on; then /online</translation>
    </message>
    <message>
        <source>obecność</source>
        <translation>presence</translation>
    </message>
    <message>
        <source>priorytet</source>
        <translation>priority</translation>
    </message>
    <message>
        <source>ostatnia zmiana</source>
        <translation>last change</translation>
    </message>
    <message>
        <source>program</source>
        <translation>client</translation>
    </message>
    <message>
        <source>system</source>
        <translation>system</translation>
    </message>
    <message>
        <source>możliwości</source>
        <translation>features</translation>
    </message>
    <message>
        <source>%1: to wszystko, co wiadomo</source>
        <translation>%1: that is all that is known</translation>
    </message>
    <message>
        <source>oku-terminal · wszystkie zdarzenia</source>
        <translation>oku-terminal · all events</translation>
    </message>
    <message>
        <source>główne</source>
        <translation>main</translation>
    </message>
    <message>
        <source>spoza listy kontaktów</source>
        <translation>not on the contact list</translation>
    </message>
    <message>
        <source>nie ma polecenia /%1; lista: /help</source>
        <translation>there is no command /%1; list: /help</translation>
    </message>
    <message>
        <source>użycie:</source>
        <translation>usage:</translation>
    </message>
    <message>
        <source>konsola XML wyłączona</source>
        <translation>the XML console is off</translation>
    </message>
    <message>
        <source>nie ma otwartego pytania</source>
        <translation>no question is open</translation>
    </message>
    <message>
        <source>(domyślne)</source>
        <translation>(default)</translation>
    </message>
    <message>
        <source>powiadomienia o pisaniu będą wysyłane</source>
        <translation>typing notices will be sent</translation>
    </message>
    <message>
        <source>powiadomienia o pisaniu nie będą wysyłane</source>
        <translation>no typing notices will be sent</translation>
    </message>
    <message>
        <source>żaden certyfikat nie został odrzucony</source>
        <translation>no certificate was refused</translation>
    </message>
    <message>
        <source>certyfikat przyjęty: %1</source>
        <translation>certificate accepted: %1</translation>
    </message>
    <message>
        <source>zapamiętany certyfikat odwołany</source>
        <translation>the accepted certificate is taken back</translation>
    </message>
    <message>
        <source>lista kontaktów jest pusta; kontakt dodaje /add</source>
        <translation>the contact list is empty; /add adds a contact</translation>
    </message>
    <message>
        <source>żaden kontakt nie pasuje</source>
        <translation>no contact fits</translation>
    </message>
    <message>
        <source>%1 (%2/%3)</source>
        <translation>%1 (%2/%3)</translation>
    </message>
    <message>
        <source>bez nazwy</source>
        <translation>no name</translation>
    </message>
    <message>
        <source>poproszono %1 o autoryzację</source>
        <translation>asked %1 for authorization</translation>
    </message>
    <message>
        <source>nikt nie prosi o autoryzację</source>
        <translation>nobody asks for authorization</translation>
    </message>
    <message>
        <source>kilka osób prosi o autoryzację, podaj jedną: %1</source>
        <translation>several people ask for authorization, name one: %1</translation>
    </message>
    <message>
        <source>%1 będzie widzieć Twoją obecność</source>
        <translation>%1 will see your presence</translation>
    </message>
    <message>
        <source>%1 będzie widzieć Twoją obecność; wysłano prośbę o wzajemność</source>
        <translation>%1 will see your presence, and was asked for the same</translation>
    </message>
    <message>
        <source>odmówiono: %1</source>
        <translation>refused: %1</translation>
    </message>
    <message>
        <source>nie ma nieprzeczytanych wiadomości</source>
        <translation>nothing is unread</translation>
    </message>
    <message>
        <source>nie ma okna &quot;%1&quot;</source>
        <translation>there is no window &quot;%1&quot;</translation>
    </message>
    <message>
        <source>brak wiadomości</source>
        <translation>no messages</translation>
    </message>
    <message>
        <source>historia zapisana: %1</source>
        <translation>history written: %1</translation>
    </message>
    <message>
        <source>program kończy /quit albo Ctrl-D</source>
        <translation>/quit or Ctrl-D ends the program</translation>
    </message>
    <message>
        <source>(szukaj: brak) %1: </source>
        <translation>(search: nothing) %1: </translation>
    </message>
    <message>
        <source>hasło do %1 przyjęte</source>
        <translation>password of %1 taken</translation>
    </message>
    <message>
        <source>konsola XML włączona (okno główne); hasła są zakryte</source>
        <translation>the XML console is on (main window); passwords are masked</translation>
    </message>
    <message>
        <source>odpowiedź na pytanie %1: %2</source>
        <translation>answer to question %1: %2</translation>
    </message>
    <message>
        <source>nowe wiadomości</source>
        <translation>new messages</translation>
    </message>
    <message>
        <source>nikt nie czyta tego, co program pisze</source>
        <translation>nobody reads what the program writes</translation>
    </message>
    <message numerus="yes">
        <source>… i %n ustawień domyślnych: /get all, /get CZĘŚĆ</source>
        <translation>
            <numerusform>… and %n setting at its default: /get all, /get PART</numerusform>
            <numerusform>… and %n settings at their default: /get all, /get PART</numerusform>
        </translation>
    </message>
    <message>
        <source>nie ma ustawienia &quot;%1&quot;; lista: /get all</source>
        <translation>there is no setting &quot;%1&quot;; list: /get all</translation>
    </message>
    <message>
        <source>plik %1 już jest. Zastąpić go? Jeśli tak, powtórz polecenie.</source>
        <translation>the file %1 is there already. Replace it? Then repeat the command.</translation>
    </message>
    <message>
        <source>nieznajomi</source>
        <translation>strangers</translation>
    </message>
    <message>
        <source>nieznajomi · odpowiedź: /chat-with ADRES</source>
        <translation>strangers · answer: /chat-with ADDRESS</translation>
    </message>
    <message>
        <source>bez szyfrowania</source>
        <translation>not encrypted</translation>
    </message>
    <message>
        <source>Tab uzupełnia; ↑ ↓ wcześniejsze wiersze, Ctrl-R szuka w nich
Alt-Enter nowy wiersz; // na początku: tekst z ukośnikiem
PgUp PgDn przewija; Alt-0…9 okna, Alt-↑ Alt-↓ sąsiednie, Alt-A następne nieprzeczytane
F2 lista kontaktów, F3 wchodzi do niej (strzałki, Enter), F4 tylko dostępni
Ctrl-L rysuje od nowa; Ctrl-C przerywa; Ctrl-D kończy</source>
        <translation>Tab completes; ↑ ↓ earlier lines, Ctrl-R searches them
Alt-Enter new line; // in front: a text with a slash
PgUp PgDn scroll; Alt-0…9 windows, Alt-↑ Alt-↓ those beside, Alt-A next unread
F2 the contact list, F3 goes into it (arrows, Enter), F4 only who can be reached
Ctrl-L redraws; Ctrl-C cancels; Ctrl-D ends</translation>
    </message>
    <message>
        <source>Enter otwiera, Esc wraca, Spacja zwija grupę, F4 tylko dostępni, F2 chowa listę</source>
        <translation>Enter opens, Esc returns, Space folds the group, F4 who can be reached, F2 hides the list</translation>
    </message>
    <message>
        <source>lista obok rozmów jest tylko na ekranie; tutaj wypisuje ją /roster</source>
        <translation>the list beside the log needs a screen; here /roster writes it</translation>
    </message>
    <message>
        <source>wiadomość %1 do %2 została wycofana</source>
        <translation>message %1 to %2 was taken back</translation>
    </message>
    <message>
        <source>w tej rozmowie żadna wiadomość nie czeka</source>
        <translation>no message of this conversation waits</translation>
    </message>
    <message>
        <source>usunięto konto %1</source>
        <translation>the account %1 was removed</translation>
    </message>
    <message>
        <source>zapis usunie z wizytówki na serwerze: %1 (zgoda: &quot;lose&quot;: true)</source>
        <translation>storing takes away from the card on the server: %1 (agree with &quot;lose&quot;: true)</translation>
    </message>
    <message>
        <source>wizytówka: %1 (%2)</source>
        <translation>card: %1 (%2)</translation>
    </message>
    <message>
        <source>nic w niej nie ma</source>
        <translation>nothing is in it</translation>
    </message>
    <message>
        <source>wizytówka %1: %2</source>
        <translation>card of %1: %2</translation>
    </message>
    <message>
        <source>własna wizytówka: %1</source>
        <translation>own card: %1</translation>
    </message>
    <message>
        <source>(niezapisane)</source>
        <translation>(not stored)</translation>
    </message>
    <message>
        <source>zapis usunie z niej: %1</source>
        <translation>storing takes away from it: %1</translation>
    </message>
    <message>
        <source>zapis usunie z wizytówki na serwerze: %1. Zapisać mimo to? Powtórz /my-card store.</source>
        <translation>storing takes away from the card on the server: %1. Store it all the same? Then repeat /my-card store.</translation>
    </message>
    <message>
        <source>wizytówka zapisana</source>
        <translation>card stored</translation>
    </message>
    <message>
        <source>w wizytówce nic nie zmieniono</source>
        <translation>nothing of the card was changed</translation>
    </message>
    <message>
        <source>zmiany w wizytówce porzucone</source>
        <translation>changes of the card dropped</translation>
    </message>
    <message>
        <source>zmieniono; zapisuje /my-card store, porzuca /my-card forget</source>
        <translation>changed; /my-card store stores it, /my-card forget drops it</translation>
    </message>
    <message>
        <source>nieznane pole &quot;%1&quot; (możliwe: nick name surname email www title role birth)</source>
        <translation>unknown field &quot;%1&quot; (there are: nick name surname email www title role birth)</translation>
    </message>
    <message>
        <source>własny obrazek: %1 (SHA-1 %2)</source>
        <translation>own picture: %1 (SHA-1 %2)</translation>
    </message>
    <message>
        <source>nie ma własnego obrazka</source>
        <translation>there is no own picture</translation>
    </message>
    <message>
        <source>własny obrazek ustawiony (SHA-1 %1); na serwer trafia przez /picture publish</source>
        <translation>own picture set (SHA-1 %1); /picture publish brings it to the server</translation>
    </message>
    <message>
        <source>własny obrazek usunięty</source>
        <translation>own picture removed</translation>
    </message>
    <message>
        <source>obrazek opublikowany: %1</source>
        <translation>picture published: %1</translation>
    </message>
    <message>
        <source>%1 ma nowy obrazek</source>
        <translation>%1 has a new picture</translation>
    </message>
    <message>
        <source>uzgadnianie</source>
        <translation>negotiating</translation>
    </message>
    <message>
        <source>przesyłanie</source>
        <translation>moving</translation>
    </message>
    <message>
        <source>gotowe</source>
        <translation>done</translation>
    </message>
    <message>
        <source>niekompletny: %1 z %2</source>
        <translation>incomplete: %1 of %2</translation>
    </message>
    <message>
        <source>nie udało się</source>
        <translation>failed</translation>
    </message>
    <message>
        <source>rozmiar nieznany</source>
        <translation>size unknown</translation>
    </message>
    <message>
        <source>plik</source>
        <translation>file</translation>
    </message>
    <message>
        <source>%1/s</source>
        <translation>%1/s</translation>
    </message>
    <message>
        <source>zostało %1</source>
        <translation>%1 left</translation>
    </message>
    <message>
        <source>%1 chce przysłać plik %2 (%3)</source>
        <translation>%1 offers the file %2 (%3)</translation>
    </message>
    <message>
        <source>/accept %1, /refuse %1 albo /ignore %1; wszystko inne czeka na odpowiedź, najdłużej %2 s</source>
        <translation>/accept %1, /refuse %1 or /ignore %1; everything else waits for the answer, %2 s at most</translation>
    </message>
    <message>
        <source>odmówiono pliku %1</source>
        <translation>refused file %1</translation>
    </message>
    <message>
        <source>plik %1 zostawiono bez odpowiedzi</source>
        <translation>left file %1 unanswered</translation>
    </message>
    <message>
        <source>wtyczka pyta o plik</source>
        <translation>the plugin asks for a file</translation>
    </message>
    <message>
        <source>/choose %1 PLIK wskazuje plik, samo /choose %1 żadnego</source>
        <translation>/choose %1 FILE names a file, /choose %1 alone none</translation>
    </message>
    <message>
        <source>plik %1: wysyłanie %2 do %3</source>
        <translation>file %1: sending %2 to %3</translation>
    </message>
    <message>
        <source>plik %1: odbieranie %2 od %3</source>
        <translation>file %1: receiving %2 from %3</translation>
    </message>
    <message>
        <source>nikt nie chce przysłać pliku</source>
        <translation>nobody offers a file</translation>
    </message>
    <message>
        <source>żaden plik nie jest przesyłany</source>
        <translation>no file is on its way</translation>
    </message>
    <message>
        <source>nikt nie pyta o plik</source>
        <translation>nobody asks for a file</translation>
    </message>
    <message>
        <source>nieznana odpowiedź &quot;%1&quot; (możliwe: accept refuse ignore)</source>
        <translation>unknown answer &quot;%1&quot; (possible: accept refuse ignore)</translation>
    </message>
    <message>
        <source>dopóki nie ma odpowiedzi, wszystko inne czeka</source>
        <translation>until there is an answer, everything else waits</translation>
    </message>
    <message>
        <source>po %1 s bez odpowiedzi będzie nią: no</source>
        <translation>after %1 s without an answer it is: no</translation>
    </message>
    <message>
        <source>%1 słucha: %2</source>
        <translation>%1 listens to: %2</translation>
    </message>
    <message>
        <source>%1 niczego już nie słucha</source>
        <translation>%1 listens to nothing any more</translation>
    </message>
    <message>
        <source>%1 mówi o sobie: %2</source>
        <translation>%1 shows a mood: %2</translation>
    </message>
    <message>
        <source>%1 nie podaje już nastroju</source>
        <translation>%1 shows no mood any more</translation>
    </message>
    <message>
        <source>%1 podaje miejsce: %2</source>
        <translation>%1 shows a place: %2</translation>
    </message>
    <message>
        <source>%1 nie podaje już miejsca</source>
        <translation>%1 shows no place any more</translation>
    </message>
    <message>
        <source>kontakty widzą, czego słuchasz: %1</source>
        <translation>contacts see what you listen to: %1</translation>
    </message>
    <message>
        <source>kontakty nie widzą już, czego słuchasz</source>
        <translation>contacts do not see any more what you listen to</translation>
    </message>
    <message>
        <source>kontakty widzą Twój nastrój: %1</source>
        <translation>contacts see your mood: %1</translation>
    </message>
    <message>
        <source>kontakty nie widzą już Twojego nastroju</source>
        <translation>contacts do not see your mood any more</translation>
    </message>
    <message>
        <source>kontakty widzą, gdzie jesteś: %1</source>
        <translation>contacts see where you are: %1</translation>
    </message>
    <message>
        <source>kontakty nie widzą już, gdzie jesteś</source>
        <translation>contacts do not see any more where you are</translation>
    </message>
    <message>
        <source>wysłano do serwera, dla kontaktów</source>
        <translation>sent to the server, for the contacts</translation>
    </message>
    <message>
        <source>wysłano odwołanie do serwera</source>
        <translation>sent to the server: it is taken back</translation>
    </message>
    <message>
        <source>/mail otwiera stronę poczty, /mail off zamyka powiadomienie</source>
        <translation>/mail opens the mail page, /mail off closes the notice</translation>
    </message>
    <message>
        <source>nie ma powiadomienia o poczcie</source>
        <translation>there is no news of mail</translation>
    </message>
    <message>
        <source>otwarto okno %1: %2. /dialog %1 wchodzi do niego</source>
        <translation>window %1 opened: %2. /dialog %1 goes into it</translation>
    </message>
    <message>
        <source>Okno %1: %2</source>
        <translation>Window %1: %2</translation>
    </message>
    <message>
        <source>NUMER wybiera, NUMER TEKST wypełnia, x zamyka, &lt; wychodzi, ? pomoc</source>
        <translation>NUMBER chooses, NUMBER TEXT fills in, x closes, &lt; leaves, ? help</translation>
    </message>
    <message>
        <source>NUMER wybiera, NUMER TEKST wypełnia, ok zapisuje, x zamyka, &lt; wychodzi, ? pomoc</source>
        <translation>NUMBER chooses, NUMBER TEXT fills in, ok saves, x closes, &lt; leaves, ? help</translation>
    </message>
    <message>
        <source>okno zamknięte</source>
        <translation>window closed</translation>
    </message>
    <message>
        <source>nie ma otwartego okna %1</source>
        <translation>there is no open window %1</translation>
    </message>
    <message>
        <source>żadne okno nie jest otwarte</source>
        <translation>no window is open</translation>
    </message>
    <message>
        <source>nie ma tu pozycji %1</source>
        <translation>there is no item %1 here</translation>
    </message>
    <message>
        <source>nie ma takiej strony</source>
        <translation>there is no such page</translation>
    </message>
    <message numerus="yes">
        <source>%n wierszy</source>
        <translation>
            <numerusform>%n row</numerusform>
            <numerusform>%n rows</numerusform>
        </translation>
    </message>
    <message>
        <source>pokazano %1 z %2; + pokazuje dalsze, - wcześniejsze</source>
        <translation>%1 of %2 shown; + shows more, - those before</translation>
    </message>
    <message>
        <source>okno „%1” zmieniło się; . pokazuje je</source>
        <translation>the window “%1” has changed; . shows it</translation>
    </message>
    <message>
        <source>menu: NUMER wybiera, każdy inny wiersz zamyka</source>
        <translation>menu: NUMBER chooses, any other line closes it</translation>
    </message>
    <message>
        <source>(nieaktywne)</source>
        <translation>(disabled)</translation>
    </message>
    <message>
        <source>(tylko do odczytu)</source>
        <translation>(read only)</translation>
    </message>
    <message>
        <source>%1 TEKST zmienia, %1 &quot;&quot; czyści</source>
        <translation>%1 TEXT changes it, %1 &quot;&quot; empties it</translation>
    </message>
    <message>
        <source>żadnego pliku jeszcze nie odebrano</source>
        <translation>no file has been received yet</translation>
    </message>
    <message>
        <source>jest jeszcze strona „%1”: %2</source>
        <translation>there is also the page &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>wtyczka nie ma nic dla tego kontaktu</source>
        <translation>the plugin has nothing for this contact</translation>
    </message>
    <message>
        <source>wtyczka zajmuje się własną wizytówką lub obrazkiem</source>
        <translation>the plugin is busy with your own card or picture</translation>
    </message>
    <message>
        <source>5            przycisk: naciska; znak: przestawia; lista i wybór: pokazuje; hasło: pyta o nie
5 TEKST      wpisuje; cudzysłowy zostawiają TEKST takim, jaki jest, &quot;&quot; czyści
5 #2         wybiera drugą możliwość; 5 TEKST tę z tym tekstem
5 on|off     ustawia znak
5 !          klawisz Enter w tym polu; samo ! w oknie: przycisk z wykrzyknikiem
4.12         otwiera wiersz 12 listy 4
4.12 m       menu tego wiersza
4 TEKST      szuka wierszy listy 4; 4 #40 pokazuje je od czterdziestego
.  +  -      pokazuje okno od nowa, dalej, wstecz
ok  apply    na stronie: zapisuje i zamyka, zapisuje
x  &lt;         zamyka okno; wychodzi z niego i zostawia je otwarte</source>
        <translation>5            button: presses; mark: changes; list and choice: shows; password: asks for it
5 TEXT       writes; quotes leave TEXT as it is, &quot;&quot; empties
5 #2         takes the second choice; 5 TEXT the one with this text
5 on|off     sets a mark
5 !          the Enter key in this field; ! alone in the window: the button with the mark
4.12         opens row 12 of list 4
4.12 m       the menu of this row
4 TEXT       searches the rows of list 4; 4 #40 shows them from the fortieth on
.  +  -      shows the window again, on, back
ok  apply    on a page: saves and closes, saves
x  &lt;         closes the window; leaves it, and leaves it open</translation>
    </message>
    <message>
        <source>okno „%1” zamknięte</source>
        <translation>the window “%1” is closed</translation>
    </message>
    <message>
        <source>zapisano</source>
        <translation>saved</translation>
    </message>
    <message>
        <source>okno zmieniło się wcześniej; ten wiersz nie trafił nigdzie</source>
        <translation>the window had changed before; this line went nowhere</translation>
    </message>
    <message>
        <source>to okno czeka na inne albo na odpowiedź</source>
        <translation>this window waits for another one or for an answer</translation>
    </message>
    <message>
        <source>to okno już nie czeka</source>
        <translation>this window does not wait any more</translation>
    </message>
    <message>
        <source>nie ma tu: %1</source>
        <translation>there is no such thing here: %1</translation>
    </message>
    <message>
        <source>lista</source>
        <translation>list</translation>
    </message>
    <message>
        <source>%1.1 otwiera wiersz 1, %1.1 m jego menu; %1 TEKST szuka, %1 #40 pokazuje od wiersza 40</source>
        <translation>%1.1 opens row 1, %1.1 m its menu; %1 TEXT searches, %1 #40 shows from row 40 on</translation>
    </message>
    <message>
        <source>%1 #2 wybiera drugą możliwość, %1 TEKST tę z tym tekstem</source>
        <translation>%1 #2 takes the second choice, %1 TEXT the one with this text</translation>
    </message>
    <message>
        <source>%1 przestawia znak, %1 on go stawia, %1 off zdejmuje</source>
        <translation>%1 changes the mark, %1 on sets it, %1 off takes it away</translation>
    </message>
    <message>
        <source>hasła nie pisze się tak, żeby było widoczne; teraz nie będzie go widać</source>
        <translation>a password is not typed where it can be seen; now it will not be</translation>
    </message>
    <message>
        <source>menu zamknięte</source>
        <translation>menu closed</translation>
    </message>
    <message>
        <source>pole zmienia /my-card POLE TEKST, na serwerze zapisuje /my-card store</source>
        <translation>/my-card FIELD TEXT changes a field, /my-card store stores the card on the server</translation>
    </message>
</context>
<context>
    <name>Transfers</name>
    <message>
        <source>Pliku %1 nie wysłano.</source>
        <translation>The file %1 was not sent.</translation>
    </message>
    <message>
        <source>plik „%1” od %2</source>
        <translation>the file “%1” from %2</translation>
    </message>
    <message>
        <source>Nikt nie odpowiedział, więc pominięto: %1. Pliki od nieznajomych są teraz pomijane bez pytania przez %2 minut.</source>
        <translation>Nobody answered, so this was ignored: %1. Files from strangers are now ignored without asking for %2 minutes.</translation>
    </message>
    <message>
        <source>Nikt nie odpowiedział, więc pominięto: %1. Pliki od tego nadawcy są teraz pomijane bez pytania przez %2 minut.</source>
        <translation>Nobody answered, so this was ignored: %1. Files from this sender are now ignored without asking for %2 minutes.</translation>
    </message>
    <message>
        <source>Ścieżka folderu %1 jest za długa.</source>
        <translation>The path of the folder %1 is too long.</translation>
    </message>
    <message>
        <source>Odrzucono %1. %2</source>
        <translation>Refused %1. %2</translation>
    </message>
    <message>
        <source>Pliki od dalszych nieznajomych pominięto bez pytania.</source>
        <translation>Files of further strangers were ignored unasked.</translation>
    </message>
    <message>
        <source>Pominięto %1, bo nie ma go na liście kontaktów (zmienia to %2).</source>
        <translation>Ignored %1, who is not on the contact list (%2 changes that).</translation>
    </message>
    <message>
        <source>Nie można zapisywać w folderze %1: %2</source>
        <translation>Cannot write in the folder %1: %2</translation>
    </message>
    <message>
        <source>Przerwano</source>
        <translation>Broken off</translation>
    </message>
    <message>
        <source>Potrzebna jest pełna ścieżka pliku.</source>
        <translation>The whole path of the file is needed.</translation>
    </message>
    <message>
        <source>Nie ma pliku %1.</source>
        <translation>There is no file %1.</translation>
    </message>
    <message>
        <source>Pliku %1 nie można odczytać.</source>
        <translation>The file %1 cannot be read.</translation>
    </message>
    <message>
        <source>Pliki można wysyłać dopiero po zalogowaniu.</source>
        <translation>Files can be sent once the account is online.</translation>
    </message>
    <message>
        <source>Nie ma takiego transferu, albo nie można go przerwać.</source>
        <translation>There is no such transfer, or it cannot be ended.</translation>
    </message>
    <message>
        <source>Nikt już nie czeka na tę odpowiedź.</source>
        <translation>Nobody waits for this answer any more.</translation>
    </message>
    <message>
        <source>Nie ma takiego pytania o plik.</source>
        <translation>There is no such question for a file.</translation>
    </message>
    <message>
        <source>Odbiorca chciał pobrać plik z tego komputera, a to jest wyłączone.</source>
        <translation>The receiver wanted to fetch the file from this computer, which is switched off.</translation>
    </message>
    <message>
        <source>Pliku nie można udostępnić na tym adresie.</source>
        <translation>The file cannot be published on this address.</translation>
    </message>
    <message>
        <source>Nie ma już pliku %1.</source>
        <translation>The file %1 has gone.</translation>
    </message>
    <message>
        <source>W miejscu pliku %1 stoi dowiązanie, więc go nie otwarto.</source>
        <translation>A link stands in the place of the file %1, so it was not opened.</translation>
    </message>
    <message>
        <source>%1 nie jest już zwykłym plikiem, więc go nie otwarto.</source>
        <translation>%1 is no regular file any more, so it was not opened.</translation>
    </message>
    <message>
        <source>Nie ma takiego pliku, który odebrano w całości.</source>
        <translation>There is no such file that was received whole.</translation>
    </message>
    <message>
        <source>O otwarcie tego pliku już zapytano.</source>
        <translation>You have been asked about opening this file already.</translation>
    </message>
    <message>
        <source>Plik „%1” od %2 może być programem, który zrobi z tym komputerem, co zechce. Otworzyć go mimo to?</source>
        <translation>The file “%1” from %2 may be a program, which can do with this computer what it likes. Open it all the same?</translation>
    </message>
    <message>
        <source>Otwieranie pliku</source>
        <translation>Opening a file</translation>
    </message>
    <message>
        <source>Nie ma programu, który otworzy plik %1.</source>
        <translation>There is no program that opens the file %1.</translation>
    </message>
    <message>
        <source>Pliku nie można udostępnić: na porcie %1 udostępnia teraz pliki konto %2. Inny port ustawia się w %3.</source>
        <translation>The file cannot be published: on port %1 the account %2 publishes files now. Another port is set by %3.</translation>
    </message>
    <message>
        <source>Pliku nie można udostępnić na porcie %1: %2</source>
        <translation>The file cannot be published on port %1: %2</translation>
    </message>
</context>
</TS>
