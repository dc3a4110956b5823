// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The host's timers, by name.
#pragma once

#include <cstdint>
#include <string>

#include "host/callback_target.h"
#include "host/host.h"

namespace protolink {

class Timers {
public:
    explicit Timers(const Host& host) : host_(host) {}

    void create(const std::u16string& id, std::uint32_t milliseconds, CallbackTarget target, bool oneShot) const;
    /// Destroys a timer with its name as the param.
    void destroy(const std::u16string& id) const;
    /// Destroys a timer with the address of a word that points to its name as the param. The reconnection timer is
    /// cancelled in this shape, and the host takes both.
    void destroyByReference(const std::u16string& id) const;

    /// Whether the record that a timer's callback was given tells a tick, the only event that means something.
    static bool isTick(OKU_WORD eventRecord);

private:
    const Host& host_;
};

}  // namespace protolink
