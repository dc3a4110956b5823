// The text of a stanza's child.
#pragma once

#include <string_view>

#include "host/util/xml_element.h"

/// The text of the first child of that name, empty when there is none. Valid while the element is not changed.
inline std::u16string_view childText(const xmlElement& element, std::u16string_view name) {
    const xmlElement* child = element.GetChildPtr(name);
    return child ? std::u16string_view(child->text) : std::u16string_view();
}
