// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Files that the host publishes under an address of its own.
#pragma once

#include <string>

#include "host/callback_target.h"
#include "host/host.h"

namespace protolink {

class FilePublishing {
public:
    explicit FilePublishing(const Host& host) : host_(host) {}

    /// Whether the host publishes files at all.
    bool enabled() const;
    /// Publishes a file and gives its address; empty when the host gave none. `state` hears how the sending goes,
    /// `progress` how far it is.
    std::u16string prepare(const std::u16string& path, CallbackTarget state, CallbackTarget progress) const;

private:
    const Host& host_;
};

}  // namespace protolink
