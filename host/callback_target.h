// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the host calls back.
#pragma once

#include "host/oku/base.h"

namespace protolink {

/// A callback with the context word that it gets; a null callback for none.
struct CallbackTarget {
    OKU_HANDLER callback = nullptr;
    OKU_WORD context = 0;
};

}  // namespace protolink
