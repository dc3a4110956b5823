// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/terminal/ending.h"

#include <unistd.h>

#include "messenger/terminal/texts.h"

namespace oku::terminal {

void tellWhyItEnds(const QString& reason) {
    writeAll(STDERR_FILENO, QStringLiteral("oku-terminal: %1\n").arg(reason).toUtf8());
}

ExitCode endOf(Output& output) {
    output.flush();
    if (!output.lost()) return ExitCode::Success;
    tellWhyItEnds(say(Text::OutputUnread));
    return ExitCode::Failure;
}

}  // namespace oku::terminal
