// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// How far the login has come.
#pragma once

#include <cstdint>
#include <string>

namespace protolink {

struct LoginProgress {
    std::uint32_t authStep = 0;     // non-zero once authentication is over; DIGEST-MD5 counts its challenges in it
    std::uint32_t sessionStep = 0;  // 0 none, 2 the session was asked for, 3 bound
    std::u16string streamId;
};

}  // namespace protolink
