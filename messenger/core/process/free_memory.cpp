// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/process/free_memory.h"

#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace oku {

void giveBackFreeMemory() {
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

}  // namespace oku
