// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Fresh identifiers: stanza ids and UUIDs.
#pragma once

#include <string>

namespace protolink {

/// A stanza id: 16 characters of Base64. Ids are matched as exact strings and are not tested for uniqueness.
std::u16string generateId();

/// A random UUID (RFC 4122, version 4) as text.
std::u16string lutGenerateUUID();

}  // namespace protolink
