// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The service browser's controls and where they stand.
#pragma once

#include <array>
#include <cstdint>

#include "ui/control.h"

namespace protolink {

namespace browser {

inline constexpr std::uint32_t kItems = 6025;
inline constexpr std::uint32_t kJid = 6026;
inline constexpr std::uint32_t kAccount = 6027;
inline constexpr std::uint32_t kGo = 6028;
inline constexpr std::uint32_t kNode = 6029;
inline constexpr std::uint32_t kNodeLabel = 6030;
inline constexpr std::uint32_t kClose = kOkButton;

/// What the window posts to itself when a command was answered.
inline constexpr std::uint32_t kCommandAnswered = 1025;

struct Placed {
    std::uint32_t control;
    Rectangle rectangle;
};

/// Where everything stands in a window of this size inside.
std::array<Placed, 7> places(std::int32_t width, std::int32_t height);

/// The window as it opens, in its first size. Drop-downs are empty.
WindowLayout layout();

}  // namespace browser

}  // namespace protolink
