// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The window of the user's own vCard.
#pragma once

#include "host/host.h"

namespace protolink {

class Cards {
public:
    explicit Cards(const Host& host) : host_(host) {}

    /// Tells whether a request for the card is under way.
    void signalBusyness(bool busy) const { host_.call(u"MyVCard/SignalBusyness", busy ? 1 : 0); }

private:
    const Host& host_;
};

}  // namespace protolink
