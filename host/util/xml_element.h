// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The tree that received XML is read as.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct xmlAttribute {
    std::u16string name;
    std::u16string value;
};

/// One element of an XML tree: a plain value that owns all below it. Copies are deep, moves are cheap. Nothing here
/// recurses: copying, assigning, destroying and writing a tree need the same small stack however deep the tree is.
///
/// Reading never fails: what is absent reads as the given default, an empty element or null. Names are compared
/// exactly, prefix included; a namespace is the element's own `xmlns` attribute.
class xmlElement {
public:
    xmlElement() = default;
    explicit xmlElement(std::u16string elementName) : name(std::move(elementName)) {}
    xmlElement(std::u16string elementName, std::u16string elementText)
        : name(std::move(elementName)), text(std::move(elementText)) {}

    xmlElement(const xmlElement& other);
    xmlElement(xmlElement&& other) noexcept = default;

    /// The source may lie inside the tree that is assigned to.
    xmlElement& operator=(const xmlElement& other);
    xmlElement& operator=(xmlElement&& other) noexcept;
    ~xmlElement() {
        if (!children.empty()) dismantle();
    }

    /// Makes the element empty again: no name, text, attributes or children.
    void reset();

    /// Sets an attribute, or replaces the value of the one of that name.
    void SetAttribute(std::u16string_view attribute, std::u16string_view value);

    /// The value of an attribute, or `fallback` when there is none. Valid until the attributes change
    /// or the element goes, so that of a temporary element (GetChild) it has to be copied at once.
    std::u16string_view GetAttribute(std::u16string_view attribute, std::u16string_view fallback = {}) const;
    bool HasAttribute(std::u16string_view attribute) const;

    /// Stores a copy of `child` behind the other children, or before them when `atFront` is true. The result is the
    /// stored child, valid until the children change.
    xmlElement* SetChild(const xmlElement& child, bool atFront = false);

    /// A copy of the first child of that name, or an empty element.
    xmlElement GetChild(std::u16string_view childName) const;
    xmlElement GetChild(std::u16string_view childName, std::u16string_view xmlns) const;

    /// The first child of that name (and of that namespace, or with an attribute of that value), or null. Valid until
    /// the children change.
    const xmlElement* GetChildPtr(std::u16string_view childName) const;
    const xmlElement* GetChildPtr(std::u16string_view childName, std::u16string_view xmlns) const;
    const xmlElement* GetChildPtr(std::u16string_view childName, std::u16string_view attribute,
                                  std::u16string_view value) const;
    xmlElement* GetChildPtr(std::u16string_view childName);
    xmlElement* GetChildPtr(std::u16string_view childName, std::u16string_view xmlns);
    xmlElement* GetChildPtr(std::u16string_view childName, std::u16string_view attribute, std::u16string_view value);

    /// The element as XML: text before children, attributes in their order, the short form when there is neither text
    /// nor child. Characters that XML does not allow are left out. An element without a name has no such form: it is
    /// left out with all that it holds. The argument is 1 for stanzas and 0 for files; both give the same form.
    std::u16string GetXML(int form) const;

    std::u16string name;
    /// All character data of the element itself, decoded.
    std::u16string text;
    std::vector<xmlAttribute> attributes;
    std::vector<xmlElement> children;

private:
    void copyChildren(const xmlElement& source);
    void dismantle() noexcept;
};
