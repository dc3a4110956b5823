// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What a window says of an answer that it cannot use.
#pragma once

#include <string>

#include "host/util/xml_element.h"

namespace protolink {

/// With the error of the stanza in words where it has one.
std::u16string unexpectedAnswer(const xmlElement& stanza);

}  // namespace protolink
