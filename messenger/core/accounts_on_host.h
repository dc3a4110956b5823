// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "messenger/core/accounts/accounts_face.h"

namespace oku {

class HostCore;

/// The face of accounts on the host, which must outlive it.
std::unique_ptr<AccountsFace> accountsOnHost(HostCore& core);

}  // namespace oku
