// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the fuzzers share: taking their input apart, and stopping when something is not as it must be.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace fuzz {

/// Takes values off the front of an input; an input that has ended gives zeros and empty texts.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

    bool empty() const { return rest_.empty(); }
    bool has(char byte) const { return rest_.find(byte) != std::string_view::npos; }
    std::uint8_t byte() {
        const std::string_view taken = take(1);
        return taken.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(taken.front());
    }
    std::uint32_t number() { return static_cast<std::uint32_t>(byte()) << 8 | byte(); }
    std::string_view take(std::size_t length) {
        const std::string_view taken = rest_.substr(0, length);
        rest_.remove_prefix(taken.size());
        return taken;
    }
    /// A text whose length is told by the byte before it.
    std::string_view text() { return take(byte()); }
    /// Text of two bytes a unit.
    std::u16string wide() {
        std::u16string units;
        const std::string_view bytes = text();
        for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
            units += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) << 8 |
                                           static_cast<unsigned char>(bytes[i + 1]));
        return units;
    }
    std::string_view rest() { return take(rest_.size()); }

private:
    std::string_view rest_;
};

/// Whether a file holds U+FFFE or U+FFFF, which no XML may. It is read all the same, and written without them.
inline bool holdsNoCharacter(std::string_view bytes) {
    return bytes.find("\xEF\xBF\xBE") != std::string_view::npos || bytes.find("\xEF\xBF\xBF") != std::string_view::npos;
}

/// Ends the run with a word about what was found.
inline void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "FOUND: %s\n", what);
    std::abort();
}

}  // namespace fuzz
