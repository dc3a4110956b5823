// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

/// How the program ends, and how it tells why.
#pragma once

#include "messenger/terminal/options.h"
#include "messenger/terminal/posix_io.h"

namespace oku::terminal {

/// One line on the standard error.
void tellWhyItEnds(const QString& reason);

/// Ended as it should, unless nobody read its output, which is told.
ExitCode endOf(Output& output);

}  // namespace oku::terminal
