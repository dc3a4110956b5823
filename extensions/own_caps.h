// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What this client can do, and the verification string made of it (XEP-0115).
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace protolink {

namespace ownCaps {

inline constexpr std::u16string_view kIdentityCategory = u"client";
inline constexpr std::u16string_view kIdentityType = u"pc";
inline constexpr std::u16string_view kIdentityName = u"OKF - protoLink";

/// The features that every reply lists, in the order in which they enter the hash. A few name no protocol extension;
/// they are part of the list all the same.
extern const std::array<std::u16string_view, 29> kFeatures;

/// The verification string: 28 characters of Base64, a constant of the build.
std::u16string buildOwnCaps();

}  // namespace ownCaps

}  // namespace protolink
