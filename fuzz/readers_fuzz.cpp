// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The guards' reading of received stanzas against the plugin's own: what the plugin will act on, the guards must have
// seen as it is.
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "host/util/utf.h"
#include "host/util/xml_parse.h"
#include "messenger/core/xml/tag_scanner.h"
#include "messenger/core/xml/xml_data.h"
#include "tests/support/plain_probe.h"

namespace {

constexpr int kDeepest = 12;

void compareTag(const oku::XmlTag& tag, std::string_view text, const xmlElement& element) {
    fuzz::require(utow(tag.name) == element.name, "another name of an element");
    oku::AttributeScanner attributes(tag);
    for (const xmlAttribute& wanted : element.attributes) {
        const auto found = attributes.next();
        fuzz::require(found && utow(found->name) == wanted.name, "another name of an attribute");
        fuzz::require(utow(oku::readValue(found->value)) == wanted.value, "another value of an attribute");
        const auto span = oku::attributeSpan(tag, found->name);
        fuzz::require(span && text.substr(span->begin).starts_with(found->name), "an attribute stands elsewhere");
        fuzz::require(text[span->end - 1] == '"' || text[span->end - 1] == '\'', "an attribute ends elsewhere");
    }
    fuzz::require(!attributes.next(), "one attribute more");
}

/// `text` holds the elements side by side, and maybe more behind them.
void compare(std::string_view text, const std::vector<xmlElement>& elements, int depth) {
    const oku::StanzaList list = oku::splitStanzas(text);
    fuzz::require(list.stanzas.size() >= elements.size(), "an element is not seen");
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const oku::Stanza& stanza = list.stanzas[i];
        compareTag(stanza.tag, text, elements[i]);
        const std::string_view whole = text.substr(stanza.whole.begin, stanza.whole.end - stanza.whole.begin);
        const std::size_t tagLength = stanza.tag.end - stanza.tag.begin;
        const bool empty = stanza.tag.kind == oku::XmlTag::Kind::empty;
        const std::string_view content =
            empty ? std::string_view() : whole.substr(tagLength, whole.rfind("</") - tagLength);
        fuzz::require(utow(oku::readText(content)) == elements[i].text, "another text");
        fuzz::require(stanza.children.size() == elements[i].children.size(), "another number of children");
        for (std::size_t child = 0; child < stanza.children.size(); ++child)
            compareTag(stanza.children[child].tag, text, elements[i].children[child]);
        if (depth < kDeepest) compare(content, elements[i].children, depth + 1);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Bytes that are no UTF-8 are replaced by both, but not in one run where a section ends between them.
    std::string text = wtou(utow({reinterpret_cast<const char*>(data), size}));
    text.resize(std::min(text.find('\0'), text.size()));
    const oku::StanzaList list = oku::splitStanzas(text);
    const bool balanced = probePlainly(text).balanced && list.strayEnds.empty();
    for (const oku::Span span : list.strayEnds)
        text.replace(span.begin, span.end - span.begin, span.end - span.begin, ' ');
    std::vector<xmlElement> elements;
    lutXMLParseA(elements, text);
    compare(text, elements, 0);
    fuzz::require(!balanced || elements.size() == list.stanzas.size(), "an element is seen that is none");
    return 0;
}
