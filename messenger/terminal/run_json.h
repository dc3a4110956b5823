// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include "messenger/core/messenger_face.h"
#include "messenger/terminal/options.h"

namespace oku::terminal {

/// The program's life with --json, from start to `bye`.
ExitCode runJson(MessengerFace& messenger, const Options& options);

}  // namespace oku::terminal
