// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The pages of an account in the windows of the host.
#pragma once

#include "host/oku/base.h"
#include "im/roster.h"
#include "plugin/client_class.h"
#include "profile/avatar_cache.h"
#include "ui/host_pages.h"
#include "ui/window_view.h"

namespace protolink {

class AccountPages {
public:
    AccountPages(CClientClass& client, const Roster& roster, WindowFactory& windows, const AvatarCache& avatars)
        : client_(client), roster_(roster), windows_(windows), avatars_(avatars) {}

    /// The host's callback for the options page, with an OKU_PAGE_EVENT. 1 when the event could not be done.
    OKU_WORD onOptionsPage(OKU_WORD pageEvent);
    /// Closes all that is open.
    void close() { pages_.close(); }

private:
    CClientClass& client_;
    const Roster& roster_;
    WindowFactory& windows_;
    const AvatarCache& avatars_;
    HostPages pages_;
};

}  // namespace protolink
