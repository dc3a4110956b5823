// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// Where contacts are (XEP-0080).
#pragma once

#include "profile/pep_listeners.h"
#include "profile/pubsub_events.h"

namespace protolink {

class UserLocation {
public:
    UserLocation(CClientClass& client, const PepListeners& listeners) : client_(client), listeners_(listeners) {}

    /// Listeners alone see where somebody is: the plugin shows nothing of it.
    void onGeolocEvent(const PubSubItem& item) const;

private:
    CClientClass& client_;
    const PepListeners& listeners_;
};

}  // namespace protolink
