// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What every account tells of this client and its user beside the status.
#pragma once

#include <cstdint>
#include <string>

namespace protolink {

/// One for all accounts.
struct OwnPresentation {
    std::u16string ownCapsVer;         // the verification string of the own capabilities; empty until it is computed
    std::u16string ownAvatarHash;      // as the account that began last has it in its settings
    std::uint32_t ownAvatarBytes = 0;  // the size of the picture that was published last
};

}  // namespace protolink
