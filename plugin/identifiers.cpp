// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "plugin/identifiers.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "host/util/base64.h"
#include "host/util/sha1.h"
#include "host/util/uuid.h"
#include "platform/platform.h"

namespace protolink {

std::u16string generateId() {
    const std::uint64_t first = platform::nextRandom();
    const std::uint64_t a = platform::tickCount() % (first + 1);
    const std::uint64_t second = platform::nextRandom();
    const std::uint64_t b = second + platform::tickCount();
    const std::uint64_t value = a * b;

    std::array<char, sizeof value> bytes;
    std::memcpy(bytes.data(), &value, sizeof value);
    const auto digest = lutSHA1Bin(std::string_view(bytes.data(), bytes.size()));
    constexpr std::size_t kDigestBytes = 11;  // 16 characters of Base64, the last of them "="
    const std::string id =
        lutBase64Encode(std::string_view(reinterpret_cast<const char*>(digest.data()), kDigestBytes));
    return std::u16string(id.begin(), id.end());
}

std::u16string lutGenerateUUID() {
    std::array<std::uint8_t, 16> bytes;
    for (std::size_t i = 0; i < bytes.size(); i += sizeof(std::uint32_t)) {
        const std::uint32_t random = platform::nextRandom();
        std::memcpy(bytes.data() + i, &random, sizeof random);
    }
    return uuidFromBytes(bytes);
}

}  // namespace protolink
