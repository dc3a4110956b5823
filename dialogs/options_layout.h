// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The controls of an account's options page. Those of settings have the numbers that the table of settings gives them.
#pragma once

#include <array>
#include <cstdint>

#include "ui/control.h"

namespace protolink {

namespace options {

inline constexpr std::uint32_t kClearAvatars = 7013;
inline constexpr std::uint32_t kState = 7015;
inline constexpr std::uint32_t kNewAccount = 7029;
inline constexpr std::uint32_t kChangePassword = 7031;

// The page has none of these three controls now. What they would do is there for a page that has them.
inline constexpr std::uint32_t kCopyProxy = 7006;
inline constexpr std::uint32_t kUnusedSwitch = 6009;
inline constexpr std::uint32_t kUnusedField = 6012;

/// The kinds of proxies, in the order of the setting's numbers.
inline constexpr std::array<const char16_t*, 4> kProxyTypes{u"SOCKS v4.0", u"SOCKS v4.0A", u"SOCKS v5.0", u"HTTP v1.1"};
/// The answers to a contact that asks for the user's presence, in the order of the setting's numbers.
inline constexpr std::array<const char16_t*, 4> kAnswers{u"Zapytaj", u"Odrzuć wszystkie", u"Przyjmij wszystkie",
                                                         u"Ignoruj wszystkie"};

/// The page as it opens, before anything of the account is in it.
WindowLayout layout();
/// Whether the page has a control of this number.
bool hasControl(std::uint32_t control);

}  // namespace options

}  // namespace protolink
