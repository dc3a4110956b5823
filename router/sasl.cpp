// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "router/sasl.h"

#include <algorithm>
#include <initializer_list>

namespace protolink {

namespace {

/// MD5 over the parts, joined by colons.
MD5Digest md5Joined(std::initializer_list<std::string_view> parts) {
    MD5Context context;
    MD5Init(context);
    bool first = true;
    for (const std::string_view part : parts) {
        if (!first) MD5Update(context, ":");
        first = false;
        MD5Update(context, part);
    }
    return MD5Final(context);
}

}  // namespace

std::string plainPayload(std::string_view user, std::string_view password) {
    std::string payload(1, '\0');
    payload.append(user).append(1, '\0').append(password);
    return payload;
}

std::string digestParam(std::string_view challengeText, std::string_view key) {
    const std::size_t found = challengeText.find(key);
    if (found == std::string_view::npos) return {};
    const std::size_t start = found + key.size() + 1;  // behind the equals sign
    if (start >= challengeText.size()) return {};
    std::string value(challengeText.substr(start, challengeText.find(',', start) - start));
    std::erase(value, '"');
    return value;
}

std::string hexDigest(const MD5Digest& digest) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : digest) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

std::string digestResponse(std::string_view user, std::string_view realm, std::string_view nonce,
                           std::string_view cnonce, std::string_view password, std::string_view digestUri) {
    const MD5Digest secret = md5Joined({user, realm, password});
    const std::string_view secretBytes(reinterpret_cast<const char*>(secret.data()), secret.size());
    const std::string a1 = hexDigest(md5Joined({secretBytes, nonce, cnonce}));
    const std::string a2 = hexDigest(md5Joined({"AUTHENTICATE", digestUri}));
    return hexDigest(md5Joined({a1, nonce, "00000001", cnonce, "auth", a2}));
}

}  // namespace protolink
