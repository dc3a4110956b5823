// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/xml_reader.h"

#include <algorithm>
#include <cstring>

#include "host/util/xml_text.h"

namespace util {
namespace {

enum ByteClass : std::uint8_t { kNameStart = 1, kNamePart = 2, kBlank = 4 };

/// What each byte may be in a tag. All beyond ASCII counts as a letter: no such character means anything in a tag.
constexpr auto kByteClasses = [] {
    std::array<std::uint8_t, 256> classes{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        const unsigned letter = byte | 0x20;
        if ((letter >= 'a' && letter <= 'z') || byte == '_' || byte == ':' || byte >= 0x80)
            classes[byte] = kNameStart | kNamePart;
        else if ((byte >= '0' && byte <= '9') || byte == '-' || byte == '.')
            classes[byte] = kNamePart;
        else if (byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n')
            classes[byte] = kBlank;
    }
    return classes;
}();

bool is(char byte, ByteClass wanted) { return kByteClasses[static_cast<unsigned char>(byte)] & wanted; }

const char* find(const char* from, const char* end, char wanted) {
    return static_cast<const char*>(std::memchr(from, wanted, static_cast<std::size_t>(end - from)));
}

bool same(std::u16string_view one, std::u16string_view other) {
    return one.size() == other.size() && one.front() == other.front() && one == other;
}

/// True when two attributes have one name. Few are compared each with each, many are sorted.
bool haveDuplicates(const std::vector<xmlAttribute>& attributes) {
    constexpr std::size_t kFew = 16;
    if (attributes.size() <= kFew) {
        for (std::size_t i = 1; i < attributes.size(); ++i)
            for (std::size_t j = 0; j < i; ++j)
                if (same(attributes[i].name, attributes[j].name)) return true;
        return false;
    }
    std::vector<std::u16string_view> names;
    names.reserve(attributes.size());
    for (const xmlAttribute& attribute : attributes) names.emplace_back(attribute.name);
    std::sort(names.begin(), names.end());
    return std::adjacent_find(names.begin(), names.end()) != names.end();
}

}  // namespace

XmlReader::XmlReader(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) { open_.reserve(8); }

bool XmlReader::readTopLevel() {
    do {
        const char* const mark = left() ? find(at_, end_, '<') : nullptr;
        if (!mark) return false;
        const std::string_view data(at_, static_cast<std::size_t>(mark - at_));
        if (!data.empty() && !appendText(data, TextPlace::Text)) return false;
        at_ = mark + 1;
        if (!readMarkup()) return false;
    } while (!open_.empty() || root_.name.empty());
    return true;
}

xmlElement XmlReader::take() {
    xmlElement taken(std::move(root_));
    root_.name.clear();
    root_.text.clear();
    return taken;
}

bool XmlReader::readMarkup() {
    if (left() == 0) return false;
    switch (*at_) {
        case '/':
            ++at_;
            return readClosing();
        case '!':
            ++at_;
            return readExclamation();
        case '?':
            ++at_;
            return skipPast("?>");
        default:
            return readOpening();
    }
}

bool XmlReader::readOpening() {
    std::string_view name;
    if (!readName(name)) return false;
    xmlElement& element = open_.empty() ? root_ : addChild(*open_.back().element);
    bool empty = false;
    if (!appendValue(name, element.name) || !readAttributes(element, empty)) return false;
    if (!empty) open_.push_back({&element, name});
    return true;
}

xmlElement& XmlReader::addChild(xmlElement& parent) {
    // A stanza mostly has a few children, and it goes soon: room for them is made at once.
    if (&parent == &root_ && parent.children.empty()) parent.children.reserve(4);
    return parent.children.emplace_back();
}

bool XmlReader::readAttributes(xmlElement& element, bool& empty) {
    RawAttributes raw;
    std::size_t count = 0;
    for (;;) {
        const bool blank = skipBlanks();
        if (left() == 0) return false;
        if (*at_ == '>' || *at_ == '/') break;
        if (!blank) return false;
        if (count == raw.size()) {
            if (!convert(raw.data(), count, element)) return false;
            count = 0;
        }
        if (!readRawAttribute(raw[count++])) return false;
    }
    empty = *at_ == '/';
    if (empty && (left() < 2 || at_[1] != '>')) return false;
    at_ += empty ? 2 : 1;
    return convert(raw.data(), count, element) && !haveDuplicates(element.attributes);
}

bool XmlReader::readRawAttribute(RawAttribute& attribute) {
    std::string_view name;
    if (!readName(name)) return false;
    attribute.name = {name.data(), name.data() + name.size()};
    skipBlanks();
    if (left() == 0 || *at_ != '=') return false;
    ++at_;
    skipBlanks();
    if (left() == 0 || (*at_ != '"' && *at_ != '\'')) return false;
    const char* const begin = at_ + 1;
    const char* const quote = find(begin, end_, *at_);
    if (!quote) return false;
    attribute.value = {begin, quote};
    at_ = quote + 1;
    return true;
}

bool XmlReader::convert(const RawAttribute* raw, std::size_t count, xmlElement& element) const {
    if (element.attributes.empty()) element.attributes.reserve(count);
    for (; count; --count, ++raw) {
        xmlAttribute& attribute = element.attributes.emplace_back();
        if (!appendValue(raw->name.text(), attribute.name)) return false;
        if (!appendValue(raw->value.text(), attribute.value)) return false;
    }
    return true;
}

bool XmlReader::readClosing() {
    if (open_.empty() || !follows(open_.back().name)) return false;
    at_ += open_.back().name.size();
    skipBlanks();
    if (left() == 0 || *at_ != '>') return false;
    ++at_;
    open_.pop_back();
    return true;
}

bool XmlReader::readExclamation() {
    if (follows("--")) {
        at_ += 2;
        return skipPast("-->");
    }
    return follows("[CDATA[") ? readCData() : skipDeclaration();
}

bool XmlReader::readCData() {
    constexpr std::string_view kBegin = "[CDATA[", kEnd = "]]>";
    const std::string_view rest(at_ + kBegin.size(), left() - kBegin.size());
    const std::size_t length = rest.find(kEnd);
    if (length == std::string_view::npos || !appendText(rest.substr(0, length), TextPlace::CData)) return false;
    at_ = rest.data() + length + kEnd.size();
    return true;
}

/// A document type with all that it declares: nothing of it is used, so only its end matters.
bool XmlReader::skipDeclaration() {
    for (std::size_t depth = 1; left();) {
        const char byte = *at_++;
        if (byte == '"' || byte == '\'') {
            if (!skipPast({&byte, 1})) return false;
        } else if (byte == '<' && follows("!--")) {
            at_ += 3;
            if (!skipPast("-->")) return false;
        } else if (byte == '<' && follows("?")) {
            ++at_;
            if (!skipPast("?>")) return false;
        } else if (byte == '<') {
            ++depth;
        } else if (byte == '>' && --depth == 0) {
            return true;
        }
    }
    return false;
}

bool XmlReader::skipPast(std::string_view mark) {
    const std::size_t found = std::string_view(at_, left()).find(mark);
    if (found == std::string_view::npos) return false;
    at_ += found + mark.size();
    return true;
}

/// True when there was a blank.
bool XmlReader::skipBlanks() {
    const char* const begin = at_;
    while (at_ != end_ && is(*at_, kBlank)) ++at_;
    return at_ != begin;
}

bool XmlReader::readName(std::string_view& name) {
    const char* const begin = at_;
    if (at_ == end_ || !is(*at_, kNameStart)) return false;
    do ++at_;
    while (at_ != end_ && is(*at_, kNamePart));
    name = {begin, static_cast<std::size_t>(at_ - begin)};
    return true;
}

bool XmlReader::appendText(std::string_view raw, TextPlace place) {
    return appendXmlText(raw, end_, place, open_.empty() ? nullptr : &open_.back().element->text);
}

}  // namespace util
