// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Any bytes as an element tree: read, copied, written, read again, taken down.
#include <string>
#include <vector>

#include "fuzz/input.h"
#include "host/util/utf.h"
#include "host/util/xml_parse.h"

namespace {

bool same(const xmlElement& left, const xmlElement& right) {
    std::vector<std::pair<const xmlElement*, const xmlElement*>> open{{&left, &right}};
    while (!open.empty()) {
        const auto [a, b] = open.back();
        open.pop_back();
        if (a->name != b->name || a->text != b->text || a->attributes.size() != b->attributes.size() ||
            a->children.size() != b->children.size())
            return false;
        for (std::size_t i = 0; i < a->attributes.size(); ++i)
            if (a->attributes[i].name != b->attributes[i].name || a->attributes[i].value != b->attributes[i].value)
                return false;
        for (std::size_t i = 0; i < a->children.size(); ++i) open.emplace_back(&a->children[i], &b->children[i]);
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    if (fuzz::holdsNoCharacter(text)) return 0;
    std::vector<xmlElement> elements;
    lutXMLParseA(elements, text);
    XmlSequence sequence(text);
    for (const xmlElement& element : elements) {
        xmlElement next;
        fuzz::require(sequence.next(next) && same(next, element), "one at a time reads other elements");
        const xmlElement copy = element;
        fuzz::require(same(copy, element), "a copy differs");
        const std::u16string written = element.GetXML(1);
        fuzz::require(written == copy.GetXML(0), "two ways of writing differ");
        std::vector<xmlElement> again;
        lutXMLParseA(again, wtou(written));
        fuzz::require(again.size() == 1, "what was written is not one element");
        fuzz::require(again.front().GetXML(1) == written, "what was written reads as another element");
        if (xmlElement changed = element; !changed.children.empty()) {
            // The source lies inside the tree that is assigned to.
            const std::u16string inner = changed.children.back().GetXML(1);
            changed = changed.children.back();
            fuzz::require(changed.GetXML(1) == inner, "assigning a part to its whole loses it");
            changed.SetChild(changed, size % 2 == 0);
            changed.SetAttribute(u"a", changed.text);
        }
    }
    xmlElement none;
    fuzz::require(!sequence.next(none), "one at a time reads more elements");
    return 0;
}
