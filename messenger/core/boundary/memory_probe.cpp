// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/boundary/memory_probe.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <sys/syscall.h>
#include <unistd.h>
#include <climits>
#endif

namespace oku {

#ifdef _WIN32

bool readMemory(std::uintptr_t address, void* out, std::size_t size) {
    SIZE_T done = 0;
    return ReadProcessMemory(GetCurrentProcess(), reinterpret_cast<const void*>(address), out, size, &done) &&
           done == size;
}

#else

// A pipe takes bytes from an address that cannot be read with EFAULT, where reading them here would end the program.
// The system is asked directly, as the library's function may look at the bytes itself (sanitizers do).
bool readMemory(std::uintptr_t address, void* out, std::size_t size) {
    if (size == 0 || size > PIPE_BUF) return false;
    int ends[2];
    if (pipe(ends) != 0) return false;
    const auto length = static_cast<ssize_t>(size);
    const bool ok = syscall(SYS_write, ends[1], address, size) == length && read(ends[0], out, size) == length;
    close(ends[0]);
    close(ends[1]);
    return ok;
}

#endif

}  // namespace oku
