// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include "messenger/core/messenger_face.h"
#include "messenger/terminal/options.h"

namespace oku::terminal {

/// The program's life at a person's terminal, or with plain lines where there is none.
ExitCode runInteractive(MessengerFace& messenger, const Options& options);

}  // namespace oku::terminal
