// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The window in which the host asks for a status and its description.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "host/callback_target.h"
#include "host/host.h"

namespace protolink {

class StatusWindow {
public:
    explicit StatusWindow(const Host& host) : host_(host) {}

    /// `statuses` are offered in their order.
    void prepare(std::span<const std::uint32_t> statuses, std::uint32_t netId, CallbackTarget target) const;
    void show(std::uint32_t netId, const std::u16string& description, std::uint32_t status,
              std::uint32_t protect) const;
    /// `window` is the word that came with the window's question for its texts.
    void setTexts(const std::u16string& title, const std::u16string& header, const std::u16string& account,
                  OKU_WORD window) const;

private:
    const Host& host_;
};

}  // namespace protolink
