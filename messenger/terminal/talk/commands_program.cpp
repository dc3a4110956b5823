// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Commands about the program itself.
#include <array>

#include "messenger/terminal/talk/command_families.h"
#include "messenger/terminal/talk/session.h"
#include "messenger/terminal/texts.h"

namespace oku::terminal {
namespace {

QString clear(Session& session, Arguments&) {
    session.log().clearWindow();
    return {};
}

QString quit(Session& session, Arguments&) {
    session.quit();
    return {};
}

using Kind = ArgumentKind;

constexpr std::array kRows = std::to_array<CommandRow>({
    {"clear", kNothing, QT_TRANSLATE_NOOP("Commands", "czyści okno"), Kind::None, Kind::None, false, &clear},
    {"quit", kNothing, QT_TRANSLATE_NOOP("Commands", "kończy program"), Kind::None, Kind::None, false, &quit},
});

}  // namespace

std::span<const CommandRow> programCommands() { return kRows; }

}  // namespace oku::terminal
