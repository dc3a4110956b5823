// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The host's modal boxes.
#pragma once

#include <cstdint>
#include <string>

#include "host/host.h"

namespace protolink {

enum class BoxStyle : std::uint32_t { Error = 0x10, Warning = 0x30, Information = 0x40, Question = 36 };

class MessageBoxes {
public:
    explicit MessageBoxes(const Host& host) : host_(host) {}

    /// Shows a box with one button and waits for it. `owner` is a window's handle, 0 for none.
    void show(const std::u16string& text, const std::u16string& title, BoxStyle style, OKU_WORD owner = 0) const;
    /// Asks a question and waits for the answer. True for yes; a host that cannot ask says no.
    bool ask(const std::u16string& text, const std::u16string& title, OKU_WORD owner = 0) const;
    /// The same for a question that only a no stops. A host that cannot ask says no here, too.
    bool askUnlessNo(const std::u16string& text, const std::u16string& title, OKU_WORD owner = 0) const;

private:
    OKU_WORD call(const std::u16string& text, const std::u16string& title, BoxStyle style, OKU_WORD owner) const;

    const Host& host_;
};

}  // namespace protolink
