// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Pages of the host's own windows: the options and a contact's properties.
#pragma once

#include <cstdint>
#include <string>

#include "host/callback_target.h"
#include "host/host.h"

namespace protolink {

class Pages {
public:
    explicit Pages(const Host& host) : host_(host) {}

    /// Gives the handle of the icon that the host made for the page, 0 for none; the caller destroys it.
    OKU_WORD addOptionsPage(const std::u16string& id, const std::u16string& caption, CallbackTarget target) const;
    void addPropertiesPage(const std::u16string& id, std::uint32_t netId, CallbackTarget target) const;
    /// A page of one contact, in the properties that the host named by the word `properties`.
    void addInformationPage(CallbackTarget target, OKU_WORD properties) const;

private:
    const Host& host_;
};

}  // namespace protolink
