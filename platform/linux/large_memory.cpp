// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/large_memory.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace util {

void expectToFill(void* memory, std::size_t bytes) {
    // Smaller memory rarely holds a whole large page.
    constexpr std::size_t kWorthwhile = std::size_t{4} << 20;
    if (bytes < kWorthwhile) return;
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto begin = reinterpret_cast<std::uintptr_t>(memory);
    const std::uintptr_t first = (begin + page - 1) / page * page;
    const std::uintptr_t end = (begin + bytes) / page * page;
    madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
}

}  // namespace util
