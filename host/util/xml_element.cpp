// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#include "host/util/xml_element.h"

#include <algorithm>
#include <cstring>
#include <tuple>

#include "host/util/xml_escape.h"

namespace {

/// The parent's address, kept in a text that nobody will read any more. It takes fewer units than every string holds
/// without an allocation, so that taking a tree down cannot fail.
constexpr std::size_t kAddressUnits = sizeof(xmlElement*) / sizeof(char16_t);
static_assert(kAddressUnits <= 7 && sizeof(xmlElement*) % sizeof(char16_t) == 0);

void keepAddress(std::u16string& in, xmlElement* element) noexcept {
    char16_t units[kAddressUnits];
    std::memcpy(units, &element, sizeof element);
    in.assign(units, kAddressUnits);
}

xmlElement* keptAddress(const std::u16string& in) noexcept {
    xmlElement* element = nullptr;
    std::memcpy(&element, in.data(), sizeof element);
    return element;
}

template <typename Attributes>
auto findAttribute(Attributes& attributes, std::u16string_view name) {
    return std::find_if(attributes.begin(), attributes.end(),
                        [name](const xmlAttribute& attribute) { return attribute.name == name; });
}

/// The first child of that name for which `fits` is true, or null.
template <typename Fits>
const xmlElement* findChild(const xmlElement& parent, std::u16string_view name, Fits fits) {
    for (const xmlElement& child : parent.children)
        if (child.name == name && fits(child)) return &child;
    return nullptr;
}

/// An absent attribute has no value, so it equals none, not even the empty one.
bool attributeIs(const xmlElement& element, std::u16string_view attribute, std::u16string_view value) {
    const auto found = findAttribute(element.attributes, attribute);
    return found != element.attributes.end() && found->value == value;
}

/// An element whose children are being written, and the next of them.
struct OpenElement {
    const xmlElement* element;
    std::size_t next;
};

/// Writes all of an element up to its first child. True when children and the closing tag are still to come.
bool writeOpening(std::u16string& out, const xmlElement& element) {
    if (element.name.empty()) return false;
    out += u'<';
    out += element.name;
    for (const xmlAttribute& attribute : element.attributes)
        util::appendAttribute(out, attribute.name, attribute.value, util::KeepBlanks::InValue);
    if (element.text.empty() && element.children.empty()) {
        out += u"/>";
        return false;
    }
    out += u'>';
    util::appendEscaped(out, element.text, util::KeepBlanks::InText);
    return true;
}

void writeClosing(std::u16string& out, const xmlElement& element) {
    out += u"</";
    out += element.name;
    out += u'>';
}

}  // namespace

xmlElement::xmlElement(const xmlElement& other) : name(other.name), text(other.text), attributes(other.attributes) {
    if (!other.children.empty()) copyChildren(other);
}

xmlElement& xmlElement::operator=(const xmlElement& other) { return *this = xmlElement(other); }

xmlElement& xmlElement::operator=(xmlElement&& other) noexcept {
    // Taken out first: the source may be one of the children that go.
    xmlElement taken(std::move(other));
    name.swap(taken.name);
    text.swap(taken.text);
    attributes.swap(taken.attributes);
    children.swap(taken.children);
    return *this;
}

void xmlElement::copyChildren(const xmlElement& source) {
    std::vector<std::pair<const xmlElement*, xmlElement*>> pending;
    const xmlElement* from = &source;
    xmlElement* to = this;
    for (;;) {
        // With the room made once, the copies keep their place while those below them are added.
        to->children.reserve(from->children.size());
        for (const xmlElement& child : from->children) {
            xmlElement& copy = to->children.emplace_back(child.name, child.text);
            copy.attributes = child.attributes;
            if (!child.children.empty()) pending.emplace_back(&child, &copy);
        }
        if (pending.empty()) return;
        std::tie(from, to) = pending.back();
        pending.pop_back();
    }
}

void xmlElement::dismantle() noexcept {
    xmlElement* node = this;
    for (;;) {
        if (!node->children.empty()) {
            xmlElement& last = node->children.back();
            if (last.children.empty()) {
                node->children.pop_back();
            } else {
                keepAddress(last.text, node);
                node = &last;
            }
        } else if (node == this) {
            return;
        } else {
            node = keptAddress(node->text);
            node->children.pop_back();
        }
    }
}

void xmlElement::reset() { *this = xmlElement(); }

void xmlElement::SetAttribute(std::u16string_view attribute, std::u16string_view value) {
    const auto found = findAttribute(attributes, attribute);
    if (found != attributes.end())
        found->value = value;
    else
        attributes.push_back({std::u16string(attribute), std::u16string(value)});
}

std::u16string_view xmlElement::GetAttribute(std::u16string_view attribute, std::u16string_view fallback) const {
    const auto found = findAttribute(attributes, attribute);
    return found == attributes.end() ? fallback : std::u16string_view(found->value);
}

bool xmlElement::HasAttribute(std::u16string_view attribute) const {
    return findAttribute(attributes, attribute) != attributes.end();
}

xmlElement* xmlElement::SetChild(const xmlElement& child, bool atFront) {
    // Copied first: it may be this element itself, or one below it.
    xmlElement copy(child);
    return &*children.insert(atFront ? children.begin() : children.end(), std::move(copy));
}

xmlElement xmlElement::GetChild(std::u16string_view childName) const {
    const xmlElement* const found = GetChildPtr(childName);
    return found ? *found : xmlElement();
}

xmlElement xmlElement::GetChild(std::u16string_view childName, std::u16string_view xmlns) const {
    const xmlElement* const found = GetChildPtr(childName, xmlns);
    return found ? *found : xmlElement();
}

const xmlElement* xmlElement::GetChildPtr(std::u16string_view childName) const {
    return findChild(*this, childName, [](const xmlElement&) { return true; });
}

const xmlElement* xmlElement::GetChildPtr(std::u16string_view childName, std::u16string_view xmlns) const {
    return GetChildPtr(childName, u"xmlns", xmlns);
}

const xmlElement* xmlElement::GetChildPtr(std::u16string_view childName, std::u16string_view attribute,
                                          std::u16string_view value) const {
    return findChild(*this, childName, [&](const xmlElement& child) { return attributeIs(child, attribute, value); });
}

xmlElement* xmlElement::GetChildPtr(std::u16string_view childName) {
    return const_cast<xmlElement*>(std::as_const(*this).GetChildPtr(childName));
}

xmlElement* xmlElement::GetChildPtr(std::u16string_view childName, std::u16string_view xmlns) {
    return const_cast<xmlElement*>(std::as_const(*this).GetChildPtr(childName, xmlns));
}

xmlElement* xmlElement::GetChildPtr(std::u16string_view childName, std::u16string_view attribute,
                                    std::u16string_view value) {
    return const_cast<xmlElement*>(std::as_const(*this).GetChildPtr(childName, attribute, value));
}

std::u16string xmlElement::GetXML(int) const {
    std::u16string out;
    std::vector<OpenElement> open;
    if (writeOpening(out, *this)) open.push_back({this, 0});
    while (!open.empty()) {
        OpenElement& top = open.back();
        if (top.next == top.element->children.size()) {
            writeClosing(out, *top.element);
            open.pop_back();
            continue;
        }
        const xmlElement& child = top.element->children[top.next++];
        if (writeOpening(out, child)) open.push_back({&child, 0});
    }
    return out;
}
