// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/xml_compose.h"

#include <algorithm>
#include <array>

#include "host/util/utf_code.h"
#include "host/util/xml_escape.h"
#include "host/util/xml_reference.h"

namespace util {
namespace {

/// Which ASCII goes as it is: neither the five characters nor the controls.
constexpr auto kPlainAscii = [] {
    std::array<bool, 0x80> plain{};
    for (std::size_t unit = 0x20; unit < plain.size(); ++unit)
        plain[unit] = unit != '&' && unit != '<' && unit != '>' && unit != '"' && unit != '\'';
    return plain;
}();

constexpr bool isPlain(char16_t unit) { return unit < kPlainAscii.size() ? kPlainAscii[unit] : unit < 0xD800; }

/// The reference that stands for a white-space character, or nothing where it goes as it is.
std::u16string_view blankReference(char16_t unit, KeepBlanks blanks) {
    if (unit == u'\r' && blanks != KeepBlanks::AsTheyAre) return u"&#13;";
    if (blanks == KeepBlanks::InValue) return unit == u'\t' ? u"&#9;" : u"&#10;";
    return {};
}

void appendEntity(std::u16string& out, char16_t character) {
    for (const Entity& entity : kEntities) {
        if (entity.character != character) continue;
        out += u'&';
        for (const char* letter = entity.name; *letter; ++letter) out += static_cast<char16_t>(*letter);
        out += u';';
        return;
    }
}

/// Appends the character at the front of `text` that is not plain, and tells its length.
std::size_t appendSpecial(std::u16string& out, std::u16string_view text, KeepBlanks blanks) {
    const char16_t unit = text.front();
    if (unit == u'\t' || unit == u'\n' || unit == u'\r') {
        const std::u16string_view reference = blankReference(unit, blanks);
        if (reference.empty())
            out += unit;
        else
            out += reference;
        return 1;
    }
    if (unit < 0x80) {
        appendEntity(out, unit);
        return 1;
    }
    const CodePoint point = decodeUtf16(text.data(), text.size());
    const bool loneSurrogate = point.code == kReplacement && unit != kReplacement;
    if (!loneSurrogate && isXmlCharacter(point.code)) out += text.substr(0, point.length);
    return point.length;
}

}  // namespace

void appendEscaped(std::u16string& out, std::u16string_view text, KeepBlanks blanks) {
    while (!text.empty()) {
        std::size_t plain = 0;
        while (plain < text.size() && isPlain(text[plain])) ++plain;
        out += text.substr(0, plain);
        text.remove_prefix(plain);
        if (!text.empty()) text.remove_prefix(appendSpecial(out, text, blanks));
    }
}

void appendAttribute(std::u16string& out, std::u16string_view name, std::u16string_view value, KeepBlanks blanks) {
    out += u' ';
    out += name;
    out += u"=\"";
    appendEscaped(out, value, blanks);
    out += u'"';
}

}  // namespace util

std::u16string lutCPW(std::u16string_view name, std::u16string_view inner, std::initializer_list<XmlPair> attributes) {
    constexpr std::size_t kTagMarks = 5;    // < > < / >
    constexpr std::size_t kValueMarks = 4;  // blank, =, two quotes
    std::size_t length = 2 * name.size() + inner.size() + kTagMarks;
    for (const XmlPair& pair : attributes) length += pair.name.size() + pair.value.size() + kValueMarks;

    std::u16string result;
    result.reserve(length);
    result += u'<';
    result += name;
    for (const XmlPair& pair : attributes)
        util::appendAttribute(result, pair.name, pair.value, util::KeepBlanks::InValue);
    if (inner.empty()) return result += u"/>";
    result += u'>';
    result += inner;
    result += u"</";
    result += name;
    return result += u'>';
}

std::u16string lutXMLEscapeW(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    util::appendEscaped(result, text, util::KeepBlanks::AsTheyAre);
    return result;
}

std::u16string lutXMLRestorW(std::u16string_view text) {
    std::u16string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find(u'&'), text.size());
        result += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty()) break;
        const util::CodePoint point = util::readReference(text.data(), text.data() + text.size());
        if (point.length == 0) {
            result += u'&';
            text.remove_prefix(1);
            continue;
        }
        char16_t units[2];
        result.append(units, util::encodeUtf16(point.code, units));
        text.remove_prefix(point.length);
    }
    return result;
}
