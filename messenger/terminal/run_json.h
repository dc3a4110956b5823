#pragma once

#include "messenger/terminal/client.h"
#include "messenger/terminal/options.h"

namespace oku::terminal {

// The program's life with --json, from start to `bye`.
ExitCode runJson(Client& client, const Options& options);

}  // namespace oku::terminal
