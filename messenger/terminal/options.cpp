#include "messenger/terminal/options.h"

#include <array>
#include <QDir>
#include <QFileInfo>

#include "messenger/core/types.h"
#include "messenger/terminal/texts.h"

#ifndef OKU_PLUGIN_DIR
#error "the build sets OKU_PLUGIN_DIR, the folder of installed modules"
#endif

namespace oku::terminal {
namespace {

// One option: it sets a flag, or takes a value.
struct OptionRow {
    const char* name;
    Words value;  // how help names the value; empty for a flag
    Words help;
    bool Options::*flag;
    QString Options::*text;
};

constexpr std::array kOptions = std::to_array<OptionRow>({
    {"--profile",
     {"FOLDER", "FOLDER"},
     {"folder profilu: ustawienia, listy kontaktów, historia",
      "folder of the profile: settings, contact lists, history"},
     nullptr,
     &Options::profileDir},
    {"--module",
     {"PLIK", "FILE"},
     {"plik wtyczki (zwykle protoLink.module obok programu)", "the plugin's file (usually protoLink.module beside it)"},
     nullptr,
     &Options::modulePath},
    {"--account",
     {"JID", "JID"},
     {"konto, którego dotyczą polecenia; nowe zostanie dodane", "the account that commands mean; a new one is added"},
     nullptr,
     &Options::account},
    {"--status",
     {"STATUS", "STATUS"},
     {"połącz od razu: online chat away xa dnd invisible", "connect at once: online chat away xa dnd invisible"},
     nullptr,
     &Options::status},
    {"--ca-file",
     {"PLIK", "FILE"},
     {"zaufane urzędy certyfikacji w pliku PEM, obok systemowych",
      "certificate authorities to trust (PEM) beside the system's"},
     nullptr,
     &Options::caFile},
    {"--json",
     {"", ""},
     {"polecenia i zdarzenia jako wiersze JSON, dla skryptów", "commands and events as JSON lines, for scripts"},
     &Options::json,
     nullptr},
    {"--plain",
     {"", ""},
     {"zwykłe wiersze zamiast ekranu (tak też bez terminala)",
      "plain lines instead of a screen (also without a terminal)"},
     &Options::plain,
     nullptr},
    {"--verbose",
     {"", ""},
     {"pokazuj też dziennik wtyczki i programu", "show the log of plugin and program as well"},
     &Options::verbose,
     nullptr},
});

constexpr Words kHelpHead = {
    "oku-terminal - komunikator XMPP w terminalu\n\n"
    "Użycie: oku-terminal [opcje]\n\nOpcje:\n",
    "oku-terminal - an XMPP messenger in a terminal\n\n"
    "Usage: oku-terminal [options]\n\nOptions:\n"};

constexpr Words kHelpTail = {
    "  --help              ten tekst\n"
    "  --version           wersja programu\n\n"
    "Opcja z wartością może mieć postać --profile FOLDER albo --profile=FOLDER.\n\n"
    "Środowisko:\n"
    "  OKU_PASSWORD        hasło konta z --account (inaczej program o nie zapyta)\n"
    "  LANG                pl... lub brak wybiera polski, inny język angielski\n"
    "  NO_COLOR            bez kolorów\n\n"
    "Program kończy się kodem 0, 1 (nie można uruchomić) albo 2 (złe opcje).\n"
    "Polecenia w programie: /help. Całość opisuje: man oku-terminal\n",
    "  --help              this text\n"
    "  --version           the program's version\n\n"
    "An option with a value may stand as --profile FOLDER or --profile=FOLDER.\n\n"
    "Environment:\n"
    "  OKU_PASSWORD        password of --account (else the program asks for it)\n"
    "  LANG                pl... or none chooses Polish, another one English\n"
    "  NO_COLOR            no colours\n\n"
    "The program ends with 0, 1 (it could not start) or 2 (wrong options).\n"
    "Commands inside the program: /help. All of it: man oku-terminal\n"};

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
    const QString password = qEnvironmentVariable("OKU_PASSWORD");
    qunsetenv("OKU_PASSWORD");
    return password;
}

QString optionHelp() {
    QString text = say(kHelpHead);
    for (const OptionRow& row : kOptions) {
        const QString left = QStringLiteral("  %1 %2").arg(QLatin1String(row.name), say(row.value));
        text += left.leftJustified(22) + say(row.help) + u'\n';
    }
    return text + say(kHelpTail);
}

QString defaultModulePath(const QString& programDir) {
    const QString beside = QDir(programDir).filePath(QStringLiteral("protoLink.module"));
    if (QFileInfo::exists(beside)) return beside;
    const QString installed = QDir(QStringLiteral(OKU_PLUGIN_DIR)).filePath(QStringLiteral("protoLink.module"));
    return QFileInfo::exists(installed) ? installed : beside;
}

}  // namespace oku::terminal
