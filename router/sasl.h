// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The two SASL mechanisms: PLAIN (RFC 4616) and DIGEST-MD5 (RFC 2831). All texts are UTF-8 bytes.
#pragma once

#include <string>
#include <string_view>

#include "router/md5.h"

namespace protolink {

/// The payload of PLAIN, not yet in Base64: the authorization identity is empty.
std::string plainPayload(std::string_view user, std::string_view password);

/// The value of a challenge's parameter: from the first place where `key` stands, wherever that is, to the next comma,
/// without quotation marks. A comma inside a quoted value ends it too. Empty when the key is not there.
std::string digestParam(std::string_view challengeText, std::string_view key);

/// The response for `qop=auth` without an authorization identity: 32 lower-case hexadecimal digits.
std::string digestResponse(std::string_view user, std::string_view realm, std::string_view nonce,
                           std::string_view cnonce, std::string_view password, std::string_view digestUri);

/// 32 lower-case hexadecimal digits.
std::string hexDigest(const MD5Digest& digest);

}  // namespace protolink
