// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The icons that the host loads and draws.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "host/host.h"

namespace protolink {

class Icons {
public:
    explicit Icons(const Host& host) : host_(host) {}

    void createClass(const std::u16string& name, const char16_t* fallbackImage) const;
    void loadStatusIcons(const std::u16string& baseName, std::span<const std::uint32_t> statuses,
                         std::span<const std::uint32_t> second) const;
    /// Loads an icon out of this library's resources.
    void load(const std::u16string& name, int resource) const;

private:
    const Host& host_;
};

}  // namespace protolink
