// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The host's chooser of files.
#pragma once

#include "host/callback_target.h"
#include "host/host.h"

namespace protolink {

class FileChooser {
public:
    explicit FileChooser(const Host& host) : host_(host) {}

    /// Opens a chooser for one file of any kind. False when none opens; otherwise `target` is called exactly once.
    bool open(CallbackTarget target) const;

private:
    const Host& host_;
};

}  // namespace protolink
