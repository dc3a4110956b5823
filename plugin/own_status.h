// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The own status towards the host's listeners.
#pragma once

#include <string>

#include "plugin/client_class.h"

namespace protolink {

/// Tells the status before and after it counts. False when a listener stopped it, and the second telling left out.
bool announceOwnStatus(const CClientClass& client, Status status, const std::u16string& description);

/// Tells a status that the connection's end brought: nobody can stop it.
void tellOwnStatus(const CClientClass& client, Status status, const std::u16string& description);

}  // namespace protolink
