// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Bytes that grow piece by piece to any length.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

namespace util {

/// Text whose growth the C library may do by moving pages instead of bytes: what a std::string copies, and has in
/// memory twice meanwhile. A failed allocation throws std::bad_alloc and changes nothing. A NUL stands behind the text
/// once there has been any.
class GrowingText {
public:
    GrowingText() = default;
    GrowingText(GrowingText&& other) noexcept { swap(other); }
    GrowingText& operator=(GrowingText&& other) noexcept {
        GrowingText taken(std::move(other));
        swap(taken);
        return *this;
    }

    void append(std::string_view piece);
    void insert(std::size_t at, char byte);
    /// Shortens the text, which there has been.
    void truncate(std::size_t size);

    char* data() { return bytes_.get(); }
    std::size_t size() const { return size_; }
    std::string_view view() const { return {bytes_.get(), size_}; }

private:
    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };

    void swap(GrowingText& other) noexcept;
    /// Makes room for so many bytes more, and for a NUL behind them.
    void makeRoom(std::size_t more);

    std::unique_ptr<char, Free> bytes_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

}  // namespace util
