// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include <sys/random.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "platform/platform.h"

namespace {

/// Bytes of the system's generator, fetched as many at a time as it gives without a pause.
struct Generator {
    std::array<unsigned char, 256> bytes{};
    std::size_t used = sizeof(bytes);
    std::uint32_t seed = 0;
};

Generator generator;

void refill() {
    // Up to 256 bytes come whole once the system's generator has started; before that, the call waits.
    while (getrandom(generator.bytes.data(), generator.bytes.size(), 0) !=
           static_cast<ssize_t>(generator.bytes.size())) {
        // Values that can be guessed are worse than none: what needs one then fails.
        if (errno != EINTR) throw std::system_error(errno, std::generic_category(), "getrandom");
    }
    generator.used = 0;
}

}  // namespace

namespace platform {

std::uint32_t nextRandom() {
    std::uint32_t value = 0;
    if (generator.used + sizeof value > generator.bytes.size()) refill();
    unsigned char* const from = generator.bytes.data() + generator.used;
    std::memcpy(&value, from, sizeof value);
    // A value that was given out stands nowhere in memory any more.
    std::fill_n(from, sizeof value, static_cast<unsigned char>(0));
    generator.used += sizeof value;
    return value ^ generator.seed;
}

void seedRandom(std::uint32_t seed) {
    // Whoever knows the seed learns nothing: it only moves values that he does not know. The factor spreads seeds that
    // differ by little, such as times.
    generator.seed = (generator.seed ^ seed) * 0x9E3779B1u;
}

}  // namespace platform
