// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

#include "host/util/file_name.h"

#include <algorithm>
#include <array>
#include <string>

#include "host/util/letter_case.h"
#include "host/util/utf.h"

namespace {

constexpr std::size_t kLongestName = 255;
constexpr std::u16string_view kSeparators = u"/\\:";
constexpr std::u16string_view kForbiddenByWindows = u"*?\"<>|";

bool isControl(char16_t unit) { return unit < u' ' || (unit >= 0x7F && unit < 0xA0); }

/// A device of Windows, also with something behind a dot: CON, PRN, AUX, NUL, CONIN$, CONOUT$, COM and LPT with a
/// digit.
bool isDevice(std::u16string_view name) {
    constexpr std::array<std::u16string_view, 6> kDevices{u"con", u"prn", u"aux", u"nul", u"conin$", u"conout$"};
    constexpr std::u16string_view kDigits = u"0123456789\u00B9\u00B2\u00B3";
    std::u16string stem = lowerCase(name.substr(0, name.find(u'.')));
    stem.erase(stem.find_last_not_of(u' ') + 1);
    if (std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end()) return true;
    return stem.size() == 4 && (stem.starts_with(u"com") || stem.starts_with(u"lpt")) &&
           kDigits.find(stem.back()) != std::u16string_view::npos;
}

bool isNameOfWindows(std::u16string_view name) {
    return name.find_first_of(kForbiddenByWindows) == std::u16string_view::npos && name.back() != u'.' &&
           name.back() != u' ' && !isDevice(name);
}

}  // namespace

bool isPlainFileName(std::u16string_view name, FileNameRules rules) {
    if (name.empty() || name == u"." || name == u"..") return false;
    if (name.size() > kLongestName || wtou(name).size() > kLongestName) return false;
    if (name.find_first_of(kSeparators) != std::u16string_view::npos) return false;
    if (std::any_of(name.begin(), name.end(), isControl)) return false;
    return rules == FileNameRules::Plain || isNameOfWindows(name);
}
