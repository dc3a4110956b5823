// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Numbers, stamps, patterns and escaped text out of any input.
#include <limits>
#include <string>

#include "fuzz/input.h"
#include "host/util/format.h"
#include "host/util/numbers.h"
#include "host/util/utf.h"
#include "host/util/xml_compose.h"
#include "host/util/xml_parse.h"
#include "im/legacy_stamp.h"

using namespace protolink;

namespace {

/// Wider than any number that is read, so that the limits can be passed before they are applied.
__extension__ typedef __int128 Wide;

/// The number by the letter, kept between the limits.
template <typename Number>
Number byTheLetter(std::u16string_view text) {
    std::size_t at = 0;
    while (at < text.size() && (text[at] == u' ' || (text[at] >= u'\t' && text[at] <= u'\r'))) ++at;
    const bool negative = at < text.size() && text[at] == u'-';
    if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) ++at;
    Wide value = 0;
    constexpr Wide kMost = std::numeric_limits<Number>::max(), kLeast = std::numeric_limits<Number>::min();
    for (; at < text.size() && text[at] >= u'0' && text[at] <= u'9'; ++at) {
        value = value * 10 + (text[at] - u'0') * (negative ? -1 : 1);
        value = std::min(std::max(value, kLeast - 1), kMost + 1);
    }
    return static_cast<Number>(std::min(std::max(value, kLeast), kMost));
}

void readNumbers(const std::u16string& text) {
    fuzz::require(parseInt32(text) == byTheLetter<std::int32_t>(text), "another 32-bit number");
    fuzz::require(parseUInt32(text) == byTheLetter<std::uint32_t>(text), "another unsigned number");
    fuzz::require(parseInt64(text) == byTheLetter<std::int64_t>(text), "another 64-bit number");
}

void readStamp(const std::u16string& text) {
    if (!isLegacyStamp(text)) return;
    const std::int64_t time = legacyStampTime(text);
    constexpr std::int64_t kYears = 20'000, kSecondsOfAYear = 31'622'400;
    fuzz::require(time > -kYears * kSecondsOfAYear && time < kYears * kSecondsOfAYear, "a stamp outside of all years");
}

void escape(const std::u16string& text) {
    const std::u16string escaped = lutXMLEscapeW(text);
    fuzz::require(escaped.find_first_of(u"<>\"'") == std::u16string::npos, "escaped text holds markup");
    fuzz::require(lutXMLEscapeW(lutXMLRestorW(escaped)) == escaped, "what was escaped does not come back");
    const std::u16string element = lutCPW(u"a", escaped, {{u"b", text}, {u"c", {}}});
    std::vector<xmlElement> read;
    lutXMLParseA(read, wtou(element));
    fuzz::require(read.size() == 1, "what was composed is not one element");
    fuzz::require(lutXMLEscapeW(read.front().GetAttribute(u"b")) == escaped, "an attribute comes back as another");
    lutXMLRestorW(text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::u16string pattern = utow(input.text());
    const std::u16string raw = input.wide();
    const std::u16string text = utow(input.rest());
    readNumbers(text);
    readStamp(text.substr(0, 17));
    escape(text);
    escape(raw);
    formatText(pattern, raw, static_cast<std::int32_t>(size), std::numeric_limits<std::int64_t>::min(),
               static_cast<double>(parseInt64(text)) / 7.0, text);
    fuzz::require(lutCID(u"a/%d/b", parseInt32(text)) == u"a/" + utow(std::to_string(parseInt32(text))) + u"/b",
                  "a name with another number");
    return 0;
}
