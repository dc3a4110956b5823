// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Windows that the host draws.
#pragma once

#include "host/host.h"
#include "ui/window_view.h"

namespace protolink {

class HostWindows final : public WindowFactory {
public:
    /// The host outlives the factory and every window.
    explicit HostWindows(const Host& host) : host_(host) {}

    std::shared_ptr<WindowView> open(const WindowLayout& layout, const std::u16string& heading,
                                     const std::u16string& description, WindowPlace place,
                                     WindowListener& listener) override;

private:
    const Host& host_;
};

}  // namespace protolink
