// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The features of a service discovery reply (XEP-0030).
#pragma once

#include <string_view>

#include "host/util/xml_element.h"

namespace protolink {

inline bool hasFeature(const xmlElement& query, std::u16string_view feature) {
    return query.GetChildPtr(u"feature", u"var", feature) != nullptr;
}

}  // namespace protolink
