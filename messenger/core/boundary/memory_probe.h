// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace oku {

/// Copies `size` bytes from an address that may lead anywhere. False, and nothing is known of `out`, when the address
/// cannot be read. Never faults.
bool readMemory(std::uintptr_t address, void* out, std::size_t size);

}  // namespace oku
