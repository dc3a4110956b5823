// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "messenger/core/wire/wire_face.h"

namespace oku {

class HostCore;

/// The face of the streams on the host, which must outlive it.
std::unique_ptr<WireFace> wireOnHost(HostCore& core);

}  // namespace oku
