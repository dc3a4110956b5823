// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The controls of a contact's two pages of properties.
#pragma once

#include <cstdint>

#include "ui/control.h"

namespace protolink::properties {

inline constexpr std::uint32_t kName = 7017;
inline constexpr std::uint32_t kJid = 7018;
inline constexpr std::uint32_t kGroup = 7019;
inline constexpr std::uint32_t kAuthorize = 6003;
inline constexpr std::uint32_t kAskForAuthorization = 6004;
inline constexpr std::uint32_t kHide = 6011;
inline constexpr std::uint32_t kIgnore = 6012;
inline constexpr std::uint32_t kBlockMessages = 6015;
inline constexpr std::uint32_t kBlockRequests = 6016;

inline constexpr std::uint32_t kResources = 6005;
inline constexpr std::uint32_t kRefresh = 6006;

// What the host shows over each page.
inline constexpr char16_t kSettingsTitle[] = u"XMPP";
inline constexpr char16_t kSettingsDescription[] = u"Ustawienia kontaktu protokołu XMPP";
inline constexpr char16_t kInformationTitle[] = u"Informacje";
inline constexpr char16_t kInformationDescription[] = u"Informacje o zalogowanych zasobach kontaktu";

/// The page of settings, with nothing of a contact in it.
WindowLayout settings();
/// The page that tells of the contact's resources.
WindowLayout information();

}  // namespace protolink::properties
