// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Every operator new of the test program goes through a counter that a test can read, and that can make one of them
// fail. What the host and the test allocate themselves does not count.
#pragma once

#include <cstddef>

namespace torture {

/// While one exists, the allocations of the plugin's own code are counted, and the one of number `failing` throws.
class FailingAllocation {
public:
    explicit FailingAllocation(std::size_t failing);
    ~FailingAllocation();
    FailingAllocation(const FailingAllocation&) = delete;
    FailingAllocation& operator=(const FailingAllocation&) = delete;

    /// So many were counted; more than `failing` when it was reached.
    std::size_t count() const;
};

/// Blocks and bytes that are allocated at present, by anybody.
struct Living {
    std::size_t blocks = 0;
    std::size_t bytes = 0;
};
Living living();

}  // namespace torture
