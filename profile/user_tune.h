// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// What contacts listen to (XEP-0118).
#pragma once

#include "profile/pep_listeners.h"
#include "profile/personal_notice.h"
#include "profile/pubsub_events.h"

namespace protolink {

class UserTune {
public:
    UserTune(CClientClass& client, const PepListeners& listeners, const PersonalNotice& notice)
        : client_(client), listeners_(listeners), notice_(notice) {}

    /// Offered to listeners, then shown unless the user switched that off. A tune without content ends what was shown.
    void onTuneEvent(const PubSubItem& item) const;

private:
    CClientClass& client_;
    const PepListeners& listeners_;
    const PersonalNotice& notice_;
};

}  // namespace protolink
