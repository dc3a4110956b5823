// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Fields of a vCard.
#pragma once

#include <string>
#include <string_view>

#include "im/child_text.h"

namespace protolink {

/// Where a field stands: in the first child `name`, or in the first child `part` of that.
struct CardPath {
    std::u16string_view name;
    std::u16string_view part = {};
};

/// The field's text, empty when it is missing.
inline std::u16string cardText(const xmlElement& vCard, const CardPath& path) {
    if (path.part.empty()) return childText(vCard, path.name);
    const xmlElement* parts = vCard.GetChildPtr(path.name);
    return parts ? childText(*parts, path.part) : std::u16string();
}

}  // namespace protolink
