// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// A received top-level element with what every handler asks of it.
#pragma once

#include <string_view>

#include "host/util/xml_element.h"

namespace protolink {

/// The views point into the element.
struct Stanza {
    xmlElement& element;
    std::u16string_view from;
    std::u16string_view type;
    std::u16string_view id;

    static Stanza of(xmlElement& element) {
        return {element, element.GetAttribute(u"from"), element.GetAttribute(u"type"), element.GetAttribute(u"id")};
    }

    /// The first child of that name, or null.
    const xmlElement* child(std::u16string_view name) const { return element.GetChildPtr(name); }
    const xmlElement* child(std::u16string_view name, std::u16string_view xmlns) const {
        return element.GetChildPtr(name, xmlns);
    }

    /// The first child named `query`, of whatever namespace; null when there is none.
    const xmlElement* query() const { return child(u"query"); }
    bool asks(std::u16string_view xmlns) const {
        const xmlElement* found = query();
        return found && found->GetAttribute(u"xmlns") == xmlns;
    }

    bool beginsWith(std::u16string_view xmlns) const {
        return !element.children.empty() && element.children.front().GetAttribute(u"xmlns") == xmlns;
    }
};

}  // namespace protolink
