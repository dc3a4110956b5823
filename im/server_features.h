// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What the account's server can do. Known from its one answer of each connection; all clear until then.
#pragma once

#include <cstdint>

namespace protolink {

struct ServerFeatures {
    std::uint32_t serverHasPrivacyLists = 0;
    std::uint32_t serverHasInvisibility = 0;
    std::uint32_t serverHasPrivateStorage = 0;
    std::uint32_t serverHasPubSub = 0;
    std::uint32_t serverHasPEP = 0;
    std::uint32_t serverHasPublishOptions = 0;
    std::uint32_t serverHasMailNotify = 0;
    std::uint32_t serverHasSharedStatus = 0;
};

}  // namespace protolink
