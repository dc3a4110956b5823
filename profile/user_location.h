// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT
// Where contacts are (XEP-0080).
#pragma once

#include "profile/pep_listeners.h"
#include "profile/pubsub_events.h"

namespace protolink {

class UserLocation {
public:
    explicit UserLocation(const PepListeners& listeners) : listeners_(listeners) {}

    /// Listeners alone see where somebody is: the plugin shows nothing of it.
    void onEvent(const PubSubItem& item) const;

private:
    const PepListeners& listeners_;
};

}  // namespace protolink
