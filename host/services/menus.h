// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The host's menus.
#pragma once

#include <cstdint>
#include <string>

#include "host/host.h"

namespace protolink {

/// A menu item, as far as the plugin uses one.
struct MenuItem {
    std::u16string id;
    std::u16string parent;
    std::u16string caption;
    std::u16string icon;
    std::uint32_t flags = 0;
    std::int32_t order = 0;
    OKU_HANDLER callback = nullptr;
    OKU_WORD context = 0;
};

class Menus {
public:
    explicit Menus(const Host& host) : host_(host) {}

    void add(const MenuItem& item) const;
    void modify(const MenuItem& item) const;

private:
    const Host& host_;
};

}  // namespace protolink
