// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The comparer "same XML": attribute order, the form of empty elements, quotation marks and white space between
// elements do not count; everything else does.
#pragma once

#include <string>
#include <string_view>

#include "tests/support/pattern.h"

namespace harness {

/// Whether `actual` is the same XML as `expected`, in whose attribute values and texts captured values may stand.
/// False, with a reason in `why`, when it is not, or when either is not well-formed.
bool sameXml(std::string_view expected, std::string_view actual, Variables& variables, std::string& why);

}  // namespace harness
