// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Stanza errors (RFC 6120, 8.3) in words.
#pragma once

#include <string>
#include <string_view>

#include "host/util/xml_element.h"

namespace protolink {

/// Renders a received `error` element for the user into `out`. A null element, or one without a known condition,
/// gives no text and leaves `out` alone. Returns the length of the text made, 0 for none.
std::size_t stanzaErrorText(std::u16string& out, const xmlElement* errorElement, bool withDescription);

/// An `error` element as XML text; `text` is plain and may be empty.
std::u16string buildStanzaError(std::u16string_view code, std::u16string_view condition, std::u16string_view type,
                                std::u16string_view text);

/// The English name of an old numeric error code; "Unknown" for anything else.
std::u16string_view httpStatusText(std::u16string_view code);

}  // namespace protolink
