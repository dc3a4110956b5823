// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/options.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <QCoreApplication>
#include <QFileInfo>

#include "messenger/core/values/status.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

// One option: it sets a flag, or takes a value.
struct OptionRow {
    const char* name;
    const char* value;  // how help names the value; empty for a flag
    const char* help;
    bool Options::*flag;
    QString Options::*text;
};

constexpr std::array kOptions = std::to_array<OptionRow>({
    {"--profile", QT_TRANSLATE_NOOP("Options", "FOLDER"),
     QT_TRANSLATE_NOOP("Options", "folder profilu: ustawienia, listy kontaktów, historia"), nullptr,
     &Options::profileDir},
    {"--module", QT_TRANSLATE_NOOP("Options", "PLIK"),
     QT_TRANSLATE_NOOP("Options", "plik wtyczki (zwykle protoLink.module obok programu)"), nullptr,
     &Options::modulePath},
    {"--account", QT_TRANSLATE_NOOP("Options", "JID"),
     QT_TRANSLATE_NOOP("Options", "konto, którego dotyczą polecenia; nowe zostanie dodane"), nullptr,
     &Options::account},
    {"--status", QT_TRANSLATE_NOOP("Options", "STATUS"),
     QT_TRANSLATE_NOOP("Options", "połącz od razu: online chat away xa dnd invisible"), nullptr, &Options::status},
    {"--ca-file", QT_TRANSLATE_NOOP("Options", "PLIK"),
     QT_TRANSLATE_NOOP("Options", "zaufane urzędy certyfikacji w pliku PEM, obok systemowych"), nullptr,
     &Options::caFile},
    {"--json", "", QT_TRANSLATE_NOOP("Options", "polecenia i zdarzenia jako wiersze JSON, dla skryptów"),
     &Options::json, nullptr},
    {"--plain", "", QT_TRANSLATE_NOOP("Options", "zwykłe wiersze zamiast ekranu (tak też bez terminala)"),
     &Options::plain, nullptr},
    {"--verbose", "", QT_TRANSLATE_NOOP("Options", "pokazuj też dziennik wtyczki i programu"), &Options::verbose,
     nullptr},
});

constexpr const char* kHelpHead = QT_TRANSLATE_NOOP("Options",
                                                    "oku-terminal - komunikator XMPP w terminalu\n\n"
                                                    "Użycie: oku-terminal [opcje]\n\nOpcje:\n");

constexpr const char* kHelpTail =
    QT_TRANSLATE_NOOP("Options",
                      "  --help              ten tekst\n"
                      "  --version           wersja programu\n\n"
                      "Opcja z wartością może mieć postać --profile FOLDER albo --profile=FOLDER.\n\n"
                      "Środowisko:\n"
                      "  OKU_PASSWORD        hasło konta z --account (inaczej program o nie zapyta)\n"
                      "  LANG                pl wybiera polski, inny język (też żaden) angielski\n"
                      "  NO_COLOR            bez kolorów\n\n"
                      "Program kończy się kodem 0, 1 (nie można uruchomić) albo 2 (złe opcje).\n"
                      "Polecenia w programie: /help. Całość opisuje: man oku-terminal\n");

const OptionRow* rowOf(const QString& name) {
    for (const OptionRow& row : kOptions)
        if (name == QLatin1String(row.name)) return &row;
    return nullptr;
}

// One option with its value, taken from the front of `rest`; a text is the reason why not.
QString takeOption(QStringList& rest, Options& options, QStringList& seen) {
    const QString argument = rest.takeFirst();
    const bool joined = argument.startsWith(QLatin1String("--")) && argument.contains(u'=');
    const QString name = joined ? argument.section(u'=', 0, 0) : argument;
    const OptionRow* row = rowOf(name);
    if (row == nullptr) return say(argument.startsWith(u'-') ? Text::OptionUnknown : Text::OptionUnexpected, argument);
    if (seen.contains(name)) return say(Text::OptionTwice, name);
    seen.append(name);
    if (row->flag != nullptr) {
        options.*row->flag = true;
        return joined ? say(Text::OptionUnexpected, argument) : QString();
    }
    if (!joined && (rest.isEmpty() || rest.first().startsWith(QLatin1String("--"))))
        return say(Text::OptionNeedsValue, name);
    options.*row->text = joined ? argument.section(u'=', 1) : rest.takeFirst();
    return (options.*row->text).isEmpty() ? say(Text::OptionNeedsValue, name) : QString();
}

}  // namespace

ReadOptions readOptions(const QStringList& arguments) {
    if (arguments.contains(QLatin1String("--help")) || arguments.contains(QLatin1String("-h")))
        return PrintAndEnd{optionHelp()};
    if (arguments.contains(QLatin1String("--version")))
        return PrintAndEnd{QStringLiteral("oku-terminal %1\n").arg(QStringLiteral(OKU_VERSION))};
    Options options;
    QStringList rest = arguments;
    QStringList seen;
    while (!rest.isEmpty())
        if (const QString reason = takeOption(rest, options, seen); !reason.isEmpty()) return OptionError{reason};
    if (!options.caFile.isEmpty() && !QFileInfo(options.caFile).isReadable())
        return OptionError{say(Text::FileUnreadable, options.caFile)};
    if (!options.account.isEmpty() && options.account.indexOf(u'@') < 1)
        return OptionError{say(Text::NotJid, options.account)};
    bool known = true;
    if (!options.status.isEmpty() && (statusFromWord(options.status, &known) == Status::error || !known))
        return OptionError{say(Text::BadStatus, options.status)};
    return options;
}

QString takePassword() {
    char* value = std::getenv("OKU_PASSWORD");
    if (value == nullptr) return {};
    const QString password = QString::fromLocal8Bit(value);
    // The environment that the process was started with stays readable for other programs of this user.
    explicit_bzero(value, std::strlen(value));
    qunsetenv("OKU_PASSWORD");
    return password;
}

QString optionHelp() {
    QString text = QCoreApplication::translate("Options", kHelpHead);
    for (const OptionRow& row : kOptions) {
        const QString left =
            QStringLiteral("  %1 %2").arg(QLatin1String(row.name), QCoreApplication::translate("Options", row.value));
        text += left.leftJustified(22) + QCoreApplication::translate("Options", row.help) + u'\n';
    }
    return text + QCoreApplication::translate("Options", kHelpTail);
}

}  // namespace oku::terminal
