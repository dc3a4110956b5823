// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Building blocks of the text conversions: sixteen units at a time, collected on the stack. Inside of host/util only.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "host/util/byte_block.h"
#include "host/util/large_memory.h"

namespace util {

/// How many units the functions below read and write at once.
inline constexpr std::size_t kWideStep = ByteBlock::kSize;

/// Writes 16 bytes as 16 units, each byte by its own number.
inline void widen(const char* from, char16_t* to) {
#if PROTOLINK_SSE2
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    const __m128i zero = _mm_setzero_si128();
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_unpacklo_epi8(bytes, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to + 8), _mm_unpackhi_epi8(bytes, zero));
#else
    for (std::size_t i = 0; i < kWideStep; ++i) to[i] = static_cast<unsigned char>(from[i]);
#endif
}

/// One bit for each of 16 bytes that is no ASCII.
inline std::uint32_t nonAsciiMask(const char* from) { return ByteBlock(from).below(0).mask(); }

/// What XML text does not hold as it is: `<`, `&`, controls and all that is no ASCII.
inline bool isMarkup(char byte) { return static_cast<signed char>(byte) < ' ' || byte == '<' || byte == '&'; }

/// One bit for each of 16 bytes that is markup.
inline std::uint32_t markupMask(const char* from) {
    const ByteBlock block(from);
    return (block.below(' ') | block.equalTo('<') | block.equalTo('&')).mask();
}

/// Writes eight bytes as eight units.
inline void widenHalf(const char* from, char16_t* to) {
#if PROTOLINK_SSE2
    const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
#else
    for (std::size_t i = 0; i < kWideStep / 2; ++i) to[i] = static_cast<unsigned char>(from[i]);
#endif
}

/// Writes `count` bytes as units and nothing behind them. The last step goes over what is written already where the
/// count is no multiple of it.
inline void widenExactly(const char* from, std::size_t count, char16_t* to) {
    constexpr std::size_t kHalf = kWideStep / 2;
    if (count < kHalf) {
        for (std::size_t i = 0; i < count; ++i) to[i] = static_cast<unsigned char>(from[i]);
        return;
    }
    for (std::size_t at = 0; at + kHalf <= count; at += kHalf) widenHalf(from + at, to + at);
    widenHalf(from + count - kHalf, to + count - kHalf);
}

/// Writes 16 units as 16 bytes when all are ASCII; otherwise tells false, and what was written means nothing.
inline bool narrow(const char16_t* from, char* to) {
#if PROTOLINK_SSE2
    const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + 8));
    const __m128i beyond = _mm_and_si128(_mm_or_si128(low, high), _mm_set1_epi16(static_cast<short>(0xFF80)));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), _mm_packus_epi16(low, high));
    return _mm_movemask_epi8(_mm_cmpeq_epi16(beyond, _mm_setzero_si128())) == 0xFFFF;
#else
    char16_t all = 0;
    for (std::size_t i = 0; i < kWideStep; ++i) {
        all = static_cast<char16_t>(all | from[i]);
        to[i] = static_cast<char>(from[i]);
    }
    return all < 0x80;
#endif
}

/// True when no byte is markup. Up to `end` reading is allowed, which may lie behind the bytes.
inline bool isPlain(std::string_view bytes, const char* end) {
    const char* const from = bytes.data();
    if (bytes.size() < kWideStep) {
        if (end - from >= static_cast<std::ptrdiff_t>(kWideStep))
            return (markupMask(from) & ((1u << bytes.size()) - 1)) == 0;
        bool markup = false;
        for (const char byte : bytes) markup |= isMarkup(byte);
        return !markup;
    }
    std::uint32_t marks = markupMask(from + bytes.size() - kWideStep);
    for (std::size_t at = 0; at + kWideStep <= bytes.size(); at += kWideStep) marks |= markupMask(from + at);
    return marks == 0;
}

/// Collects converted text in a block on the stack. A text that fits into the block reaches its string in one
/// allocation of the right size; a longer one goes there block by block.
template <typename Unit>
class UnitBlock {
public:
    /// What is collected is appended to `target`; null drops it.
    explicit UnitBlock(std::basic_string<Unit>* target) : target_(target) {}
    UnitBlock(const UnitBlock&) = delete;
    UnitBlock& operator=(const UnitBlock&) = delete;

    /// Where the next units go; `expected` tells about how many more the text has, and is asked once at most.
    /// There is room for kWideStep units.
    template <typename Expected>
    Unit* room(Expected expected) {
        if (used_ > kBlock) spill(expected);
        return units_ + used_;
    }
    void taken(std::size_t count) { used_ += count; }

    /// Hands over what is left. To be called once, at the end.
    void finish() {
        if (!target_) return;
        if (target_->empty())
            target_->assign(units_, used_);
        else
            target_->append(units_, used_);
        // The text had fewer units than bytes: give the difference back when it is worth a copy.
        if (reserved_ && target_->capacity() - target_->size() > target_->size() / 4) target_->shrink_to_fit();
    }

private:
    static constexpr std::size_t kBlock = 496;

    template <typename Expected>
    void spill(Expected expected) {
        // Only a text that begins here gets its final size at once: pieces appended to one string one after the other
        // need the string's own growth, or the time would grow with their square.
        if (target_ && target_->empty()) {
            const std::size_t units = used_ + expected();
            target_->reserve(units);
            expectToFill(target_->data(), units * sizeof(Unit));
            reserved_ = true;
        }
        if (target_) target_->append(units_, used_);
        used_ = 0;
    }

    std::basic_string<Unit>* target_;
    std::size_t used_ = 0;
    bool reserved_ = false;
    Unit units_[kBlock + kWideStep];
};

}  // namespace util
