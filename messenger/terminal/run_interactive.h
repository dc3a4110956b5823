#pragma once

#include "messenger/terminal/client.h"
#include "messenger/terminal/options.h"

namespace oku::terminal {

// The program's life at a person's terminal, or with plain lines where there is none.
ExitCode runInteractive(Client& client, const Options& options);

}  // namespace oku::terminal
