// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/process/process_protection.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <csignal>

namespace oku {

void protectProcess() {
    umask(S_IRWXG | S_IRWXO);
    // No image fits into a byte. Where the system hands images to a program, it does so whatever the limit, 0 included,
    // but for this one.
    const rlimit none{1, 1};
    setrlimit(RLIMIT_CORE, &none);  // lowering a limit is always allowed
    std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is seen by the write, as a full disk is
}

}  // namespace oku
