#include "messenger/core/tag_scanner.h"

#include <QString>

namespace oku {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool isBlank(char letter) { return kBlanks.find(letter) != std::string_view::npos; }

/// Walks over the attributes of a tag: name, and value as it stands between its quotes.
template <typename Visit>
void eachAttribute(std::string_view text, Visit visit) {
    std::size_t at = 0;
    while (true) {
        at = text.find_first_not_of(kBlanks, at);
        if (at == std::string_view::npos) return;
        const std::size_t equals = text.find('=', at);
        if (equals == std::string_view::npos) return;
        std::string_view name = text.substr(at, equals - at);
        while (!name.empty() && isBlank(name.back())) name.remove_suffix(1);
        const std::size_t open = text.find_first_of("'\"", equals);
        const std::size_t close = open == std::string_view::npos ? open : text.find(text[open], open + 1);
        if (close == std::string_view::npos) return;
        if (!visit(name, text.substr(open + 1, close - open - 1), Span{at, close + 1})) return;
        at = close + 1;
    }
}

void appendCodePoint(std::string& out, std::string_view digits, int base) {
    const uint code = QByteArray(digits.data(), static_cast<qsizetype>(digits.size())).toUInt(nullptr, base);
    const char32_t letter = code > 0x10ffff ? 0xfffd : code;
    out += QString::fromUcs4(&letter, 1).toStdString();
}

/// Where the tag that begins at `at` ends: behind the first `>` outside quotes.
std::size_t tagEnd(std::string_view text, std::size_t at) {
    char quote = 0;
    for (; at < text.size(); ++at) {
        const char letter = text[at];
        if (quote) {
            if (letter == quote) quote = 0;
        } else if (letter == '"' || letter == '\'') {
            quote = letter;
        } else if (letter == '>') {
            return at + 1;
        }
    }
    return std::string_view::npos;
}

}  // namespace

std::string expandedText(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = text[at] == '&' ? text.find(';', at) : std::string_view::npos;
        if (end == std::string_view::npos) {
            result += text[at++];
            continue;
        }
        const std::string_view entity = text.substr(at + 1, end - at - 1);
        at = end + 1;
        if (entity == "amp") {
            result += '&';
        } else if (entity == "lt") {
            result += '<';
        } else if (entity == "gt") {
            result += '>';
        } else if (entity == "quot") {
            result += '"';
        } else if (entity == "apos") {
            result += '\'';
        } else if (entity.starts_with("#x")) {
            appendCodePoint(result, entity.substr(2), 16);
        } else if (entity.starts_with("#")) {
            appendCodePoint(result, entity.substr(1), 10);
        } else {
            result.append("&").append(entity).append(";");
        }
    }
    return result;
}

bool TagScanner::skipSection(std::string_view begin, std::string_view end) {
    if (!text_.substr(at_).starts_with(begin)) return false;
    const std::size_t found = text_.find(end, at_ + begin.size());
    at_ = found == std::string_view::npos ? text_.size() : found + end.size();
    return true;
}

std::optional<XmlTag> TagScanner::next() {
    while (true) {
        at_ = text_.find('<', at_);
        if (at_ == std::string_view::npos) return std::nullopt;
        if (skipSection("<!--", "-->") || skipSection("<![CDATA[", "]]>") || skipSection("<?", "?>")) {
            if (at_ >= text_.size()) return std::nullopt;
            continue;
        }
        break;
    }
    XmlTag tag;
    tag.begin = at_;
    tag.end = tagEnd(text_, at_);
    if (tag.end == std::string_view::npos) {
        at_ = text_.size();
        return std::nullopt;
    }
    at_ = tag.end;
    std::string_view inner = text_.substr(tag.begin + 1, tag.end - tag.begin - 2);
    if (inner.starts_with('/')) {
        tag.kind = XmlTag::Kind::close;
        inner.remove_prefix(1);
    } else if (inner.ends_with('/')) {
        tag.kind = XmlTag::Kind::empty;
        inner.remove_suffix(1);
    }
    const std::size_t nameEnd = std::min(inner.find_first_of(kBlanks), inner.size());
    tag.name = inner.substr(0, nameEnd);
    tag.attributes = inner.substr(nameEnd);
    return tag;
}

std::optional<std::string> attribute(const XmlTag& tag, std::string_view name) {
    std::optional<std::string> result;
    eachAttribute(tag.attributes, [&](std::string_view found, std::string_view value, Span) {
        if (found != name) return true;
        result = expandedText(value);
        return false;
    });
    return result;
}

std::optional<Span> attributeSpan(const XmlTag& tag, std::string_view name) {
    std::optional<Span> result;
    const std::size_t offset = tag.begin + static_cast<std::size_t>(tag.attributes.data() - tag.name.data()) +
                               (tag.kind == XmlTag::Kind::close ? 2 : 1);
    eachAttribute(tag.attributes, [&](std::string_view found, std::string_view, Span span) {
        if (found != name) return true;
        result = Span{span.begin + offset, span.end + offset};
        return false;
    });
    return result;
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
    StanzaList list;
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
