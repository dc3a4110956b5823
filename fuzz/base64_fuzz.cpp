// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Base64 both ways, against a reading bit by bit.
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "host/util/base64.h"

namespace {

std::string decodedByTheLetter(std::string_view text) {
    constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::vector<bool> bits;
    for (const char letter : text) {
        if (std::string_view(" \t\n\v\f\r").find(letter) != std::string_view::npos) continue;
        const std::size_t value = kAlphabet.find(letter);
        if (value == std::string_view::npos) break;
        for (int bit = 5; bit >= 0; --bit) bits.push_back(value >> bit & 1);
    }
    std::string bytes;
    for (std::size_t i = 0; i + 8 <= bits.size(); i += 8) {
        int byte = 0;
        for (std::size_t bit = 0; bit < 8; ++bit) byte = byte * 2 + bits[i + bit];
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string encoded = lutBase64Encode(bytes);
    fuzz::require(encoded.size() == (bytes.size() + 2) / 3 * 4, "another length than padding gives");
    fuzz::require(lutBase64Decode(encoded) == bytes, "what was encoded does not come back");
    fuzz::require(lutBase64Decode(bytes) == decodedByTheLetter(bytes), "another decoding than by the letter");
    return 0;
}
