// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/growing_text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

namespace util {

void GrowingText::swap(GrowingText& other) noexcept {
    bytes_.swap(other.bytes_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
}

void GrowingText::makeRoom(std::size_t more) {
    constexpr std::size_t kSmallest = 256;
    constexpr std::size_t kLargest = PTRDIFF_MAX / 2;
    if (more >= kLargest - size_) throw std::bad_alloc();
    const std::size_t needed = size_ + more + 1;
    if (needed <= capacity_) return;
    const std::size_t capacity = std::max({needed, capacity_ * 2, kSmallest});
    void* const grown = std::realloc(bytes_.get(), capacity);
    if (!grown) throw std::bad_alloc();
    static_cast<void>(bytes_.release());
    bytes_.reset(static_cast<char*>(grown));
    capacity_ = capacity;
}

void GrowingText::append(std::string_view piece) {
    makeRoom(piece.size());
    std::copy(piece.begin(), piece.end(), data() + size_);
    truncate(size_ + piece.size());
}

void GrowingText::insert(std::size_t at, char byte) {
    makeRoom(1);
    std::memmove(data() + at + 1, data() + at, size_ - at);
    data()[at] = byte;
    truncate(size_ + 1);
}

void GrowingText::truncate(std::size_t size) {
    size_ = size;
    data()[size] = '\0';
}

}  // namespace util
