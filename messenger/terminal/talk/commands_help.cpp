// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What help shows.
#include <array>

#include "messenger/terminal/screen/display_width.h"
#include "messenger/terminal/talk/command_families.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

constexpr int kColumnsForUsage = 70;  // narrower windows show the commands without their arguments

QString help(Session& session, Arguments& arguments) {
    QString name = arguments.word();
    if (name.startsWith(u'/')) name.remove(0, 1);
    if (!name.isEmpty()) {
        const CommandRow* row = findCommand(name);
        if (row == nullptr) return say(Text::UnknownCommand, name);
        session.log().list(usageOf(*row), Style::Heading);
        session.log().list(QStringLiteral("  ") + QCoreApplication::translate("Commands", row->help));
        return {};
    }
    const bool narrow = session.display().logColumns() < kColumnsForUsage;
    const int left = narrow ? 12 : 34;
    for (const CommandRow& row : commandTable()) {
        const QString help = QCoreApplication::translate("Commands", row.help);
        const QString usage = narrow ? QStringLiteral("/%1").arg(QLatin1String(row.name)) : usageOf(row);
        const bool fits = displayWidth(usage) < left;
        session.log().list((fits ? fitToWidth(usage, left) : usage + u'\n') + help, Style::Plain, left);
    }
    for (const QString& line : say(Text::HelpKeys).split(u'\n')) session.log().list(line, Style::Faint);
    return {};
}

using Kind = ArgumentKind;

constexpr std::array kRows = std::to_array<CommandRow>({
    {"help", QT_TRANSLATE_NOOP("Commands", "[POLECENIE]"),
     QT_TRANSLATE_NOOP("Commands", "lista poleceń albo opis jednego"), Kind::Command, Kind::None, false, &help},
});

}  // namespace

QString usageOf(const CommandRow& row) {
    return (QStringLiteral("/%1 ").arg(QLatin1String(row.name)) +
            QCoreApplication::translate("Commands", row.arguments))
        .trimmed();
}

std::span<const CommandRow> helpCommands() { return kRows; }

}  // namespace oku::terminal
