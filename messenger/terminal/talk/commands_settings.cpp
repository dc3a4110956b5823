// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Commands about the settings of an account.
#include <array>

#include "messenger/core/values/setting_keys.h"
#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/screen/wording.h"
#include "messenger/terminal/talk/command_families.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/texts.h"

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
    {"XMPP/SI/Path", false,
     QT_TRANSLATE_NOOP("SettingKeys", "folder odebranych plików; %documents% i %from% się zmieniają")},
    {"OKU/FilesOfStrangers", true, QT_TRANSLATE_NOOP("SettingKeys", "1: pytaj też o pliki od nieznajomych")},
    {"OKU/PublishFiles", true, QT_TRANSLATE_NOOP("SettingKeys", "1: wysyłane pliki można pobrać z tego komputera")},
    {"OKU/PublishAddress", false, QT_TRANSLATE_NOOP("SettingKeys", "adres, pod którym można je pobrać")},
    {"OKU/PublishPort", true, QT_TRANSLATE_NOOP("SettingKeys", "port, na którym można je pobrać; 0: dowolny")},
    {"desc/Protect", true, QT_TRANSLATE_NOOP("SettingKeys", "1: opis nie zmienia się ze statusem")},
    {"OKU/SendTyping", true, QT_TRANSLATE_NOOP("SettingKeys", "0: nie wysyłaj powiadomień o pisaniu")},
    {"OKU/TellPictures", true, QT_TRANSLATE_NOOP("SettingKeys", "1: mów o nowych obrazkach kontaktów")},
    {"OKU/PublishTune", true, QT_TRANSLATE_NOOP("SettingKeys", "1: pokazuj kontaktom, co gra odtwarzacz")},
    {"OKU/PasswordInFile", true,
     QT_TRANSLATE_NOOP("SettingKeys", "hasło w pliku konta, gdy nie ma pęku kluczy: 1 tak, 0 nie")},
    {"OKU/AllowClearText", true, QT_TRANSLATE_NOOP("SettingKeys", "1: połączenie bez szyfrowania dozwolone")},
});

constexpr int kKeyColumns = 24;

const SettingRow* findSetting(const QString& key) {
    for (const SettingRow& row : settingTable())
        if (key.compare(QLatin1String(row.key), Qt::CaseInsensitive) == 0) return &row;
    return nullptr;
}

QString shownValue(const SettingRow& row, const QVariant& value) {
    if (!value.isValid()) return say(Text::SettingUnset);
    return oneLine(shownSetting(QLatin1String(row.key), value).toString());
}

QString set(Session& session, Arguments& arguments) {
    const QString key = arguments.word();
    if (key.isEmpty() || arguments.empty()) return say(Text::Usage);
    const SettingRow* row = findSetting(key);
    if (row == nullptr) return say(Text::UnknownSetting, key);
    const QString text = arguments.rest();
    QVariant value = text;
    if (row->number) {
        bool whole = false;
        value = text.toInt(&whole);
        if (!whole) return say(Text::BadNumber, text);
    }
    const QString name = QString::fromLatin1(row->key);
    const QString reason = session.messenger().accounts().setSetting(session.chosen().jid(), name, value);
    if (reason.isEmpty()) session.log().tell(QStringLiteral("%1 = %2").arg(name, shownValue(*row, value)));
    return reason;
}

// Without a word those that were changed, a line each: all of them would push away what is read.
QString get(Session& session, Arguments& arguments) {
    const QString part = arguments.word();
    const bool all = part == QLatin1String("all");
    int listed = 0;
    int left = 0;
    for (const SettingRow& row : settingTable()) {
        const QString name = QString::fromLatin1(row.key);
        const QVariant value = session.messenger().accounts().settingValue(session.chosen().jid(), name);
        const bool wanted = part.isEmpty() ? value.isValid() : all || name.contains(part, Qt::CaseInsensitive);
        ++(wanted ? listed : left);
        if (!wanted) continue;
        const QString line = fitToWidth(name, kKeyColumns) + QStringLiteral("= ") + shownValue(row, value);
        const QString help = QStringLiteral("  (%1)").arg(QCoreApplication::translate("SettingKeys", row.help));
        const bool brief = displayWidth(line + help) > session.display().logColumns() && part.isEmpty();
        session.log().list(brief ? line : line + help);
    }
    if (listed == 0 && !part.isEmpty()) return say(Text::UnknownSetting, part);
    if (part.isEmpty()) session.log().list(sayCounted(Text::SettingsLeft, left), Style::Faint);
    return {};
}

QString typing(Session& session, Arguments& arguments) {
    const QString word = arguments.word();
    const QString key = QString::fromUtf16(setting::sendTyping);
    if (word != QLatin1String("on") && word != QLatin1String("off")) return say(Text::Usage);
    const bool on = word == QLatin1String("on");
    const QString reason = session.messenger().accounts().setSetting(session.chosen().jid(), key, on ? 1 : 0);
    if (reason.isEmpty()) session.log().tell(say(on ? Text::TypingOn : Text::TypingOff));
    return reason;
}

QString pin(Session& session, Arguments& arguments) {
    const QString word = arguments.word();
    const QString account = session.chosen().jid();
    const bool off = word == QLatin1String("off");
    const QString fingerprint = off              ? QString()
                                : word.isEmpty() ? session.accountDisplay().refusedCertificate(account)
                                                 : word;
    if (!off && fingerprint.isEmpty()) return say(Text::NoCertificate);
    const QString reason = session.messenger().accounts().pinCertificate(account, fingerprint);
    if (reason.isEmpty()) session.log().tell(off ? say(Text::PinTakenBack) : say(Text::Pinned, fingerprint));
    return reason;
}

using Kind = ArgumentKind;

constexpr std::array kRows = std::to_array<CommandRow>({
    {"set", QT_TRANSLATE_NOOP("Commands", "KLUCZ WARTOŚĆ"), QT_TRANSLATE_NOOP("Commands", "zmienia ustawienie konta"),
     Kind::Setting, Kind::None, true, &set},
    {"get", QT_TRANSLATE_NOOP("Commands", "[CZĘŚĆ | all]"),
     QT_TRANSLATE_NOOP("Commands", "zmienione ustawienia konta, te z częścią nazwy, wszystkie"), Kind::Setting,
     Kind::None, true, &get},
    {"typing", QT_TRANSLATE_NOOP("Commands", "[on|off]"),
     QT_TRANSLATE_NOOP("Commands", "czy wysyłać powiadomienia o pisaniu"), Kind::Switch, Kind::None, true, &typing},
    {"pin", QT_TRANSLATE_NOOP("Commands", "[ODCISK | off]"),
     QT_TRANSLATE_NOOP("Commands", "przyjmuje odrzucony certyfikat serwera"), Kind::None, Kind::None, true, &pin},
});

}  // namespace

std::span<const SettingRow> settingTable() { return kSettings; }

std::span<const CommandRow> settingCommands() { return kRows; }

}  // namespace oku::terminal
