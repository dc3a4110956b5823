// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// How contacts feel (XEP-0107).
#pragma once

#include "profile/pep_listeners.h"
#include "profile/personal_notice.h"
#include "profile/pubsub_events.h"

namespace protolink {

class UserMood {
public:
    UserMood(CClientClass& client, const PepListeners& listeners, const PersonalNotice& notice)
        : client_(client), listeners_(listeners), notice_(notice) {}

    /// Offered to listeners, then shown unless the user switched that off. A mood without content ends what was shown.
    void onMoodEvent(const PubSubItem& item) const;

private:
    CClientClass& client_;
    const PepListeners& listeners_;
    const PersonalNotice& notice_;
};

}  // namespace protolink
