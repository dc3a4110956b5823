// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "messenger/core/xml/tag_scanner.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "messenger/core/xml/xml_data.h"

namespace oku {
namespace {

constexpr auto kNowhere = std::string_view::npos;

bool isBlank(char letter) { return letter == ' ' || letter == '\t' || letter == '\r' || letter == '\n'; }

/// The first place from `at` on where a blank stands, or one where none does; the text's size if there is none.
std::size_t findBlank(std::string_view text, std::size_t at, bool blank = true) {
    while (at < text.size() && isBlank(text[at]) != blank) ++at;
    return at;
}

/// Behind the next `mark` from `at` on.
std::size_t behind(std::string_view text, std::string_view mark, std::size_t at) {
    const std::size_t found = text.find(mark, at);
    return found == kNowhere ? kNowhere : found + mark.size();
}

/// Where the tag that begins at `at` ends: behind the first `>` outside quotes.
std::size_t tagEnd(std::string_view text, std::size_t at) {
    for (; at < text.size(); ++at) {
        const char letter = text[at];
        if (letter == '>') return at + 1;
        if (letter != '"' && letter != '\'') continue;
        at = text.find(letter, at + 1);
        if (at == kNowhere) return kNowhere;
    }
    return kNowhere;
}

/// Where the document type whose `<!` ends at `at` ends itself, with all the declarations inside of it.
std::size_t documentTypeEnd(std::string_view text, std::size_t at) {
    std::size_t depth = 1;
    while (at < text.size()) {
        const std::string_view rest = text.substr(at);
        if (rest.front() == '"' || rest.front() == '\'') {
            at = behind(text, rest.substr(0, 1), at + 1);
        } else if (rest.starts_with("<!--")) {
            at = behind(text, "-->", at + 4);
        } else if (rest.starts_with("<?")) {
            at = behind(text, "?>", at + 2);
        } else {
            ++at;
            if (rest.front() == '<') ++depth;
            if (rest.front() == '>' && --depth == 0) return at;
        }
    }
    return kNowhere;
}

/// Where the markup that begins at `at` ends, and what it is unless it is a tag.
std::pair<XmlTag::Kind, std::size_t> markupEnd(std::string_view text, std::size_t at) {
    const std::string_view rest = text.substr(at);
    using Kind = XmlTag::Kind;
    if (rest.starts_with("<!--")) return {Kind::other, behind(text, "-->", at + 4)};
    if (rest.starts_with("<![CDATA[")) return {Kind::section, behind(text, "]]>", at + 9)};
    if (rest.starts_with("<?")) return {Kind::other, behind(text, "?>", at + 2)};
    if (rest.starts_with("<!")) return {Kind::other, documentTypeEnd(text, at + 2)};
    return {rest.starts_with("</") ? Kind::close : Kind::open, tagEnd(text, at)};
}

}  // namespace

std::optional<XmlTag> TagScanner::nextMarkup() {
    at_ = text_.find('<', at_);
    if (at_ == kNowhere) {
        at_ = text_.size();
        return std::nullopt;
    }
    XmlTag tag;
    tag.begin = at_;
    std::tie(tag.kind, tag.end) = markupEnd(text_, at_);
    if (tag.end == kNowhere) {
        at_ = text_.size();
        return std::nullopt;
    }
    at_ = tag.end;
    if (tag.kind == XmlTag::Kind::section || tag.kind == XmlTag::Kind::other) return tag;
    std::string_view inner = text_.substr(tag.begin + 1, tag.end - tag.begin - 2);
    if (tag.kind == XmlTag::Kind::close) {
        inner.remove_prefix(1);
    } else if (inner.ends_with('/')) {
        tag.kind = XmlTag::Kind::empty;
        inner.remove_suffix(1);
    }
    const std::size_t nameEnd = findBlank(inner, 0);
    tag.name = inner.substr(0, nameEnd);
    tag.attributes = inner.substr(nameEnd);
    return tag;
}

std::optional<XmlTag> TagScanner::next() {
    auto tag = nextMarkup();
    while (tag && (tag->kind == XmlTag::Kind::section || tag->kind == XmlTag::Kind::other)) tag = nextMarkup();
    return tag;
}

std::optional<XmlAttribute> AttributeScanner::next() {
    const std::size_t begin = findBlank(text_, 0, false);
    const std::size_t equals = text_.find('=', begin);
    std::size_t open = equals == kNowhere ? text_.size() : equals + 1;
    while (open < text_.size() && text_[open] != '"' && text_[open] != '\'') ++open;
    const std::size_t close = open == text_.size() ? kNowhere : text_.find(text_[open], open + 1);
    if (close == kNowhere) return std::nullopt;
    std::string_view name = text_.substr(begin, equals - begin);
    while (!name.empty() && isBlank(name.back())) name.remove_suffix(1);
    const XmlAttribute found{name, text_.substr(open + 1, close - open - 1)};
    text_.remove_prefix(close + 1);
    return found;
}

std::optional<std::string> attribute(const XmlTag& tag, std::string_view name) {
    AttributeScanner attributes(tag);
    while (const auto found = attributes.next()) {
        if (found->name == name) return readValue(found->value);
    }
    return std::nullopt;
}

std::optional<Span> attributeSpan(const XmlTag& tag, std::string_view name) {
    // The name of the tag tells where its text lies.
    const char* const start = tag.name.data() - (tag.kind == XmlTag::Kind::close ? 2 : 1);
    const auto place = [&](const char* letter) { return tag.begin + static_cast<std::size_t>(letter - start); };
    AttributeScanner attributes(tag);
    while (const auto found = attributes.next()) {
        if (found->name == name)
            return Span{place(found->name.data()), place(found->value.data() + found->value.size()) + 1};
    }
    return std::nullopt;
}

std::string Stanza::attribute(std::string_view name) const { return oku::attribute(tag, name).value_or(std::string()); }

const XmlChild* Stanza::child(std::string_view name, std::string_view xmlns) const {
    for (const XmlChild& child : children) {
        if (child.tag.name != name) continue;
        if (xmlns.empty() || oku::attribute(child.tag, "xmlns") == xmlns) return &child;
    }
    return nullptr;
}

StanzaList splitStanzas(std::string_view text) {
    constexpr std::size_t usualStanza = 256;
    constexpr std::size_t mostAtOnce = 256;
    StanzaList list;
    list.stanzas.reserve(std::min(text.size() / usualStanza, mostAtOnce) + 1);
    TagScanner scanner(text);
    std::size_t depth = 0;
    while (const auto tag = scanner.next()) {
        if (tag->kind == XmlTag::Kind::close) {
            if (depth == 0) {
                list.strayEnds.push_back({tag->begin, tag->end});
                continue;
            }
            --depth;
            if (depth == 0) list.stanzas.back().whole.end = tag->end;
            if (depth == 1) list.stanzas.back().children.back().content.end = tag->begin;
            continue;
        }
        if (depth == 0) list.stanzas.push_back({*tag, {tag->begin, tag->end}, {}});
        if (depth == 1) list.stanzas.back().children.push_back({*tag, {tag->end, tag->end}});
        if (tag->kind == XmlTag::Kind::open) ++depth;
    }
    if (depth > 0) list.stanzas.pop_back();
    return list;
}

}  // namespace oku
