// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Names that others chose for files. The same rule holds on every target, and a stricter one where the system reads
// more into a name.
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "host/util/utf.h"
#include "platform/platform.h"

namespace platform {

inline constexpr bool kOnWindows = kPathSeparator == u'\\';

/// Whether Windows would take the name for another one, for a pattern or for a device.
inline bool isMisreadByWindows(std::u16string_view name) {
    if (name.find_first_of(u"*?\"<>|") != std::u16string_view::npos || name.back() == u'.' || name.back() == u' ')
        return true;
    std::u16string stem(name.substr(0, name.find(u'.')));
    while (stem.ends_with(u' ')) stem.pop_back();
    for (char16_t& unit : stem)
        if (unit >= u'a' && unit <= u'z') unit = static_cast<char16_t>(unit - u'a' + u'A');
    constexpr std::array<std::u16string_view, 6> kDevices{u"CON", u"PRN", u"AUX", u"NUL", u"CONIN$", u"CONOUT$"};
    if (std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end()) return true;
    const std::u16string_view port = std::u16string_view(stem).substr(0, 3);
    return stem.size() == 4 && (port == u"COM" || port == u"LPT") &&
           std::u16string_view(u"0123456789\u00B9\u00B2\u00B3").find(stem[3]) != std::u16string_view::npos;
}

/// Whether a name that somebody else chose is one plain component of a path, so that it cannot lead out of the folder
/// it is put behind: no separator of any target, no drive's colon, no control character, neither "." nor "..", nothing
/// empty, and no more than 255 bytes of UTF-8.
inline bool isPlainFileName(std::u16string_view name, bool onWindows = kOnWindows) {
    constexpr std::size_t kLongest = 255;
    if (name.empty() || name == u"." || name == u"..") return false;
    for (const char16_t unit : name)
        if (unit < 0x20 || (unit >= 0x7F && unit < 0xA0) || unit == u'/' || unit == u'\\' || unit == u':') return false;
    return wtou(name).size() <= kLongest && !(onWindows && isMisreadByWindows(name));
}

}  // namespace platform
