// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The text of a stanza's child.
#pragma once

#include <string>
#include <string_view>

#include "host/util/xml_element.h"

namespace protolink {

/// The text of the first child of that name, empty when there is none. Valid while the element is not changed.
inline const std::u16string& childText(const xmlElement& element, std::u16string_view name) {
    static const std::u16string kNone;
    const xmlElement* child = element.GetChildPtr(name);
    return child ? child->text : kNone;
}

}  // namespace protolink
