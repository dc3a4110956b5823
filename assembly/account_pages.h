// SPDX-FileCopyrightText: The protoLink authors
// SPDX-License-Identifier: MIT

// The pages of an account in the windows of the host.
#pragma once

#include "dialogs/dialog_account.h"
#include "host/oku/base.h"
#include "im/roster.h"
#include "profile/avatar_cache.h"
#include "stream/connection.h"
#include "ui/host_pages.h"
#include "ui/window_view.h"

namespace protolink {

class AccountPages {
public:
    AccountPages(DialogAccount& account, Connection& connection, const Roster& roster, WindowFactory& windows,
                 const AvatarCache& avatars)
        : account_(account), connection_(connection), roster_(roster), windows_(windows), avatars_(avatars) {}

    /// The host's callback for the options page, with an OKU_PAGE_EVENT. 1 when the event could not be done.
    OKU_WORD onOptionsPage(OKU_WORD pageEvent);
    /// Closes all that is open.
    void close() { pages_.close(); }

private:
    DialogAccount& account_;
    Connection& connection_;
    const Roster& roster_;
    WindowFactory& windows_;
    const AvatarCache& avatars_;
    HostPages pages_;
};

}  // namespace protolink
