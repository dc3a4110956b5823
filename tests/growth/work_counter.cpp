// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/growth/work_counter.h"

#include <cstddef>

namespace {

std::uint64_t steps = 0;

}  // namespace

std::uint64_t workDone() { return steps; }

extern "C" {

// The linker puts these in the place of the libraries' own.
void __wrap___sanitizer_cov_trace_pc() { ++steps; }

void* __real_memchr(const void* bytes, int wanted, std::size_t size);
int __real_memcmp(const void* one, const void* other, std::size_t size);
void* __real_memmove(void* to, const void* from, std::size_t size);
void* __real_memcpy(void* to, const void* from, std::size_t size);

void* __wrap_memchr(const void* bytes, int wanted, std::size_t size) {
    void* const found = __real_memchr(bytes, wanted, size);
    steps += found ? static_cast<std::size_t>(static_cast<const char*>(found) - static_cast<const char*>(bytes)) : size;
    return found;
}

int __wrap_memcmp(const void* one, const void* other, std::size_t size) {
    steps += size;
    return __real_memcmp(one, other, size);
}

void* __wrap_memmove(void* to, const void* from, std::size_t size) {
    steps += size;
    return __real_memmove(to, from, size);
}

void* __wrap_memcpy(void* to, const void* from, std::size_t size) {
    steps += size;
    return __real_memcpy(to, from, size);
}

}  // extern "C"
