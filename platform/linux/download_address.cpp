// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "platform/linux/download_address.h"

#include <memory>
#include <string_view>

#include "host/util/utf.h"
#include "platform/linux/curl_library.h"

namespace {

constexpr std::size_t kLongestPart = 2047;

struct FreeAddress {
    void operator()(CURLU* address) const { curl().urlCleanup(address); }
};
struct FreeText {
    void operator()(char* text) const { curl().free(text); }
};

/// A part of the address; nothing when it has none, or when its escapes hide a control character.
std::optional<std::string> partOf(CURLU* address, CURLUPart which, unsigned flags) {
    char* text = nullptr;
    if (curl().urlGet(address, which, &text, flags) != CURLUE_OK) return std::nullopt;
    const std::unique_ptr<char, FreeText> owned(text);
    return std::string(text);
}

bool mayStandInARequest(unsigned char byte) {
    return byte > 0x20 && byte < 0x7F &&
           std::string_view("\"<>\\^`{|}%#").find(static_cast<char>(byte)) == std::string_view::npos;
}

std::string escaped(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string result;
    for (const char letter : text) {
        const auto byte = static_cast<unsigned char>(letter);
        if (mayStandInARequest(byte)) {
            result += letter;
        } else {
            result += '%';
            result += kDigits[byte >> 4];
            result += kDigits[byte & 15];
        }
    }
    return result;
}

bool fits(const std::string& text) { return utow(text).size() <= kLongestPart; }

}  // namespace

std::optional<DownloadAddress> downloadAddress(const std::u16string& text) {
    if (!CurlLibrary::get()) return std::nullopt;
    const std::unique_ptr<CURLU, FreeAddress> address(curl().url());
    if (!address || text.find(u'\0') != std::u16string::npos) return std::nullopt;
    // Blanks inside are allowed here, as they are in addresses that people paste.
    constexpr unsigned kLenient = CURLU_NON_SUPPORT_SCHEME | CURLU_ALLOW_SPACE | CURLU_PATH_AS_IS;
    if (curl().urlSet(address.get(), CURLUPART_URL, wtou(text).c_str(), kLenient) != CURLUE_OK) return std::nullopt;
    const std::optional<std::string> host = partOf(address.get(), CURLUPART_HOST, 0);
    std::optional<std::string> path = partOf(address.get(), CURLUPART_PATH, CURLU_URLDECODE);
    if (!host || host->empty() || !path) return std::nullopt;
    if (partOf(address.get(), CURLUPART_QUERY, 0)) {
        const std::optional<std::string> query = partOf(address.get(), CURLUPART_QUERY, CURLU_URLDECODE);
        if (!query) return std::nullopt;
        (*path += '?') += *query;
    }
    if (!fits(*host) || !fits(*path)) return std::nullopt;
    const std::string port = partOf(address.get(), CURLUPART_PORT, CURLU_DEFAULT_PORT).value_or("80");
    return DownloadAddress{"http://" + *host + ":" + port + escaped(*path)};
}
