// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// How far the login has come.
#pragma once

#include <cstdint>

namespace protolink {

struct LoginProgress {
    std::uint32_t authStep = 0;  // non-zero once authentication is over; DIGEST-MD5 counts its challenges in it
    bool sessionAsked = false;
};

}  // namespace protolink
