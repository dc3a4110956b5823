// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "messenger/core/windows/windows_face.h"

namespace oku {

class HostCore;

/// The face of windows on the host, which must outlive it.
std::unique_ptr<WindowsFace> windowsOnHost(HostCore& core);

}  // namespace oku
