// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "tests/torture/allocations.h"

#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

#include "tests/torture/quick_host.h"

namespace torture {
namespace {

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

bool g_counting = false;
std::size_t g_count = 0;
std::size_t g_failing = kNever;
// Other threads may allocate too, those of a sanitizer among them.
std::atomic<std::size_t> g_blocks{0};
std::atomic<std::size_t> g_bytes{0};

void* allocate(std::size_t size) {
    if (g_counting && g_inPlugin && g_count++ == g_failing) return nullptr;
    void* const block = std::malloc(size ? size : 1);
    if (block) {
        ++g_blocks;
        g_bytes += malloc_usable_size(block);
    }
    return block;
}

void release(void* block) noexcept {
    if (!block) return;
    --g_blocks;
    g_bytes -= malloc_usable_size(block);
    std::free(block);
}

}  // namespace

FailingAllocation::FailingAllocation(std::size_t failing) {
    g_count = 0;
    g_failing = failing;
    g_counting = true;
}

FailingAllocation::~FailingAllocation() {
    g_counting = false;
    g_failing = kNever;
}

std::size_t FailingAllocation::count() const { return g_count; }

Living living() { return {g_blocks, g_bytes}; }

}  // namespace torture

void* operator new(std::size_t size) {
    if (void* const block = torture::allocate(size)) return block;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return torture::allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return torture::allocate(size); }
void operator delete(void* block) noexcept { torture::release(block); }
void operator delete[](void* block) noexcept { torture::release(block); }
void operator delete(void* block, std::size_t) noexcept { torture::release(block); }
void operator delete[](void* block, std::size_t) noexcept { torture::release(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { torture::release(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { torture::release(block); }
