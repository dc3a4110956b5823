// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The directories that the host gives.
#pragma once

#include <string>

#include "host/host.h"

namespace protolink {

/// Each with its trailing separator as the host wrote it.
struct Directories {
    std::u16string cache;
    std::u16string profile;
};

Directories askDirectories(const Host& host);

}  // namespace protolink
