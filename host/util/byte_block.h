// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Sixteen bytes looked at together.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define PROTOLINK_SSE2 1
#endif

namespace util {

/// A block of bytes, and which of them answer to a question: bit i of a mask stands for byte i.
class ByteBlock {
public:
    static constexpr std::size_t kSize = 16;

    /// The answers to one question, or to several joined by |.
    class Marks {
    public:
        Marks operator|(Marks other) const { return Marks(bits_ | other.bits_); }
#if PROTOLINK_SSE2
        explicit Marks(__m128i bits) : bits_(bits) {}
        std::uint32_t mask() const { return static_cast<std::uint32_t>(_mm_movemask_epi8(bits_)); }

    private:
        __m128i bits_;
#else
        explicit Marks(std::uint32_t bits) : bits_(bits) {}
        std::uint32_t mask() const { return bits_; }

    private:
        std::uint32_t bits_;
#endif
    };

#if PROTOLINK_SSE2
    explicit ByteBlock(const char* from) : bytes_(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from))) {}

    Marks equalTo(char wanted) const { return Marks(_mm_cmpeq_epi8(bytes_, _mm_set1_epi8(wanted))); }
    /// Below `limit` as signed numbers: all bytes beyond ASCII are.
    Marks below(char limit) const { return Marks(_mm_cmplt_epi8(bytes_, _mm_set1_epi8(limit))); }

private:
    __m128i bytes_;
#else
    explicit ByteBlock(const char* from) { std::memcpy(bytes_, from, kSize); }

    Marks equalTo(char wanted) const {
        return marksOf([=](signed char byte) { return byte == static_cast<signed char>(wanted); });
    }
    /// Below `limit` as signed numbers: all bytes beyond ASCII are.
    Marks below(char limit) const {
        return marksOf([=](signed char byte) { return byte < static_cast<signed char>(limit); });
    }

private:
    template <typename Test>
    Marks marksOf(Test test) const {
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < kSize; ++i) bits |= static_cast<std::uint32_t>(test(bytes_[i])) << i;
        return Marks(bits);
    }

    signed char bytes_[kSize];
#endif
};

}  // namespace util
