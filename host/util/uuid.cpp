// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/uuid.h"

#include <algorithm>
#include <array>

std::u16string uuidFromBytes(std::span<const std::uint8_t, 16> random) {
    constexpr std::u16string_view kDigits = u"0123456789abcdef";
    std::array<std::uint8_t, 16> bytes;
    std::copy(random.begin(), random.end(), bytes.begin());
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);  // version 4
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);  // the RFC's variant

    std::u16string text;
    text.reserve(36);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) text += u'-';
        text += kDigits[bytes[i] >> 4];
        text += kDigits[bytes[i] & 15];
    }
    return text;
}
