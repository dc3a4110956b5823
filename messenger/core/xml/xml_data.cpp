// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/xml/xml_data.h"

#include <array>
#include <QString>
#include <utility>

#include "messenger/core/xml/tag_scanner.h"

namespace oku {
namespace {

enum class Place { text, value, cdata };

struct Reference {
    char32_t letter = 0;
    std::size_t length = 0;  // 0: there is none
};

constexpr std::array<std::pair<std::string_view, char32_t>, 5> kEntities{
    {{"&amp;", U'&'}, {"&lt;", U'<'}, {"&gt;", U'>'}, {"&quot;", U'"'}, {"&apos;", U'\''}}};

/// The value of a digit, or `base` when it is none.
unsigned digitValue(char digit, unsigned base) {
    if (digit >= '0' && digit <= '9') return static_cast<unsigned>(digit - '0');
    const char letter = static_cast<char>(digit | 0x20);
    return base == 16 && letter >= 'a' && letter <= 'f' ? static_cast<unsigned>(letter - 'a') + 10 : base;
}

bool isXmlCharacter(char32_t code) {
    if (code < 0x20) return code == U'\t' || code == U'\n' || code == U'\r';
    return (code < 0xd800 || code > 0xdfff) && code != 0xfffe && code != 0xffff && code < 0x110000;
}

Reference readNumber(std::string_view text) {
    const bool hexadecimal = text.starts_with("&#x");
    const unsigned base = hexadecimal ? 16 : 10;
    const std::size_t first = hexadecimal ? 3 : 2;
    char32_t code = 0;
    std::size_t at = first;
    for (; at < text.size(); ++at) {
        const unsigned value = digitValue(text[at], base);
        if (value == base) break;
        if (code < 0x110000) code = code * base + value;
    }
    const bool ends = at > first && at < text.size() && text[at] == ';';
    return ends && isXmlCharacter(code) ? Reference{code, at + 1} : Reference{};
}

Reference readReference(std::string_view text) {
    if (text.starts_with("&#")) return readNumber(text);
    for (const auto& [name, letter] : kEntities) {
        if (text.starts_with(name)) return {letter, name.size()};
    }
    return {};
}

void append(std::string& out, char32_t letter) {
    if (letter < 0x80) {
        out += static_cast<char>(letter);
    } else {
        out += QString::fromUcs4(&letter, 1).toStdString();
    }
}

void appendData(std::string& out, std::string_view raw, Place place) {
    const auto isSpecial = [](char letter) {
        return letter == '&' || letter == '\t' || letter == '\r' || letter == '\n';
    };
    while (!raw.empty()) {
        std::size_t plain = 0;
        while (plain < raw.size() && !isSpecial(raw[plain])) ++plain;
        out += raw.substr(0, plain);
        raw.remove_prefix(plain);
        if (raw.empty()) return;
        std::size_t length = 1;
        if (raw.front() != '&') {
            if (raw.starts_with("\r\n")) length = 2;
            out += place == Place::value ? ' ' : raw.front() == '\t' ? '\t' : '\n';
        } else if (const Reference found = place == Place::cdata ? Reference{} : readReference(raw); found.length > 0) {
            append(out, found.letter);
            length = found.length;
        } else {
            out += '&';
        }
        raw.remove_prefix(length);
    }
}

}  // namespace

std::string readValue(std::string_view raw) {
    std::string result;
    appendData(result, raw, Place::value);
    return result;
}

std::string readText(std::string_view content) {
    constexpr std::string_view sectionStart = "<![CDATA[";
    constexpr std::string_view sectionEnd = "]]>";
    std::string result;
    std::size_t depth = 0;
    std::size_t read = 0;
    TagScanner scanner(content);
    while (const auto markup = scanner.nextMarkup()) {
        const bool own = depth == 0;
        if (own) appendData(result, content.substr(read, markup->begin - read), Place::text);
        read = markup->end;
        if (markup->kind == XmlTag::Kind::open) ++depth;
        if (markup->kind == XmlTag::Kind::close && !own) --depth;
        if (markup->kind != XmlTag::Kind::section || !own) continue;
        const std::size_t begin = markup->begin + sectionStart.size();
        appendData(result, content.substr(begin, markup->end - sectionEnd.size() - begin), Place::cdata);
    }
    if (depth == 0) appendData(result, content.substr(read), Place::text);
    return result;
}

}  // namespace oku
